#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <sys/inotify.h>
#include <unistd.h>

/** Sees whether anybody opens or reads a file or folder while the object lives. */
class COpenWatch
{
public:
    explicit COpenWatch(const QString& strPath)
        : m_nWatch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        const QByteArray baPath = QFile::encodeName(strPath);
        if (inotify_add_watch(m_nWatch, baPath.constData(), IN_OPEN | IN_ACCESS) == -1) {
            qFatal("fixture failed: %s cannot be watched", baPath.constData());
        }
    }
    ~COpenWatch() { close(m_nWatch); }
    COpenWatch(const COpenWatch&) = delete;
    COpenWatch& operator=(const COpenWatch&) = delete;

    /** Whether that happened since the last time. */
    bool WasOpened()
    {
        char events[4096];
        return read(m_nWatch, events, sizeof(events)) > 0;
    }

private:
    int m_nWatch;
};
