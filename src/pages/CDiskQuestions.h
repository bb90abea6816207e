#pragma once

#include "copy/CCopyPlatform.h"
#include "files/CAsideQuestion.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <chrono>
#include <map>
#include <memory>
#include <optional>

/** What a disk says of itself; the initial values are those of a disk that is not there. */
struct STDiskState
{
    QByteArray baDevice; ///< as CVolumeInfo::DeviceOf tells it
    bool bWritable = true; ///< false when it is read-only or this user may not write to it
    qint64 nFreeBytes = -1; ///< that a user without special rights can still write; less than 0: not known
    qint64 nTotalBytes = -1; ///< of the whole volume; less than 0: not known
    STDiskRules stRules = {}; ///< what it can hold
};

/**
 * Asks disks that may never answer. One question is open for each path at most,
 * so that a disk that hangs holds one thread, however often it is asked.
 *
 * What it has not heard when it is destroyed it leaves behind. GUI thread only.
 */
class CDiskQuestions : public QObject
{
    Q_OBJECT

public:
    explicit CDiskQuestions(QObject* pParent = nullptr);

    /**
     * Waits up to that time for what the disk says from now on; nothing when it has
     * not answered by then. SignalAnswered tells it when it does all the same.
     */
    std::optional<STDiskState> Ask(const QString& strPath, std::chrono::milliseconds time);

    /** Whether a question for the path has not been answered yet. */
    bool IsOpen(const QString& strPath) const;

    /** Waits no longer for what lies at the path: another disk may come in its place. */
    void Forget(const QString& strPath);

signals:
    /** An answer has come after Ask had given up waiting. */
    void SignalAnswered(const QString& strPath, const STDiskState& state);

private:
    using Question = CAsideQuestion<STDiskState>;

    void OnAnswer(const QString& strPath);
    Question& Open(const QString& strPath);

    std::map<QString, std::unique_ptr<Question>> m_mapOpen; // by path
};
