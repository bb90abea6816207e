#include "support/CVolume.h"

#include <QDir>
#include <QFile>

#include <sys/mount.h>

CVolume::CVolume(const QString& strName, const QString& strDeviceNode, int nMiB)
    : m_strPath(QStringLiteral("/Volumes/") + strName)
{
    QDir().mkpath(m_strPath);
    const QByteArray baOptions = "size=" + QByteArray::number(nMiB) + "m";
    m_bMounted = mount(QFile::encodeName(strDeviceNode).constData(), QFile::encodeName(m_strPath).constData(),
                       "tmpfs", 0, baOptions.constData())
        == 0;
}

CVolume::~CVolume() { Pull(true); }

bool CVolume::IsValid() const { return m_bMounted; }

QString CVolume::Path(const QString& strRelative) const
{
    return strRelative.isEmpty() ? m_strPath : m_strPath + QLatin1Char('/') + strRelative;
}

bool CVolume::MakeReadOnly()
{
    return mount(nullptr, QFile::encodeName(m_strPath).constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr)
        == 0;
}

void CVolume::Pull(bool bRemoveFolder)
{
    if (m_bMounted) {
        umount2(QFile::encodeName(m_strPath).constData(), MNT_DETACH);
        m_bMounted = false;
    }
    if (bRemoveFolder) {
        QDir().rmdir(m_strPath);
    }
}
