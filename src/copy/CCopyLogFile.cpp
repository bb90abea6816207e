#include "copy/CCopyLogFile.h"

#include "copy/CCopyPlatform.h"
#include "copy/CFreeFile.h"
#include "files/CFileName.h"
#include "log/CLogTarnwick.h"

#include <QFile>

#include <cerrno>
#include <cstring>

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
    }
    return nError;
}

void CCopyLogFile::Save(const std::shared_ptr<const CDescriptor>& pParent, const QString& strFolder)
{
    QFile log(g_TarnwickLog.FallbackFile());
    if (log.fileName().isEmpty()) {
        return;
    }
    const QByteArray baStem = CFileName::Encode(strFolder.mid(strFolder.lastIndexOf(QLatin1Char('/')) + 1));
    int nError = ENOENT;
    if (pParent && log.open(QIODevice::ReadOnly)) {
        nError = SaveAs(pParent->Get(), baStem, log);
    }
    g_TarnwickLog.LogExt(nError == 0 ? QStringLiteral("the log was saved beside the copy: ") + strFolder
                                     : QStringLiteral("the log could not be saved beside the copy: ")
                                 + QString::fromLocal8Bit(strerror(nError)));
}
