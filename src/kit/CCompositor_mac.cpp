#include "kit/CCompositor.h"

bool CCompositor::IsRunning() { return true; }
