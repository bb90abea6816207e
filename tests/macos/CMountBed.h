#pragma once

#include "macos/CFakeMac.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>

/** What is mounted beside the start volume, and the timer whose looks find it. */
class CMountBed
{
public:
    CMountBed() { Set(); }

    void Mount(const QByteArray& baPoint, const QByteArray& baDevice = "/dev/disk9s1")
    {
        m_listMount.append({baPoint, baDevice});
        Set();
    }

    void Unmount(const QByteArray& baPoint)
    {
        const auto fnIsIt = [&baPoint](const STFakeMount& mount) { return mount.baPoint == baPoint; };
        m_listMount.erase(std::remove_if(m_listMount.begin(), m_listMount.end(), fnIsIt), m_listMount.end());
        Set();
    }

    /** The table cannot be read until the next change. */
    static void HideTable() { CFakeMac::SetMounts({}); }

    static QTimer* Timer()
    {
        return QCoreApplication::instance()->findChild<QTimer*>("MountLook", Qt::FindDirectChildrenOnly);
    }

    /** The timer's time has come. */
    static void Look() { QMetaObject::invokeMethod(Timer(), "timeout"); }

private:
    void Set() { CFakeMac::SetMounts(QVector<STFakeMount>{{"/", "/dev/disk1s5"}} + m_listMount); }

    QVector<STFakeMount> m_listMount;
};
