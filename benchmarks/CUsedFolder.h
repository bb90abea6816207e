#pragma once

#include <QString>
#include <QVector>

#include <random>

/**
 * A folder as it lies on a disk that has been in use for years. The files of one folder lie
 * together, as file systems try to have it, in the order in which they were saved last. That
 * is neither the order of their names nor, but for photos, that in which they were made,
 * which their inode numbers have. Nor do the folders follow each other by name. After every
 * fourth file there is a gap, where another one was that is gone. It is the same each time.
 */
class CUsedFolder
{
public:
    /** 800 files with 154 MB: notes and settings, documents, photos; some folders lie deep. */
    static CUsedFolder Home();

    /** nFiles of nSize bytes, 50 in a folder. */
    static CUsedFolder Alike(int nFiles, qint64 nSize);

    /** nFiles of nLeast to nMost bytes, 50 in a folder. */
    static CUsedFolder Between(int nFiles, qint64 nLeast, qint64 nMost);

    /** How many files it has. */
    int Files() const { return m_listFile.size(); }

    /** How many bytes they have together. */
    qint64 Bytes() const;

    /** Makes it as strFolder, and brings it to the disk. */
    void Make(const QString& strFolder);

    /** Once it is made: how many stretches of the disk its bytes lie in, with others in between. */
    int Stretches(const QString& strFolder) const;

private:
    struct STFile
    {
        QString strPath; ///< in the folder
        qint64 nSize = 0;
        int nImported = 0; ///< made and saved in this order, 0 in any
    };

    void Add(const QString& strPath, qint64 nSize, int nImported = 0)
    {
        m_listFile.append({strPath, nSize, nImported});
    }
    void AddEvenly(int nFiles, qint64 nLeast, qint64 nMost, const QString& strName);
    qint64 Random(qint64 nLeast, qint64 nMost);
    QVector<STFile> Shuffled();

    QVector<STFile> m_listFile;
    std::minstd_rand m_random; // the same numbers on each system
};
