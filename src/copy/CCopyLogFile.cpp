#include "copy/CCopyLogFile.h"

#include "copy/CCopyPlatform.h"
#include "copy/CFreeFile.h"
#include "files/CAsideQuestion.h"
#include "files/CFileName.h"
#include "log/CLogTarnwick.h"

#include <QFile>

#include <cerrno>
#include <cstring>

// The log is a few MiB at most.
static std::chrono::milliseconds s_patience = std::chrono::seconds(10);

static const qint64 CHUNK = qint64(256) * 1024;

/** 0, or the errno value that kept the file from the disk. */
static int CopyTo(CDescriptor& target, QFile& log)
{
    for (QByteArray baChunk = log.read(CHUNK); !baChunk.isEmpty(); baChunk = log.read(CHUNK)) {
        int nDone = 0;
        while (nDone < baChunk.size()) {
            const ssize_t nWritten
                = write(target.Get(), baChunk.constData() + nDone, size_t(baChunk.size() - nDone));
            if (nWritten <= 0) {
                return nWritten == 0 ? ENOSPC : errno;
            }
            nDone += int(nWritten);
        }
    }
    return CCopyPlatform::FlushFile(target.Get()) && target.Close() == 0 ? 0 : errno;
}

/** The same with a new file of that name; nothing of it stays where it could not become whole. */
static int SaveAs(int nFolder, const QByteArray& baStem, QFile& log)
{
    const STFreeFile stFile = CFreeFile::Create(nFolder, baStem, ".log");
    CDescriptor target(stFile.nDescriptor);
    if (!target.IsOpen()) {
        return errno;
    }
    const int nError = CopyTo(target, log);
    if (nError != 0) {
        unlinkat(nFolder, stFile.baName.constData(), 0);
        target.Reset();
        // The disk was brought to rest before.
        CCopyPlatform::FlushFileSystem(nFolder);
    }
    return nError;
}

static int SaveFile(const CDescriptor* pParent, const QByteArray& baStem, const QString& strLog)
{
    QFile log(strLog);
    return pParent && log.open(QIODevice::ReadOnly) ? SaveAs(pParent->Get(), baStem, log) : ENOENT;
}

std::chrono::milliseconds CCopyLogFile::Patience() { return s_patience; }

void CCopyLogFile::SetPatience(std::chrono::milliseconds patience) { s_patience = patience; }

/** Empty when the log may stay alone where it is. */
static QString LogToSave()
{
    const bool bAlways = qgetenv("TARNWICK_LOG_BESIDE_COPY") == "1";
    return bAlways ? g_TarnwickLog.CurrentFile() : g_TarnwickLog.FallbackFile();
}

// Nobody watches the copy any more: whoever waited here for a stick that hangs would never
// tell the window of the end.
void CCopyLogFile::Save(const std::shared_ptr<const CDescriptor>& pParent, const QString& strFolder)
{
    const QString strLog = LogToSave();
    if (strLog.isEmpty()) {
        return;
    }
    const QByteArray baStem = CFileName::Encode(strFolder.mid(strFolder.lastIndexOf(QLatin1Char('/')) + 1));
    const int nError = CAsideQuestion<int>::Ask(s_patience, [pParent, baStem, strLog] {
                           return SaveFile(pParent.get(), baStem, strLog);
                       }).value_or(ETIMEDOUT);
    g_TarnwickLog.LogExt(nError == 0 ? QStringLiteral("the log was saved beside the copy: ") + strFolder
                                     : QStringLiteral("the log could not be saved beside the copy: ")
                                 + QString::fromLocal8Bit(strerror(nError)));
}
