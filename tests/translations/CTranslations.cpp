#include "translations/CTranslations.h"

#include "support/TestFiles.h"

#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>

// Names of the program and of its windows, by which people and tools find it.
static const QStringList NAMES{"Tarnwick", "Kelvane Tarnwick", "CTarnwickMacPE", "NotFoundOrNoItemView"};

// Pieces of the name of the folder that holds a rescue.
static const QStringList FOLDER_PIECES{"Tarnwick", " at "};

// The languages by the names of their files, with their codes.
static const QMap<QString, QString> LANGUAGES{
    {"Chinese", "zh-Hans-CN"}, {"ChineseTW", "zh-Hant-TW"},
    {"Dutch", "nl"},           {"English", "en"},
    {"French", "fr"},          {"German", "de"},
    {"Italian", "it"},         {"Japanese", "ja"},
    {"Portuguese", "pt-BR"},   {"Spanish", "es"},
};

static QString SourceFolder() { return QFile::decodeName(qgetenv("TARNWICK_SOURCE_DIR")); }

QStringList CTranslations::Languages() { return LANGUAGES.keys(); }

QString CTranslations::SourcePath(const QString& strLanguage)
{
    return QString("%1/translations/TarnwickMacPE_%2.ts").arg(SourceFolder(), strLanguage);
}

QString CTranslations::BuiltPath(const QString& strLanguage)
{
    return BuildPath(QString("bin/Language/TarnwickMacPE_%1.qm").arg(strLanguage));
}

QString CTranslations::Code(const QString& strLanguage) { return LANGUAGES.value(strLanguage); }

QList<STEntry> CTranslations::Entries(const QString& strPath)
{
    QList<STEntry> listEntry;
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return listEntry;
    }
    QXmlStreamReader reader(&file);
    STEntry entry;
    while (reader.readNext() != QXmlStreamReader::EndDocument && !reader.hasError()) {
        if (reader.isEndElement() && reader.name() == "message") {
            listEntry.append(entry);
        }
        if (!reader.isStartElement()) {
            continue;
        }
        if (reader.name() == "name") {
            entry.strContext = reader.readElementText();
        } else if (reader.name() == "source") {
            entry.strSource = reader.readElementText();
        } else if (reader.name() == "translation") {
            entry.strType = reader.attributes().value("type").toString();
            entry.strTranslation = reader.readElementText();
        }
    }
    return reader.hasError() ? QList<STEntry>() : listEntry;
}

QString CTranslations::Update(const QString& strPath)
{
    QProcess process;
    process.setWorkingDirectory(SourceFolder());
    process.start(TARNWICK_LUPDATE, {"-silent", "-locations", "none", "src", "-ts", strPath});
    if (!process.waitForFinished() || process.exitCode() != 0) {
        return process.errorString() + QString::fromLocal8Bit(process.readAllStandardError());
    }
    return QString();
}

/** What stands in a text for something else: placeholders and marks of HTML, in a fixed order. */
static QStringList Marks(const QString& strText)
{
    static const QRegularExpression s_mark("%n|%L?[0-9]+|<[^>]*>|&[a-z]+;");
    QStringList listMark;
    for (auto it = s_mark.globalMatch(strText); it.hasNext();) {
        listMark.append(it.next().captured());
    }
    std::sort(listMark.begin(), listMark.end());
    return listMark;
}

/** The placeholders between a mark that opens and the next one that closes. */
static QStringList InSpans(const QString& strText)
{
    static const QRegularExpression s_span("<span [^>]*>[^<]*(%[0-9])[^<]*</span>");
    QStringList listInside;
    for (auto it = s_span.globalMatch(strText); it.hasNext();) {
        listInside.append(it.next().captured(1));
    }
    std::sort(listInside.begin(), listInside.end());
    return listInside;
}

static QStringList MistakesInFolderPiece(const STEntry& entry)
{
    // Forbidden in the names of FAT and exFAT, or of files altogether.
    static const QRegularExpression s_forbidden("[/\\\\:*?\"<>|\\x00-\\x1F\\x7F]");
    QStringList listMistake;
    const QString& strText = entry.strTranslation;
    if (strText.contains(s_forbidden)) {
        listMistake.append("has a character that no file name may have");
    }
    if (strText != strText.normalized(QString::NormalizationForm_C)) {
        listMistake.append("is not composed");
    }
    const bool bBlanks = strText == ' ' + strText.trimmed() + ' ';
    if (entry.strSource == " at " && !bBlanks) {
        listMistake.append("has lost its blanks");
    }
    return listMistake;
}

static QStringList MistakesInText(const STEntry& entry)
{
    const QString& strSource = entry.strSource;
    const QString& strText = entry.strTranslation;
    QStringList listMistake;
    if (Marks(strText) != Marks(strSource) || InSpans(strText) != InSpans(strSource)) {
        listMistake.append("has other placeholders or marks");
    }
    if (strText.count("Tarnwick") != strSource.count("Tarnwick")) {
        listMistake.append("changes the product's name");
    }
    const bool bColon = strText.endsWith(':') || strText.endsWith(QChar(0xFF1A));
    if (strSource.endsWith(':') != bColon) {
        listMistake.append("has lost its colon");
    }
    const bool bOtherLines = strText.count('\n') != strSource.count('\n');
    if (bOtherLines || strText.contains('\t')) {
        listMistake.append("has other line breaks or a tab");
    }
    return listMistake;
}

static QStringList Mistakes(const STEntry& entry, const QString& strLanguage)
{
    if (!entry.strType.isEmpty()) {
        return {"is " + entry.strType};
    }
    if (entry.strTranslation.trimmed().isEmpty()) {
        return {"is empty"};
    }
    QStringList listMistake = MistakesInText(entry);
    const bool bSame = entry.strTranslation == entry.strSource;
    if ((strLanguage == "English" || NAMES.contains(entry.strSource)) && !bSame) {
        listMistake.append("is not left as it is");
    }
    // A sentence is the same in no two languages; a word may be.
    const bool bSentence = entry.strSource.count(' ') >= 2;
    if (strLanguage != "English" && bSentence && bSame && entry.strSource != " at ") {
        listMistake.append("is still English");
    }
    if (FOLDER_PIECES.contains(entry.strSource)) {
        listMistake.append(MistakesInFolderPiece(entry));
    }
    return listMistake;
}

QStringList CTranslations::Problems(const QList<STEntry>& listEntry, const QString& strLanguage)
{
    QStringList listProblem;
    for (const STEntry& entry : listEntry) {
        const QStringList listMistake = Mistakes(entry, strLanguage);
        for (const QString& strMistake : listMistake) {
            listProblem.append(QString("%1: \"%2\" %3").arg(entry.strContext, entry.strSource, strMistake));
        }
    }
    return listProblem;
}
