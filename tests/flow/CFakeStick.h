#pragma once

#include "flow/CWriteBack.h"
#include "support/CGate.h"

#include <QMap>
#include <QStringList>
#include <QtGlobal>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <functional>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

/** A disk that only counts: what it was given, and what has been waited for. Any thread. */
class CFakeStick : public CWriteBack
{
public:
    explicit CFakeStick(ENWriteBack enKind = ENWriteBack::RANGES)
        : m_enKind(enKind)
    {
    }

    ENWriteBack KindOf(int) const override
    {
        ++m_nKindsAsked;
        return m_enKind;
    }

    int OpenAgain(int nDescriptor) const override
    {
        return m_bKeeps ? CWriteBack::OpenAgain(nDescriptor) : -1;
    }

    bool Start(int nDescriptor, qint64 nFrom, qint64 nBytes) const override
    {
        Note("start", nDescriptor, nFrom, nBytes);
        return Result();
    }

    bool Wait(int nDescriptor, qint64 nFrom, qint64 nBytes) const override
    {
        if (m_bHolds) {
            m_held.Open();
            m_go.Pass(20000);
        }
        if (m_nBytesAMs > 0) {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_nUnpaid += nBytes;
            m_nNowMs += m_nUnpaid / m_nBytesAMs;
            m_nUnpaid %= m_nBytesAMs;
        }
        m_nOnDisk += nBytes;
        Note("wait", nDescriptor, nFrom, nBytes);
        return Result();
    }

    bool Flush(int nDescriptor) const override
    {
        m_nNowMs += m_nFlushMs;
        Note("flush", nDescriptor, 0, 0);
        return Result();
    }

    /** Calls of that kind so far, each with the number of its file, from 1, and what it was of, in KiB. */
    QStringList Calls(const QString& strKind) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_listCall.filter(QRegExp('^' + strKind));
    }

    /** The time by which it writes. */
    std::function<qint64()> Clock()
    {
        return [this] { return m_nNowMs.load(); };
    }

    std::atomic<bool> m_bHolds{false}; ///< each wait waits for m_go
    std::atomic<bool> m_bKeeps{true}; ///< files can be opened once more
    std::atomic<int> m_nError{0}; ///< of each call
    std::atomic<qint64> m_nBytesAMs{0}; ///< how fast it is; 0 is without time
    std::atomic<qint64> m_nFlushMs{0};
    mutable CGate m_held; ///< one Open for each wait that waits
    mutable CGate m_go;
    mutable std::atomic<qint64> m_nOnDisk{0};
    mutable std::atomic<int> m_nKindsAsked{0};
    mutable std::atomic<qint64> m_nNowMs{1000};

private:
    void Note(const char* pszKind, int nDescriptor, qint64 nFrom, qint64 nBytes) const
    {
        struct stat stRaw = {};
        const bool bOpen = fstat(nDescriptor, &stRaw) == 0;
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (bOpen && !m_mapFile.contains(quint64(stRaw.st_ino))) {
            m_mapFile.insert(quint64(stRaw.st_ino), m_mapFile.size() + 1);
        }
        const int nFile = bOpen ? m_mapFile.value(quint64(stRaw.st_ino)) : -1;
        m_listCall.append(
            QString("%1 %2: %3+%4").arg(pszKind).arg(nFile).arg(nFrom / 1024).arg(nBytes / 1024));
    }

    bool Result() const
    {
        errno = m_nError;
        return m_nError == 0;
    }

    const ENWriteBack m_enKind;
    mutable std::mutex m_mutex;
    mutable qint64 m_nUnpaid = 0; // bytes that have not yet taken their time
    mutable QStringList m_listCall;
    mutable QMap<quint64, int> m_mapFile; // numbers by inode, in the order in which they came
};
