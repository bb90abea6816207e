#pragma once

#include <cstddef>

// What the program asks macOS's kernel for by name.

int sysctlbyname(const char* pName, void* pOld, std::size_t* pOldBytes, void* pNew, std::size_t nNewBytes);
