#include "app/CCommandPath.h"

// The system's own commands are on the PATH.
void CCommandPath::Append() { }
