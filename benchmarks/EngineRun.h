#pragma once

#include "Measure.h"
#include "copy/CCopyFileThread.h"
#include "copy/CGetFileSizeThread.h"
#include "support/ProcessUse.h"

/** The most memory that the work has had beyond what there was before. */
inline qint64 AddedMiB(const std::function<void()>& fnWork)
{
    Require(ForgetPeakMemory(), QStringLiteral("forget the memory so far"));
    const qint64 nBefore = PeakMemoryMiB();
    fnWork();
    return PeakMemoryMiB() - nBefore;
}

/** The bytes of what is to be copied, as the program counts them; -1 when it does not come to an end. */
inline qint64 CountByEngine(CDirNode* pRoot)
{
    qint64 nBytes = -1;
    CGetFileSizeThread count;
    QObject::connect(
        &count, &CGetFileSizeThread::SignalGetSizeFinish, &count, [&nBytes](qint64 nSize) { nBytes = nSize; },
        Qt::DirectConnection);
    count.SetRootNode(pRoot);
    count.start();
    count.wait();
    return nBytes;
}

/** A whole copy, until it is on the disk. */
inline STCopyAccount CopyByEngine(CDirNode* pRoot, qint64 nBytes, const QString& strDest)
{
    STCopyAccount stAccount;
    CCopyFileThread worker;
    QObject::connect(
        &worker, &CCopyFileThread::SignalCopyAccount, &worker,
        [&stAccount](const STCopyAccount& stEnd) { stAccount = stEnd; }, Qt::DirectConnection);
    worker.SetCopyParam(nBytes, pRoot, strDest, COPY_STATUS_RUN);
    worker.start(QThread::TimeCriticalPriority);
    worker.wait();
    return stAccount;
}
