#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

/** What the folders of a volume tell of the files of its users. */
struct STHomeFacts
{
    bool bSystem = false; ///< a Mac starts from it; not the system that runs here, and none that installs one
    bool bUsers = false; ///< it has a folder "Users" that could be read
    bool bHomes = false; ///< with somebody's home in it
};

/** A volume whose files are offered, and what it tells. */
struct STHomeVolume
{
    QString strPath;
    QString strName; ///< as shown to the user
    QByteArray baDevice; ///< as CVolumeInfo::DeviceOf tells it; empty when not known
    std::optional<STHomeFacts> stFacts = {}; ///< nothing while it has not answered
};

/** A Mac's start-up volume without the files of its users. */
struct STMissingHomes
{
    QString strSystem; ///< its name
    QString strHomes; ///< name of the volume that has them; empty when there is none among those offered
};

/**
 * Finds the start-up volumes of Macs whose users' files are not on them: since 2019 these
 * lie on a volume of their own, which the system joins to the start-up volume while it
 * runs. From another system both are seen apart, or one of them locked and not at all.
 */
class CHomeFolders
{
public:
    /** What the volume at that path tells; the calling thread waits for its disk. Follows no link in it. */
    static STHomeFacts Look(const QString& strPath);

    /**
     * One start-up volume whose users' files are elsewhere; first of all one for which no
     * volume of the list has them. Touches no disk.
     */
    static std::optional<STMissingHomes> Missing(const QVector<STHomeVolume>& listVolume);

    /** What volumes of one disk that share its room have in common; empty for what is no such device. */
    static QByteArray Container(const QByteArray& baDevice);
};
