#include "pages/CDiskQuestions.h"

#include "copy/CCopyPlatform.h"
#include "disk/platform/CVolumeInfo.h"

#include <QDeadlineTimer>
#include <QMetaObject>

#include <cerrno>

// A path that is not there is no disk that refuses to be written to.
static bool IsRefused(const QString& strPath)
{
    return !CCopyPlatform::CanWrite(strPath) && (errno == EACCES || errno == EPERM || errno == EROFS);
}

// The file system's own count of free blocks can be larger than what a user gets
// of them, and a copy that was admitted by it would run full.
static STDiskState StateOf(const QString& strPath)
{
    const STDiskSpace stSpace = CCopyPlatform::GetDiskSpace(strPath);
    return {CVolumeInfo::DeviceOf(strPath), !stSpace.bReadOnly && !IsRefused(strPath), stSpace.nFreeBytes,
            stSpace.nTotalBytes, CCopyPlatform::GetDiskRules(strPath)};
}

static std::chrono::milliseconds Left(const QDeadlineTimer& deadline)
{
    return std::chrono::milliseconds(deadline.remainingTime());
}

CDiskQuestions::CDiskQuestions(QObject* pParent)
    : QObject(pParent)
{
}

std::optional<STDiskState> CDiskQuestions::Ask(const QString& strPath, std::chrono::milliseconds time)
{
    const QDeadlineTimer deadline(time);
    // The answer to an earlier question is older than this one, and may be wrong by now.
    if (const auto it = m_mapOpen.find(strPath); it != m_mapOpen.end()) {
        if (!it->second->Wait(time)) {
            return std::nullopt;
        }
        m_mapOpen.erase(it);
    }
    const Question& question = Open(strPath);
    question.Wait(Left(deadline));
    const std::optional<STDiskState> state = question.Get();
    if (state) {
        m_mapOpen.erase(strPath);
    }
    return state;
}

bool CDiskQuestions::IsOpen(const QString& strPath) const { return m_mapOpen.count(strPath) > 0; }

void CDiskQuestions::Forget(const QString& strPath) { m_mapOpen.erase(strPath); }

CDiskQuestions::Question& CDiskQuestions::Open(const QString& strPath)
{
    const auto fnAnswered = [this, strPath] {
        QMetaObject::invokeMethod(
            this, [this, strPath] { OnAnswer(strPath); }, Qt::QueuedConnection);
    };
    auto& pQuestion = m_mapOpen[strPath];
    pQuestion = std::make_unique<Question>([strPath] { return StateOf(strPath); }, fnAnswered);
    return *pQuestion;
}

// Told of each answer; most have been fetched by who asked.
void CDiskQuestions::OnAnswer(const QString& strPath)
{
    const auto it = m_mapOpen.find(strPath);
    const std::optional<STDiskState> state = it == m_mapOpen.end() ? std::nullopt : it->second->Get();
    if (!state) {
        return;
    }
    m_mapOpen.erase(it);
    emit SignalAnswered(strPath, *state);
}
