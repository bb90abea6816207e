#pragma once

#include "copy/STDamagedFile.h"

#include <QVector>
#include <QtGlobal>

#include <functional>
#include <optional>

class CCopyWork;

/** What damaged files may cost. */
struct STDamageRules
{
    qint64 nFileMs = qint64(60) * 1000; ///< time of reads that fail or are slow, for one file
    qint64 nAllMs = qint64(15) * 60 * 1000; ///< the same for all files, and once more for their ends
    int nMostAside = 20000; ///< files that are put aside
};

/**
 * The files with places that cannot be read, put aside until all others are copied,
 * and then finished: what can be read of them is, in smaller steps around what
 * cannot; zeros stand for the rest. No place that failed is read once more, and the
 * time that bad places may cost is limited, for a file and for all. Used on the thread
 * that copies.
 */
class CDamagedFiles
{
public:
    /** Gets each file with what has become of it. */
    using Done = std::function<void(const STDamagedFile&, const STCopyOutcome&)>;

    /** The work outlives this; fnDone is called from Finish, and from Add once very many are put aside. */
    CDamagedFiles(CCopyWork& work, Done fnDone, const STDamageRules& stRules = STDamageRules());

    /** Puts a file aside; where there are too many already, finishes it at once. */
    void Add(const STDamagedFile& stFile);

    /**
     * Finishes all that were put aside, and hands each over: whole when it could be read
     * after all, else with the byte ranges that zeros stand for. After a stop the rest is
     * handed over as it is.
     */
    void Finish();

private:
    struct STAside
    {
        STDamagedFile stFile;
        std::optional<STFileState> stTarget; ///< of its copy so far
    };

    void FinishOne(const STAside& stAside);

    CCopyWork& m_work;
    const Done m_fnDone;
    const STDamageRules m_stRules;
    QVector<STAside> m_listAside;
    qint64 m_nBadMs = 0; // time that bad places took
    bool m_bDiskInDoubt = false; // of the last file all that was tried has failed
};
