#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/**
 * A folder for one test, filled by relative paths and removed at the end.
 * Every operation stops the test run when it fails: a fixture that is not
 * there makes each later check meaningless.
 */
class CTempTree
{
public:
    CTempTree();

    /** Absolute path of an entry, existing or not; without argument the folder itself. */
    QString Path(const QString& strRelative = QString()) const;

    /** Writes a file, its folders included; returns its absolute path. */
    QString Write(const QString& strRelative, const QByteArray& baContent = QByteArray());

    /** Makes empty files with their folders; what ends in "/" is a folder. */
    void Fill(const QStringList& listEntry);

    /** Makes an empty file for each number from nFirst to nLast, which stands for the %1 of the pattern. */
    void FillNumbered(const QString& strPattern, int nFirst, int nLast);

    /** Makes a folder with its parents; returns its absolute path. */
    QString MkDir(const QString& strRelative);

    /** Makes a symbolic link whose text is strTarget; returns its absolute path. */
    QString Link(const QString& strRelative, const QString& strTarget);

    /** Writes a file whose name is given as bytes, in the folder itself. */
    void WriteBytesName(const QByteArray& baName, const QByteArray& baContent = QByteArray());

    /** Content of a file below the folder; "<cannot be read>" where there is none that can be read. */
    QByteArray Read(const QString& strRelative) const;

    /** True when the entry is there (a broken link counts). */
    bool Has(const QString& strRelative) const;

private:
    QTemporaryDir m_dir;
};
