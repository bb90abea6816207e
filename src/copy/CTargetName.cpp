#include "copy/CTargetName.h"

#include "files/CUtf8.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

// Bounds what is remembered; a number that was forgotten is found again by trying.
static const int NUMBERS_KEPT = 10000;

// A disk that says of a million names in a row that each is there is broken.
static const qint64 MOST_NUMBER = 1000000;

namespace {

/** How long a name may be. */
struct STLimit
{
    int nMost;
    bool bUtf16; ///< counted in units of UTF-16, not in bytes
};

/** A name in two parts: what may be cut, and what is kept behind it. */
struct STParts
{
    QByteArray baStem;
    QByteArray baSuffix; ///< without its dot
};

} // namespace

// What file systems hold, and then less and less: a path may be too long as a whole, too.
static const std::array<STLimit, 7> LIMITS
    = {{{255, true}, {255, false}, {143, false}, {100, false}, {64, false}, {32, false}, {16, false}}};

// The first of them are of a name alone, whatever its path.
static const int NAME_LIMITS = 2;

static STUtf8Character CharacterAt(const QByteArray& baName, int nPos)
{
    return CUtf8::First(baName.constData() + nPos, size_t(baName.size() - nPos));
}

static bool IsDotOrBlank(char c) { return c == '.' || c == ' '; }

static QByteArray WithoutEndingDots(QByteArray baName)
{
    for (int nPos = baName.size() - 1; nPos >= 0 && IsDotOrBlank(baName.at(nPos)); --nPos) {
        baName[nPos] = '_';
    }
    return baName;
}

/** Without what exFAT, FAT and NTFS do not take. */
static QByteArray WithoutForbidden(QByteArray baName)
{
    for (char& c : baName) {
        if (uchar(c) < 0x20 || uchar(c) == 0x7f || std::strchr("\"*/:<>?\\|", c) != nullptr) {
            c = '_';
        }
    }
    return WithoutEndingDots(baName);
}

static QByteArray TextOnly(QByteArray baName)
{
    for (int nPos = 0; nPos < baName.size();) {
        const int nLength = CharacterAt(baName, nPos).nLength;
        if (nLength == 0) {
            baName[nPos] = '_';
        }
        nPos += qMax(nLength, 1);
    }
    return baName;
}

static QByteArray AsciiOnly(const QByteArray& baName)
{
    QByteArray baAscii;
    for (int nPos = 0; nPos < baName.size();) {
        baAscii.append(uchar(baName.at(nPos)) < 0x80 ? baName.at(nPos) : '_');
        nPos += qMax(CharacterAt(baName, nPos).nLength, 1);
    }
    return baAscii;
}

/** Units that a character of so many bytes takes. */
static int Width(int nLength, bool bUtf16)
{
    const int nUtf16 = nLength == 4 ? 2 : 1;
    return bUtf16 ? nUtf16 : nLength;
}

/** The front of the name that is no longer than the limit, cut between two characters. */
static QByteArray Front(const QByteArray& baName, const STLimit& stLimit)
{
    int nUnits = 0;
    for (int nPos = 0; nPos < baName.size();) {
        const int nLength = qMax(CharacterAt(baName, nPos).nLength, 1);
        nUnits += Width(nLength, stLimit.bUtf16);
        if (nUnits > stLimit.nMost) {
            return baName.left(nPos);
        }
        nPos += nLength;
    }
    return baName;
}

static int Units(const QByteArray& baName, bool bUtf16)
{
    int nUnits = 0;
    for (int nPos = 0; nPos < baName.size();) {
        const int nLength = qMax(CharacterAt(baName, nPos).nLength, 1);
        nUnits += Width(nLength, bUtf16);
        nPos += nLength;
    }
    return nUnits;
}

static STParts Parts(const QByteArray& baName)
{
    const int nDot = baName.lastIndexOf('.');
    if (nDot < 0 || nDot == baName.size() - 1) {
        return {baName, QByteArray()};
    }
    return {baName.left(nDot), baName.mid(nDot + 1)};
}

/** Without what would stand at its end once it was cut there, as not every disk takes that. */
static QByteArray CutStem(const QByteArray& baStem, const STLimit& stLimit)
{
    QByteArray baFront = Front(baStem, stLimit);
    while (baFront.size() > 1 && baFront.size() < baStem.size()
           && IsDotOrBlank(baFront.at(baFront.size() - 1))) {
        baFront.chop(1);
    }
    return baFront;
}

/** The stem with what follows it, cut so that all of it is no longer than the limit. */
static QByteArray Joined(const QByteArray& baStem, const QByteArray& baEnd, const STLimit& stLimit)
{
    // Behind the last dot there may stand no suffix, but half of the name.
    const QByteArray baShortEnd = Front(baEnd, {stLimit.nMost / 2, stLimit.bUtf16});
    const int nEnd = Units(baShortEnd, stLimit.bUtf16);
    return CutStem(baStem, {stLimit.nMost - nEnd, stLimit.bUtf16}) + baShortEnd;
}

static QByteArray Cut(const QByteArray& baName, qint64 nNumber, const STLimit& stLimit)
{
    const STParts stParts = Parts(baName);
    if (nNumber > 0) {
        return Joined(stParts.baStem, '_' + QByteArray::number(nNumber) + stParts.baSuffix, stLimit);
    }
    if (Front(baName, stLimit) == baName) {
        return baName;
    }
    return stParts.baSuffix.isEmpty() ? CutStem(baName, stLimit)
                                      : Joined(stParts.baStem, '.' + stParts.baSuffix, stLimit);
}

namespace {

/** The forms that a name may take, from its own to the most changed. */
class CNameForms
{
public:
    explicit CNameForms(QByteArray baName)
        : m_baBase(std::move(baName))
    {
    }

    QByteArray Name() const
    {
        if (m_nLimit < 0) {
            return m_nNumber > 0 ? CTargetName::Numbered(m_baBase, m_nNumber) : m_baBase;
        }
        return Cut(m_baBase, m_nNumber, LIMITS.at(size_t(m_nLimit)));
    }

    /** What all names with a number have in common. */
    QByteArray Key() const { return QByteArray::number(m_nLimit) + '/' + m_baBase; }

    qint64 Number() const { return m_nNumber; }

    void SetNumber(qint64 nNumber) { m_nNumber = nNumber; }

    /** Goes to a shorter one, as nLimits of the limits want it; false when there is none. */
    bool Shorten(int nLimits = int(LIMITS.size()))
    {
        const QByteArray baBefore = Name();
        while (m_nLimit + 1 < nLimits) {
            ++m_nLimit;
            if (Name() != baBefore) {
                return true;
            }
        }
        return false;
    }

    /** Goes to one with fewer characters that a disk may refuse; false when there is none. */
    bool Simplify(int nError)
    {
        const QByteArray baBefore = m_baBase;
        while (m_nStep < LAST_STEP && m_baBase == baBefore) {
            m_baBase = Simplified(++m_nStep);
        }
        // Some names are kept by a system for itself, though all their letters are plain.
        if (m_baBase == baBefore && !m_bMarked && (nError == EINVAL || nError == EILSEQ)) {
            m_bMarked = true;
            m_baBase.prepend('_');
        }
        m_nNumber = m_baBase == baBefore ? m_nNumber : 0;
        return m_baBase != baBefore;
    }

private:
    static constexpr int LAST_STEP = 3;

    QByteArray Simplified(int nStep) const
    {
        if (nStep == 1) {
            return WithoutForbidden(m_baBase);
        }
        return nStep == 2 ? TextOnly(m_baBase) : AsciiOnly(m_baBase);
    }

    QByteArray m_baBase; // without number, not cut
    qint64 m_nNumber = 0; // none
    int m_nLimit = -1; // as long as it is
    int m_nStep = 0;
    bool m_bMarked = false;
};

} // namespace

/** Whether the disk may have said it of the name; the drivers have no one value for that. */
static bool IsOfTheName(int nError)
{
    switch (nError) {
    case EINVAL:
    case EILSEQ:
    case ENOENT:
    case EIO:
    case EPERM:
    case EACCES:
        return true;
    default:
        return false;
    }
}

QByteArray CTargetName::Numbered(const QByteArray& baName, qint64 nNumber)
{
    const STParts stParts = Parts(baName);
    return stParts.baStem + '_' + QByteArray::number(nNumber) + stParts.baSuffix;
}

QByteArray CTargetName::FirstForm(const QByteArray& baName) const
{
    const QByteArray baText = m_stRules.bTextNames ? TextOnly(baName) : baName;
    return m_stRules.bDropsDots ? WithoutEndingDots(baText) : baText;
}

STMadeEntry CTargetName::Make(const QByteArray& baFolder, const QByteArray& baName, const FnMake& fnMake)
{
    CNameForms forms(FirstForm(baName));
    STMadeEntry stFirst;
    while (true) {
        const QByteArray baTried = forms.Name();
        const QByteArray baPath = baFolder + '/' + baTried;
        const int nError = fnMake(baPath);
        const QByteArray baKey = baFolder + '/' + forms.Key();
        if (nError == 0) {
            Remember(baKey, forms.Number());
            return {baPath, baTried != baName, 0};
        }
        if (stFirst.nError == 0 && nError != EEXIST) {
            stFirst = {baPath, false, nError};
        }
        if (nError == EEXIST && forms.Number() < MOST_NUMBER) {
            forms.SetNumber(forms.Number() > 0 ? forms.Number() + 1 : m_mapNumber.value(baKey, 1));
            continue;
        }
        const bool bOther = nError == ENAMETOOLONG
            ? forms.Shorten()
            : IsOfTheName(nError) && (forms.Simplify(nError) || forms.Shorten(NAME_LIMITS));
        if (!bOther) {
            return stFirst.nError != 0 ? stFirst : STMadeEntry{baPath, false, nError};
        }
    }
}

/** Keeps the number after one that was taken. */
void CTargetName::Remember(const QByteArray& baKey, qint64 nNumber)
{
    if (nNumber == 0) {
        return;
    }
    if (m_mapNumber.size() >= NUMBERS_KEPT) {
        m_mapNumber.clear();
    }
    m_mapNumber.insert(baKey, nNumber + 1);
}
