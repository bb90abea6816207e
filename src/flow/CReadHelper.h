#pragma once

#include "flow/CReadPlan.h"

#include <memory>
#include <vector>

/**
 * Asks the disk for the files of a plan, on a thread of its own that nobody waits for
 * longer than told. It never reads. Two files are open at most: one
 * that is asked for in part, and the one that was asked for last.
 */
class CReadHelper
{
public:
    explicit CReadHelper(std::shared_ptr<CReadPlan> pPlan);
    ~CReadHelper();

    CReadHelper(const CReadHelper&) = delete;
    CReadHelper& operator=(const CReadHelper&) = delete;

    /** Works until the plan ends. */
    void Run();

private:
    /** A file of the batch whose place is known. */
    struct STPlaced
    {
        qint64 nNumber = 0;
        QByteArray baPath = {};
        quint64 nPlace = 0;
        qint64 nShare = 0; ///< bytes that may be asked for
    };

    /** An open file. */
    struct STHeld
    {
        qint64 nNumber = 0;
        STSourceFile stFile = {};
    };

    void Batch();
    void Unfold(const QByteArray& baFolder);
    std::optional<STHeld> Open(qint64 nNumber, const QByteArray& baPath);
    void Ask(const STHeld& stHeld, qint64 nShare);
    bool AskFor(const STHeld& stHeld, qint64 nFrom, qint64 nTo);
    void Keep(const STHeld& stHeld);
    void Large();
    void Look();

    const std::shared_ptr<CReadPlan> m_pPlan;
    STHeld m_stLarge; // asked for in part
    qint64 m_nLargeFrom = 0; // what was asked for of it
    STHeld m_stLast; // the last one of the last batch
};
