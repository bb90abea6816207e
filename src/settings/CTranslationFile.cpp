#include "settings/CTranslationFile.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <array>

// Texts of a window are some kilobytes.
static const qint64 MOST_FILE_BYTES = qint64(16) * 1024 * 1024;

static const std::array<uchar, 16> MAGIC
    = {0x3c, 0xb8, 0x64, 0x18, 0xca, 0xef, 0x9c, 0x95, 0xcd, 0x21, 0x1c, 0xbf, 0x60, 0xa1, 0xbd, 0xdd};

// Sections: a tag of one byte, a length of four, the content.
static const uchar SECTION_HASHES = 0x42;
static const uchar SECTION_MESSAGES = 0x69;
static const uchar SECTION_PLURAL_RULES = 0x88;
static const uchar SECTION_LANGUAGE = 0xa7;

// Pieces of a message: a tag of one byte; behind all but the end a length of four and the content.
static const uchar PIECE_END = 1;
static const uchar PIECE_TRANSLATION = 3;
static const uchar PIECE_SOURCE = 6;
static const uchar PIECE_CONTEXT = 7;
static const uchar PIECE_COMMENT = 8;

static const int HASH_ENTRY_BYTES = 8; // the hash, and where its message begins

namespace {

/** Reads numbers and pieces one after the other; what would lie beyond the end is none. */
class CBytes
{
public:
    explicit CBytes(const QByteArray& baBytes, int nAt = 0)
        : m_baBytes(baBytes)
        , m_nAt(nAt)
    {
    }

    bool AtEnd() const { return m_nAt >= m_baBytes.size(); }

    std::optional<uchar> Byte()
    {
        return AtEnd() ? std::nullopt : std::optional<uchar>(uchar(m_baBytes.at(m_nAt++)));
    }

    std::optional<quint32> Number()
    {
        if (m_baBytes.size() - m_nAt < int(sizeof(quint32))) {
            return std::nullopt;
        }
        m_nAt += int(sizeof(quint32));
        return qFromBigEndian<quint32>(m_baBytes.constData() + m_nAt - sizeof(quint32));
    }

    /** A length and as many bytes. */
    std::optional<QByteArray> Piece()
    {
        const std::optional<quint32> nLength = Number();
        if (!nLength || *nLength > quint32(m_baBytes.size() - m_nAt)) {
            return std::nullopt;
        }
        m_nAt += int(*nLength);
        return m_baBytes.mid(m_nAt - int(*nLength), int(*nLength));
    }

private:
    const QByteArray& m_baBytes;
    int m_nAt;
};

/** The sections that texts are looked up in. */
struct STSections
{
    QByteArray baHashes;
    QByteArray baMessages;
    QByteArray baPluralRules;
};

} // namespace

/** The section's place in the record; nullptr for one that the program has no use for. */
static QByteArray* PlaceOf(STSections& sections, uchar chTag)
{
    switch (chTag) {
    case SECTION_HASHES:
        return &sections.baHashes;
    case SECTION_MESSAGES:
        return &sections.baMessages;
    case SECTION_PLURAL_RULES:
        return &sections.baPluralRules;
    default:
        return nullptr;
    }
}

/** Nothing unless the sections fill the file exactly, each at most once and each of a known kind. */
static std::optional<STSections> SectionsOf(const QByteArray& baFile)
{
    STSections sections;
    for (CBytes bytes(baFile, int(MAGIC.size())); !bytes.AtEnd();) {
        const uchar chTag = bytes.Byte().value_or(0);
        const std::optional<QByteArray> baContent = bytes.Piece();
        QByteArray* pPlace = PlaceOf(sections, chTag);
        // Tables of contexts and other files to load come from options that the build does not use.
        if (!baContent || baContent->isEmpty() || (!pPlace && chTag != SECTION_LANGUAGE)) {
            return std::nullopt;
        }
        if (pPlace && !pPlace->isEmpty()) {
            return std::nullopt;
        }
        if (pPlace) {
            *pPlace = *baContent;
        }
    }
    return sections;
}

/** Whether a message that begins there is whole, with a text in it. */
static bool IsMessage(const QByteArray& baMessages, quint32 nOffset)
{
    if (nOffset >= quint32(baMessages.size())) {
        return false;
    }
    bool bText = false;
    for (CBytes bytes(baMessages, int(nOffset));;) {
        const uchar chTag = bytes.Byte().value_or(0);
        if (chTag == PIECE_END) {
            return bText;
        }
        const bool bTranslation = chTag == PIECE_TRANSLATION;
        if (!bTranslation && chTag != PIECE_SOURCE && chTag != PIECE_CONTEXT && chTag != PIECE_COMMENT) {
            return false;
        }
        const std::optional<QByteArray> baPiece = bytes.Piece();
        // A translation is UTF-16.
        if (!baPiece || (bTranslation && baPiece->size() % 2 != 0)) {
            return false;
        }
        bText = bText || bTranslation;
    }
}

/** Whether the hashes ascend, as they are searched by halves, and each leads to a message. */
static bool LeadToMessages(const QByteArray& baHashes, const QByteArray& baMessages)
{
    quint32 nBefore = 0;
    for (CBytes bytes(baHashes); !bytes.AtEnd();) {
        const quint32 nHash = bytes.Number().value_or(0);
        const std::optional<quint32> nOffset = bytes.Number();
        if (!nOffset || nHash < nBefore || !IsMessage(baMessages, *nOffset)) {
            return false;
        }
        nBefore = nHash;
    }
    return !baHashes.isEmpty() && baHashes.size() % HASH_ENTRY_BYTES == 0;
}

std::optional<QByteArray> CTranslationFile::Read(const QString& strPath)
{
    QFile file(strPath);
    // Opening a pipe would wait for somebody who writes to it.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray baFile = file.read(MOST_FILE_BYTES + 1);
    return baFile.size() > MOST_FILE_BYTES ? std::nullopt : std::optional<QByteArray>(baFile);
}

std::optional<QString> CTranslationFile::Damage(const QByteArray& baFile)
{
    const QByteArray baMagic(reinterpret_cast<const char*>(MAGIC.data()), int(MAGIC.size()));
    if (!baFile.startsWith(baMagic)) {
        return QStringLiteral("it is no translation file");
    }
    const std::optional<STSections> sections = SectionsOf(baFile);
    if (!sections) {
        return QStringLiteral("its sections are damaged");
    }
    if (!LeadToMessages(sections->baHashes, sections->baMessages)) {
        return QStringLiteral("its texts are damaged");
    }
    return std::nullopt;
}
