#pragma once

#include <cstddef>
#include <cstdint>

/** One character of UTF-8 at the beginning of some bytes. */
struct STUtf8Character
{
    std::uint32_t nCode = 0; ///< its number; of no meaning when nLength is 0
    int nLength = 0; ///< bytes that it takes, 1 to 4; 0 when the bytes begin with none
};

/** UTF-8 as the standard defines it. No state; any thread. */
class CUtf8
{
public:
    /**
     * The character at the beginning of nLeft bytes. None begins with a lone
     * continuation, with an overlong form, a surrogate or a number above 0x10FFFF,
     * nor where the bytes end within it.
     */
    static STUtf8Character First(const char* pBytes, std::size_t nLeft);
};
