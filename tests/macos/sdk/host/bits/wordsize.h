#pragma once

// In front of the C library's own, which knows this system's architecture alone.

#define __WORDSIZE 64
