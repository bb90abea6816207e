#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/** One entry of a translation source. */
struct STEntry
{
    QString strContext;
    QString strSource;
    QString strTranslation;
    QString strType; ///< empty for a finished entry, else "unfinished", "vanished" or "obsolete"
};

/** Reads and checks the translation sources of the program. Any thread. */
class CTranslations
{
public:
    /** The ten languages, by the names that stand in the names of their files. */
    static QStringList Languages();

    /** Path of a language's translation source. */
    static QString SourcePath(const QString& strLanguage);

    /** Path of a language's built translation beside the executable. */
    static QString BuiltPath(const QString& strLanguage);

    /** Code of a language as the system's preferences have it, such as "zh-Hant-TW". */
    static QString Code(const QString& strLanguage);

    /** Entries of a translation source in their order; none when it cannot be read. */
    static QList<STEntry> Entries(const QString& strPath);

    /** Brings the file up to date with the program's code by lupdate; empty, or what went wrong. */
    static QString Update(const QString& strPath);

    /** What is wrong with the entries of one language, one line for each mistake. */
    static QStringList Problems(const QList<STEntry>& listEntry, const QString& strLanguage);
};
