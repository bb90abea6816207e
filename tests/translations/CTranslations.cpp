#include "translations/CTranslations.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>

// Names of the program and of its windows, by which people and tools find it.
static const QStringList NAMES{QStringLiteral("Tarnwick"), QStringLiteral("Kelvane Tarnwick"),
                               QStringLiteral("CTarnwickMacPE"), QStringLiteral("NotFoundOrNoItemView")};

// Pieces of the name of the folder that holds a rescue.
static const QStringList FOLDER_PIECES{QStringLiteral("Tarnwick"), QStringLiteral(" at ")};

static QString FromEnvironment(const char* pName) { return QFile::decodeName(qgetenv(pName)); }

QStringList CTranslations::Languages()
{
    return {QStringLiteral("Chinese"), QStringLiteral("ChineseTW"), QStringLiteral("Dutch"),
            QStringLiteral("English"), QStringLiteral("French"),    QStringLiteral("German"),
            QStringLiteral("Italian"), QStringLiteral("Japanese"),  QStringLiteral("Portuguese"),
            QStringLiteral("Spanish")};
}

QString CTranslations::SourcePath(const QString& strLanguage)
{
    return QStringLiteral("%1/translations/TarnwickMacPE_%2.ts")
        .arg(FromEnvironment("TARNWICK_SOURCE_DIR"), strLanguage);
}

QString CTranslations::BuiltPath(const QString& strLanguage)
{
    return QStringLiteral("%1/bin/Language/TarnwickMacPE_%2.qm")
        .arg(FromEnvironment("TARNWICK_BUILD_DIR"), strLanguage);
}

QString CTranslations::Code(const QString& strLanguage)
{
    static const QStringList s_codes{QStringLiteral("zh-Hans-CN"), QStringLiteral("zh-Hant-TW"),
                                     QStringLiteral("nl"),         QStringLiteral("en"),
                                     QStringLiteral("fr"),         QStringLiteral("de"),
                                     QStringLiteral("it"),         QStringLiteral("ja"),
                                     QStringLiteral("pt-BR"),      QStringLiteral("es")};
    return s_codes.at(Languages().indexOf(strLanguage));
}

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
        if (reader.isEndElement() && reader.name() == QLatin1String("message")) {
            listEntry.append(entry);
        }
        if (!reader.isStartElement()) {
            continue;
        }
        if (reader.name() == QLatin1String("name")) {
            entry.strContext = reader.readElementText();
        } else if (reader.name() == QLatin1String("source")) {
            entry.strSource = reader.readElementText();
        } else if (reader.name() == QLatin1String("translation")) {
            entry.strType = reader.attributes().value(QLatin1String("type")).toString();
            entry.strTranslation = reader.readElementText();
        }
    }
    return reader.hasError() ? QList<STEntry>() : listEntry;
}

QString CTranslations::Update(const QString& strPath)
{
    QProcess process;
    process.setWorkingDirectory(FromEnvironment("TARNWICK_SOURCE_DIR"));
    process.start(QStringLiteral(TARNWICK_LUPDATE),
                  {QStringLiteral("-silent"), QStringLiteral("-locations"), QStringLiteral("none"),
                   QStringLiteral("src"), QStringLiteral("-ts"), strPath});
    if (!process.waitForFinished() || process.exitCode() != 0) {
        return process.errorString() + QString::fromLocal8Bit(process.readAllStandardError());
    }
    return QString();
}

/** What stands in a text for something else: placeholders and marks of HTML, in a fixed order. */
static QStringList Marks(const QString& strText)
{
    static const QRegularExpression s_mark(QStringLiteral("%n|%L?[0-9]+|<[^>]*>|&[a-z]+;"));
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
    static const QRegularExpression s_span(QStringLiteral("<span [^>]*>[^<]*(%[0-9])[^<]*</span>"));
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
    static const QRegularExpression s_forbidden(QStringLiteral("[/\\\\:*?\"<>|\\x00-\\x1F\\x7F]"));
    QStringList listMistake;
    const QString& strText = entry.strTranslation;
    if (strText.contains(s_forbidden)) {
        listMistake.append(QStringLiteral("has a character that no file name may have"));
    }
    if (strText != strText.normalized(QString::NormalizationForm_C)) {
        listMistake.append(QStringLiteral("is not composed"));
    }
    const bool bBlanks = strText == QLatin1Char(' ') + strText.trimmed() + QLatin1Char(' ');
    if (entry.strSource == QLatin1String(" at ") && !bBlanks) {
        listMistake.append(QStringLiteral("has lost its blanks"));
    }
    return listMistake;
}

static QStringList MistakesInText(const STEntry& entry)
{
    const QString& strSource = entry.strSource;
    const QString& strText = entry.strTranslation;
    QStringList listMistake;
    if (Marks(strText) != Marks(strSource) || InSpans(strText) != InSpans(strSource)) {
        listMistake.append(QStringLiteral("has other placeholders or marks"));
    }
    if (strText.count(QLatin1String("Tarnwick")) != strSource.count(QLatin1String("Tarnwick"))) {
        listMistake.append(QStringLiteral("changes the product's name"));
    }
    const bool bColon = strText.endsWith(QLatin1Char(':')) || strText.endsWith(QChar(0xFF1A));
    if (strSource.endsWith(QLatin1Char(':')) != bColon) {
        listMistake.append(QStringLiteral("has lost its colon"));
    }
    const bool bOtherLines = strText.count(QLatin1Char('\n')) != strSource.count(QLatin1Char('\n'));
    if (bOtherLines || strText.contains(QLatin1Char('\t'))) {
        listMistake.append(QStringLiteral("has other line breaks or a tab"));
    }
    return listMistake;
}

static QStringList Mistakes(const STEntry& entry, const QString& strLanguage)
{
    if (!entry.strType.isEmpty()) {
        return {QStringLiteral("is ") + entry.strType};
    }
    if (entry.strTranslation.trimmed().isEmpty()) {
        return {QStringLiteral("is empty")};
    }
    QStringList listMistake = MistakesInText(entry);
    const bool bSame = entry.strTranslation == entry.strSource;
    if ((strLanguage == QLatin1String("English") || NAMES.contains(entry.strSource)) && !bSame) {
        listMistake.append(QStringLiteral("is not left as it is"));
    }
    // A sentence is the same in no two languages; a word may be.
    const bool bSentence = entry.strSource.count(QLatin1Char(' ')) >= 2;
    if (strLanguage != QLatin1String("English") && bSentence && bSame
        && entry.strSource != QLatin1String(" at ")) {
        listMistake.append(QStringLiteral("is still English"));
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
            listProblem.append(
                QStringLiteral("%1: \"%2\" %3").arg(entry.strContext, entry.strSource, strMistake));
        }
    }
    return listProblem;
}
