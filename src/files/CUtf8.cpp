#include "files/CUtf8.h"

using uchar = unsigned char;

/** The bytes that a character takes by its first one; 0 when no character begins with it. */
static int SequenceLength(uchar nFirst)
{
    if (nFirst < 0x80) {
        return 1;
    }
    if (nFirst < 0xc2) {
        return 0; // continuation bytes, and the overlong forms of ASCII
    }
    if (nFirst < 0xe0) {
        return 2;
    }
    if (nFirst < 0xf0) {
        return 3;
    }
    return nFirst < 0xf5 ? 4 : 0;
}

/** Whether `nSecond` may follow `nFirst`: bars overlong forms, surrogates and what lies above U+10FFFF. */
static bool IsSecond(uchar nFirst, uchar nSecond)
{
    switch (nFirst) {
    case 0xe0:
        return nSecond >= 0xa0 && nSecond <= 0xbf;
    case 0xed:
        return nSecond >= 0x80 && nSecond <= 0x9f;
    case 0xf0:
        return nSecond >= 0x90 && nSecond <= 0xbf;
    case 0xf4:
        return nSecond >= 0x80 && nSecond <= 0x8f;
    default:
        return nSecond >= 0x80 && nSecond <= 0xbf;
    }
}

STUtf8Character CUtf8::First(const char* pBytes, std::size_t nLeft)
{
    const int nLength = nLeft == 0 ? 0 : SequenceLength(uchar(pBytes[0]));
    if (nLength == 0 || std::size_t(nLength) > nLeft) {
        return {};
    }
    if (nLength == 1) {
        return {uchar(pBytes[0]), 1};
    }
    if (!IsSecond(uchar(pBytes[0]), uchar(pBytes[1]))) {
        return {};
    }
    std::uint32_t nCode = uchar(pBytes[0]) & (0x7fu >> nLength);
    for (int i = 1; i < nLength; ++i) {
        if ((uchar(pBytes[i]) & 0xc0u) != 0x80) {
            return {};
        }
        nCode = (nCode << 6) | (uchar(pBytes[i]) & 0x3fu);
    }
    return {nCode, nLength};
}
