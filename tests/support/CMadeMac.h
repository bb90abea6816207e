#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

/** What a copy of a whole volume has to hold when nothing of it is left out and nothing is there twice. */
struct STMadeMac
{
    qint64 nFiles = 0; ///< names of regular files: a file with two names counts twice
    qint64 nFolders = 0; ///< below the volume's own
    qint64 nLinks = 0; ///< symbolic ones, wherever they lead
    qint64 nBytes = 0; ///< sizes of the files, added up name by name
    bool bAttributes = false; ///< its file system holds extended attributes, and some have them
    QStringList listLeftOut = {}; ///< paths of what no copy can hold, and a report has to name
};

/**
 * A volume as a Mac has it, with all that is hard to copy: made anew the same to the
 * byte, permission and time each time, by plain calls of the system. What a copy of it
 * has to hold is counted while it is made, so that nobody has to go through it.
 *
 * Stops the test run when something cannot be made.
 */
class CMadeMac
{
public:
    /** The fewest files that it can have. */
    static constexpr int LEAST_FILES = 200;

    /** Fills the folder strVolume, which exists and is empty, with nFiles names of regular files. */
    CMadeMac(const QString& strVolume, int nFiles);

    /** Unmounts what PlantMount has mounted. */
    ~CMadeMac();
    CMadeMac(const CMadeMac&) = delete;
    CMadeMac& operator=(const CMadeMac&) = delete;

    /**
     * Adds links that lead out of the volume, or nowhere, or to what it has by its own
     * name below "/Volumes". Where they are followed they lead into this system.
     */
    void PlantLinksOut();

    /** Adds a pipe and a socket. */
    void PlantSpecials();

    /** Mounts another file system, with a file in it, in a folder; false where nothing may be mounted. */
    bool PlantMount();

    /** Adds folders in each other, too deep for any path, and a file in the last; they are not counted. */
    void PlantTooDeep();

    /** What a copy of all of it has to hold, with what was planted. */
    const STMadeMac& Made() const { return m_stMade; }

    /** Absolute path of an entry of the volume; without argument the volume itself. */
    QString Path(const QString& strEntry = {}) const;

private:
    void MakeHome();
    void MakeSizes();
    void MakeNames();
    void MakeLoops();
    void MakeApplication();
    void MakeContainers();
    void MakeKinds();
    void MakeDeep();
    void Fill(qint64 nFiles);
    void Folder(const QByteArray& baEntry, unsigned nMode = 0755);
    void File(const QByteArray& baEntry, const QByteArray& baContent, unsigned nMode = 0644);
    void Sparse(const QByteArray& baEntry, qint64 nSize);
    void HardLink(const QByteArray& baOld, const QByteArray& baNew);
    void Link(const QByteArray& baEntry, const QByteArray& baTarget);
    void Attribute(const QByteArray& baEntry, const char* pszName, const QByteArray& baValue);
    void Special(const QByteArray& baEntry, unsigned nMode);
    void SetTime(const QByteArray& baEntry);
    QByteArray Bytes(const QByteArray& baEntry) const;

    const QByteArray m_baVolume;
    QSet<QByteArray> m_setFolder; // made so far; "" is the volume's own
    QByteArray m_baMounted;
    STMadeMac m_stMade;
};
