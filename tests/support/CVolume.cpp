#include "support/CVolume.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

static const char FOLDER[] = "/Volumes";

static bool IsInSandbox() { return qEnvironmentVariableIsSet("TARNWICK_SANDBOX"); }

static bool IsDone(int nResult, const QByteArray& baWhere)
{
    if (nResult != 0) {
        qWarning("mounting at %s: %s", baWhere.constData(), std::strerror(errno));
    }
    return nResult == 0;
}

/** mount(2) at a folder that is made when it is not there. */
static bool MountAt(const QByteArray& baPoint, const QByteArray& baSource, const char* pszType,
                    unsigned long nFlags, const QByteArray& baOptions = QByteArray())
{
    if (!IsInSandbox()) {
        return false;
    }
    mkdir(baPoint.constData(), 0755);
    return IsDone(mount(baSource.constData(), baPoint.constData(), pszType, nFlags, baOptions.constData()),
                  baPoint);
}

CVolume::CVolume(const QString& strName, const QString& strDeviceNode, int nMiB)
    : m_strPath("/Volumes/" + strName)
    , m_bMounted(Mount(QFile::encodeName(strDeviceNode), QFile::encodeName(m_strPath),
                       "size=" + QByteArray::number(nMiB) + "m"))
{
}

CVolume::~CVolume() { Pull(true); }

bool CVolume::IsValid() const { return m_bMounted; }

QString CVolume::Path(const QString& strRelative) const
{
    return strRelative.isEmpty() ? m_strPath : m_strPath + '/' + strRelative;
}

bool CVolume::MakeReadOnly() { return MakeReadOnly(QFile::encodeName(m_strPath)); }

void CVolume::Pull(bool bRemoveFolder)
{
    if (m_bMounted) {
        Unmount(QFile::encodeName(m_strPath));
        m_bMounted = false;
    }
    if (bRemoveFolder) {
        QDir().rmdir(m_strPath);
    }
}

bool CVolume::Clear()
{
    if (!IsInSandbox()) {
        return false;
    }
    while (umount2(FOLDER, MNT_DETACH) == 0) { }
    unlink(FOLDER); // a link of an earlier test; a folder stays
    return Mount("volumes", FOLDER);
}

bool CVolume::ClearAndLink(const QByteArray& baReal)
{
    if (!Clear() || !Unmount(FOLDER) || !Mount("volumes", baReal)) {
        return false;
    }
    return IsDone(rmdir(FOLDER), FOLDER) && IsDone(symlink(baReal.constData(), FOLDER), FOLDER);
}

bool CVolume::Mount(const QByteArray& baDeviceNode, const QByteArray& baPoint, const QByteArray& baOptions)
{
    return MountAt(baPoint, baDeviceNode, "tmpfs", 0, baOptions);
}

bool CVolume::Bind(const QByteArray& baFrom, const QByteArray& baPoint)
{
    return MountAt(baPoint, baFrom, nullptr, MS_BIND);
}

bool CVolume::Move(const QByteArray& baFrom, const QByteArray& baTo)
{
    return MountAt(baTo, baFrom, nullptr, MS_MOVE);
}

bool CVolume::MakeReadOnly(const QByteArray& baPoint)
{
    return MountAt(baPoint, "none", nullptr, MS_REMOUNT | MS_RDONLY);
}

bool CVolume::Unmount(const QByteArray& baPoint)
{
    return IsInSandbox() && IsDone(umount2(baPoint.constData(), MNT_DETACH), baPoint);
}
