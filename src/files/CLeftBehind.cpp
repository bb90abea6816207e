#include "files/CLeftBehind.h"

#include <atomic>

static std::atomic<int> s_nLeftBehind{0};

void CLeftBehind::Add() { ++s_nLeftBehind; }

void CLeftBehind::Remove() { --s_nLeftBehind; }

bool CLeftBehind::Any() { return s_nLeftBehind > 0; }
