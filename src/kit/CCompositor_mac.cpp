#include "kit/CCompositor.h"

bool CCompositor::IsRunning() { return true; }

bool CCompositor::CanClip() { return true; }

bool CCompositor::HasDesktop() { return true; }
