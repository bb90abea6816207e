#include "pages/CStuckWorker.h"

#include "copy/CCopyFileThread.h"
#include "copy/CCopyReport.h"
#include "files/CLeftBehind.h"
#include "log/CLogTarnwick.h"

STCopyAccount CStuckWorker::LeaveBehind(CCopyFileThread* pWorker, int nWaitMs)
{
    pWorker->SetCopyStatus(COPY_STATUS_STOP);
    const STCopyAccount stAccount = pWorker->CloseAccount(nWaitMs);
    g_TarnwickLog.LogExt(QStringLiteral("the copy's worker is left behind: ")
                         + CCopyReport::Quoted(pWorker->CurrentPath()));
    pWorker->disconnect();
    pWorker->setParent(nullptr);
    CLeftBehind::Add();
    // Its thread is through for good only when the destructor has waited for it.
    QObject::connect(pWorker, &QObject::destroyed, [] { CLeftBehind::Remove(); });
    QObject::connect(pWorker, &QThread::finished, pWorker, &QObject::deleteLater);
    if (pWorker->isFinished()) {
        pWorker->deleteLater();
    }
    return stAccount;
}
