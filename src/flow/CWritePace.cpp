#include "flow/CWritePace.h"

CWritePace::CWritePace(std::function<bool()> /*fnGoesOn*/) { }

CWritePace::~CWritePace() = default;

void CWritePace::Begin() { }

void CWritePace::Written(int /*nDescriptor*/, qint64 /*nFrom*/, qint64 /*nBytes*/) { }

void CWritePace::Ends(int /*nDescriptor*/) { }

void CWritePace::End() { }
