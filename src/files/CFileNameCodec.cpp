#include "files/CFileNameCodec.h"

#include "files/CUtf8.h"

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

static bool IsAscii(const char* pBytes, int nLength)
{
    uchar nAll = 0;
    for (int i = 0; i < nLength; ++i) {
        nAll |= uchar(pBytes[i]);
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

static QString Text(const char* pBytes, int nLength)
{
    if (IsAscii(pBytes, nLength)) {
        return QString::fromLatin1(pBytes, nLength);
    }
    QVarLengthArray<QChar, 512> chars;
    for (int nAt = 0; nAt < nLength;) {
        const STUtf8Character stChar = CUtf8::First(pBytes + nAt, size_t(nLength - nAt));
        if (stChar.nLength == 0) {
            chars.append(QChar(ushort(ESCAPE + uchar(pBytes[nAt++]))));
            continue;
        }
        if (QChar::requiresSurrogates(stChar.nCode)) {
            chars.append(QChar(QChar::highSurrogate(stChar.nCode)));
            chars.append(QChar(QChar::lowSurrogate(stChar.nCode)));
        } else {
            chars.append(QChar(ushort(stChar.nCode)));
        }
        nAt += stChar.nLength;
    }
    return QString(chars.constData(), chars.size());
}

static QByteArray Bytes(const QChar* pChars, int nLength)
{
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

QByteArray CFileNameCodec::ToBytes(const QString& strName)
{
    return Bytes(strName.constData(), strName.size());
}

QString CFileNameCodec::FromBytes(const QByteArray& baName)
{
    return Text(baName.constData(), baName.size());
}

QString CFileNameCodec::convertToUnicode(const char* pBytes, int nLength, ConverterState* pState) const
{
    // Qt lists a name only when nothing of it is invalid and nothing is left
    // over, so an incomplete character at the end is converted at once.
    if (pState) {
        pState->remainingChars = 0;
    }
    return Text(pBytes, nLength);
}

QByteArray CFileNameCodec::convertFromUnicode(const QChar* pChars, int nLength, ConverterState* pState) const
{
    if (pState) {
        pState->remainingChars = 0;
    }
    return Bytes(pChars, nLength);
}
