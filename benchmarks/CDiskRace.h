#pragma once

#include "CSlowDisk.h"
#include "CUsedFolder.h"
#include "support/CNodeTree.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVector>

#include <memory>
#include <optional>

/** What is copied from what to what. */
struct STRaceCourse
{
    QString strName; ///< by which it is chosen
    QString strTitle;
    CUsedFolder folder;
    std::optional<STDiskModel> stSource; ///< none: from memory
    std::optional<STDiskModel> stStick; ///< none: to memory
    bool bEngineAlone = false; ///< nobody beside it, and once
};

/** One copy by one of those that take part. Times in ms. */
struct STRaceRun
{
    double nHanded = 0; ///< until the last byte is handed to the system
    double nOnDisk = 0; ///< until it is on the disk
    double nLongestStep = 0; ///< of the engine: between two changes of what the bar shows
    STDiskWork stSource;
    STDiskWork stStick;
};

/**
 * Copies a folder by the engine and by "cp -a", "rsync -a" and two tars, one after another.
 * Before each copy the stick is empty and nothing of either disk is in the cache.
 */
class CDiskRace
{
public:
    /** Prepares the disks and the folder; with bComplete the engine is told to save everything. */
    CDiskRace(const STRaceCourse& stCourse, bool bComplete);
    ~CDiskRace();
    CDiskRace(const CDiskRace&) = delete;
    CDiskRace& operator=(const CDiskRace&) = delete;

    /** The names of those that take part; the engine is the first. */
    static QStringList Entrants();

    /** One copy by that entrant. */
    STRaceRun Run(int nEntrant);

    /** The least time, in ms, that the files take the one head and the other. */
    double LeastSourceMs() const;
    double LeastStickMs() const;

    /** How many seeks of the source's head that takes, beside what leads to the files. */
    int LeastSeeks() const { return m_nStretches; }

    /** Runs a command instead, with the places in its environment; returns what it ends with. */
    int RunCommand(const QStringList& listCommand);

private:
    void Prepare();
    QString Source() const;
    QString Stick() const;
    QString Target() const { return Stick() + "/copy"; }
    STRaceRun RunEngine();
    STRaceRun RunPeer(int nEntrant) const;

    CUsedFolder m_folder;
    const STRaceCourse m_stCourse;
    QTemporaryDir m_dir;
    std::unique_ptr<CSlowDisk> m_pSource;
    std::unique_ptr<CSlowDisk> m_pStick;
    CNodeTree m_nodes;
    int m_nStretches = 0; // of the source's disk in which the files lie
};
