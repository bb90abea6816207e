#include "files/CFileNameCodec.h"

#include <QVarLengthArray>

#include <algorithm>

static const char CODEC_NAME[] = "TarnwickFileNames";

// Qt drops names from its own folder listings when the codec says 106, UTF-8,
// and the name is not valid UTF-8. Any number that belongs to no other codec
// makes it ask the codec instead, which finds no name invalid.
static const int MIB_ENUM = 0x54464e;

// The byte 0x80..0xFF of an invalid sequence stands as U+DC80..U+DCFF. Valid
// UTF-8 never gives such a character alone, so the way back is unambiguous.
static const ushort ESCAPE = 0xdc00;

static bool IsEscape(ushort nChar) { return nChar >= ESCAPE + 0x80 && nChar <= ESCAPE + 0xff; }

static bool IsAscii(const uchar* pBytes, int nLength)
{
    uchar nAll = 0;
    for (int i = 0; i < nLength; ++i) {
        nAll |= pBytes[i];
    }
    return nAll < 0x80;
}

static bool IsAscii(const QChar* pChars, int nLength)
{
    ushort nAll = 0;
    for (int i = 0; i < nLength; ++i) {
        nAll |= pChars[i].unicode();
    }
    return nAll < 0x80;
}

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

/** Reads one character of `nLeft` bytes into `nChar` and returns its length; 0 when the bytes are not valid.
 */
static int ReadCharacter(const uchar* pBytes, int nLeft, uint& nChar)
{
    const int nLength = SequenceLength(pBytes[0]);
    if (nLength == 0 || nLength > nLeft) {
        return 0;
    }
    if (nLength == 1) {
        nChar = pBytes[0];
        return 1;
    }
    if (!IsSecond(pBytes[0], pBytes[1])) {
        return 0;
    }
    nChar = pBytes[0] & (0x7fu >> nLength);
    for (int i = 1; i < nLength; ++i) {
        if ((pBytes[i] & 0xc0) != 0x80) {
            return 0;
        }
        nChar = (nChar << 6) | (pBytes[i] & 0x3fu);
    }
    return nLength;
}

/** Writes `nChar` as UTF-8 to the end of `bytes`. */
static void AppendUtf8(QVarLengthArray<char, 1024>& bytes, uint nChar)
{
    if (nChar < 0x80) {
        bytes.append(char(nChar));
        return;
    }
    const int nTail = nChar < 0x800 ? 1 : nChar < 0x10000 ? 2 : 3;
    const uint nMark = nTail == 1 ? 0xc0u : nTail == 2 ? 0xe0u : 0xf0u;
    bytes.append(char(nMark | (nChar >> (6 * nTail))));
    for (int i = nTail - 1; i >= 0; --i) {
        bytes.append(char(0x80u | ((nChar >> (6 * i)) & 0x3fu)));
    }
}

void CFileNameCodec::Install()
{
    QTextCodec* pCodec = QTextCodec::codecForName(CODEC_NAME);
    QTextCodec::setCodecForLocale(pCodec ? pCodec : new CFileNameCodec);
}

QByteArray CFileNameCodec::name() const { return QByteArray(CODEC_NAME); }

int CFileNameCodec::mibEnum() const { return MIB_ENUM; }

QString CFileNameCodec::convertToUnicode(const char* pBytes, int nLength, ConverterState* pState) const
{
    // Qt lists a name only when nothing of it is invalid and nothing is left
    // over, so an incomplete character at the end is converted at once.
    if (pState) {
        pState->remainingChars = 0;
    }
    const uchar* pNext = reinterpret_cast<const uchar*>(pBytes);
    if (IsAscii(pNext, nLength)) {
        return QString::fromLatin1(pBytes, nLength);
    }
    const uchar* const pEnd = pNext + nLength;
    QVarLengthArray<QChar, 512> chars;
    while (pNext < pEnd) {
        uint nChar = 0;
        const int nBytes = ReadCharacter(pNext, int(pEnd - pNext), nChar);
        if (nBytes == 0) {
            chars.append(QChar(ushort(ESCAPE + *pNext)));
            ++pNext;
            continue;
        }
        if (QChar::requiresSurrogates(nChar)) {
            chars.append(QChar(QChar::highSurrogate(nChar)));
            chars.append(QChar(QChar::lowSurrogate(nChar)));
        } else {
            chars.append(QChar(ushort(nChar)));
        }
        pNext += nBytes;
    }
    return QString(chars.constData(), chars.size());
}

QByteArray CFileNameCodec::convertFromUnicode(const QChar* pChars, int nLength, ConverterState* pState) const
{
    if (pState) {
        pState->remainingChars = 0;
    }
    if (IsAscii(pChars, nLength)) {
        QByteArray bytes(nLength, Qt::Uninitialized);
        std::transform(pChars, pChars + nLength, bytes.begin(), [](QChar c) { return char(c.unicode()); });
        return bytes;
    }
    QVarLengthArray<char, 1024> bytes;
    for (int i = 0; i < nLength; ++i) {
        const QChar c = pChars[i];
        if (c.isHighSurrogate() && i + 1 < nLength && pChars[i + 1].isLowSurrogate()) {
            AppendUtf8(bytes, QChar::surrogateToUcs4(c, pChars[++i]));
        } else if (IsEscape(c.unicode())) {
            bytes.append(char(c.unicode() - ESCAPE));
        } else if (c.isSurrogate()) {
            bytes.append('?'); // half a character that no file name ever gave
        } else {
            AppendUtf8(bytes, c.unicode());
        }
    }
    return QByteArray(bytes.constData(), bytes.size());
}
