#pragma once

#include <QString>
#include <QVector>
#include <QtGlobal>

#include <functional>

/**
 * Makes places of files unreadable as a disk does: a read that begins there fails, one
 * that begins before them ends early. The test executable holds functions of the C
 * library's names, as with CFailingCalls; it needs ENABLE_EXPORTS.
 */
class CBadPages
{
public:
    /** Bytes from the first number to before the second. */
    using Places = QVector<QPair<qint64, qint64>>;

    /** Bad places of the files whose path contains strPart; nError is what reads fail with. */
    static void Set(const QString& strPart, const Places& listPlace, int nError);

    /** Runs with each read of such a file that is carried out or fails. */
    static void Watch(std::function<void(qint64 nFrom, qint64 nLen)> fnAction);

    /** Lets writes fail, to files whose path contains strPart, after nGood good ones. */
    static void FailWrites(const QString& strPart, int nError, int nGood = 0);

    /** Lets ftruncate fail for all files. */
    static void FailResize(int nError);

    /** Lets futimens fail for all files. */
    static void FailTimes(int nError);

    /** Lets reads past the system's cache fail with EINVAL, as where the file system has none. */
    static void RefuseDirect();

    /** Back to the C library. */
    static void Reset();

    /** Counts from zero again. */
    static void CountAnew();

    /** Reads that began in a bad place, and reads in all. */
    static int Failures();
    static int Reads();

    /** The most reads of no more than a page that began at one and the same bad place. */
    static int MostFailuresOfAPage();

    /** Reads past the system's cache. */
    static int DirectReads();
};
