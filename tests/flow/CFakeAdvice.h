#pragma once

#include "flow/CReadAdvice.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QMap>

#include <cerrno>
#include <condition_variable>
#include <functional>
#include <mutex>

/**
 * Stands in for the system: the test executable holds the functions of CReadAdvice, and they
 * answer from this. Any thread.
 */
class CFakeAdvice
{
public:
    /** A file of the made disks. */
    struct STFile
    {
        qint64 nSize = 4096;
        quint64 nPlace = 0;
        quint64 nDevice = 1;
        int nError = 0; ///< with which it cannot be opened
    };

    /** A folder of theirs. */
    struct STFolder
    {
        quint64 nDevice = 1;
        QByteArrayList listFile = {};
        QByteArrayList listFolder = {};
        bool bWhole = false;
        int nError = ENOENT; ///< with which it cannot be listed
    };

    /** The one that answers; made anew by Reset. */
    static CFakeAdvice& Get();

    /** Nothing is there, and nothing has been asked. Not while a helper runs. */
    static void Reset();

    /** Makes a file known. */
    void Add(const QByteArray& baPath, const STFile& stFile);

    /** A descriptor of the file, as the copy opens it. */
    int OpenForCopy(const QByteArray& baPath);

    /** What was asked for, a line each: "path from-to". */
    QByteArrayList Asked() const;

    /** The paths that were asked for from their beginning. */
    QByteArrayList AskedFiles() const;

    /** The paths that a helper has opened. */
    QByteArrayList Opened() const;

    /** The copy's files that the system was to read no further than asked. */
    QByteArrayList Stopped() const;

    /** Files and folders that a helper has open at present. */
    int HeldOpen() const;

    /** Calls that a helper has made. */
    int Calls() const;

    QMap<quint64, STSourceDisk> m_mapDisk; ///< by their numbers; set before a helper runs, as all below
    QMap<QByteArray, STFolder> m_mapFolder; ///< by their paths
    std::function<ENThere(const QByteArray& baPath, bool bAsked)>
        m_fnIsThere; ///< of the first byte; null: as asked
    std::function<void(const QByteArray& baPath)> m_fnAsk; ///< runs in each WillNeed, before it answers
    bool m_bTakesAdvice = true;
    qint64 m_nFreeMemory = qint64(16) << 30;

private:
    friend class CReadAdvice;

    mutable std::mutex m_mutex;
    QMap<QByteArray, STFile> m_mapFile;
    QMap<int, QByteArray> m_mapOpen;
    QByteArrayList m_listAsked;
    QByteArrayList m_listAskedFile;
    QByteArrayList m_listOpened;
    QByteArrayList m_listStopped;
    int m_nNext = 1000;
    int m_nHeld = 0;
    int m_nCalls = 0;
};
