#include "disk/platform/CVolumeInfo.h"
#include "files/CAsideQuestion.h"
#include "files/CFileName.h"
#include "files/CMountTable.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>

static const qint64 NO_MOUNT = -1;

static constexpr std::chrono::milliseconds ASIDE_TIME{1000};

/** The number of the mount that an open path lies on, as the kernel's table gives it. */
static qint64 MountIdOf(int nFd)
{
    QFile file(QStringLiteral("/proc/self/fdinfo/%1").arg(nFd));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return NO_MOUNT;
    }
    const QList<QByteArray> listLine = file.readAll().split('\n');
    for (const QByteArray& baLine : listLine) {
        if (baLine.startsWith("mnt_id:")) {
            return baLine.mid(int(qstrlen("mnt_id:"))).trimmed().toLongLong();
        }
    }
    return NO_MOUNT;
}

static qint64 MountIdOf(const QByteArray& baPath)
{
    const int nFd = ::open(baPath.constData(), O_PATH | O_CLOEXEC);
    if (nFd < 0) {
        return NO_MOUNT;
    }
    const qint64 nId = MountIdOf(nFd);
    ::close(nFd);
    return nId;
}

/** The path with the links of its parent folders resolved; the last part stays as it is. */
static std::string WithRealParent(const QByteArray& baPath)
{
    const int nSlash = baPath.lastIndexOf('/');
    if (nSlash <= 0) {
        return baPath.toStdString();
    }
    const std::unique_ptr<char, decltype(&std::free)> pParent(
        ::realpath(baPath.left(nSlash).constData(), nullptr), &std::free);
    return pParent ? std::string(pParent.get()) + baPath.mid(nSlash).toStdString() : std::string();
}

/** The topmost of the mounts that lie one on the other at that point, above the given one. */
static const STMount* TopAt(const std::vector<STMount>& listMount, const STMount* pMount,
                            const std::string& strPoint)
{
    const auto fnIsNext = [&pMount, &strPoint](const STMount& mount) {
        return mount.nParentId == pMount->nId && mount.nId != pMount->nId && mount.strPoint == strPoint;
    };
    for (auto next = std::find_if(listMount.begin(), listMount.end(), fnIsNext); next != listMount.end();
         next = std::find_if(listMount.begin(), listMount.end(), fnIsNext)) {
        pMount = &*next;
    }
    return pMount;
}

/** The mount at "/" that lies on none of the table. */
static const STMount* RootOf(const std::vector<STMount>& listMount)
{
    const auto fnIsRoot = [&listMount](const STMount& mount) {
        return mount.strPoint == "/"
            && std::none_of(listMount.begin(), listMount.end(), [&mount](const STMount& other) {
                   return other.nId == mount.nParentId && other.nId != mount.nId;
               });
    };
    const auto root = std::find_if(listMount.begin(), listMount.end(), fnIsRoot);
    return root == listMount.end() ? nullptr : TopAt(listMount, &*root, "/");
}

/** The mount that stands just at an absolute path, on the kernel's way along it; nullptr without one. */
static const STMount* MountAt(const std::vector<STMount>& listMount, const std::string& strPath)
{
    const STMount* pMount = RootOf(listMount);
    for (size_t nEnd = strPath.find('/', 1); pMount != nullptr; nEnd = strPath.find('/', nEnd + 1)) {
        pMount = TopAt(listMount, pMount, strPath.substr(0, nEnd));
        if (nEnd == std::string::npos) {
            break;
        }
    }
    return pMount != nullptr && pMount->strPoint == strPath ? pMount : nullptr;
}

/**
 * QStorageInfo looks for the mount with the longest matching path, and so names
 * the hidden volume where one is mounted over another. The kernel's own numbers
 * of the mounts are right whatever the volume is called and wherever it stands.
 * A volume itself is not touched, as it may never answer; what lies elsewhere is asked aside.
 */
QByteArray CVolumeInfo::DeviceOf(const QString& strPath)
{
    const QByteArray baPath = CFileName::Encode(QDir::cleanPath(strPath));
    const auto listMount = CMountTable::Mounts();
    if (baPath.isEmpty() || !listMount) {
        return QByteArray();
    }
    if (const STMount* pMount = MountAt(*listMount, WithRealParent(baPath))) {
        return QByteArray::fromStdString(pMount->strSource);
    }
    const qint64 nId
        = CAsideQuestion<qint64>::Ask(ASIDE_TIME, [baPath] { return MountIdOf(baPath); }).value_or(NO_MOUNT);
    const auto mount = std::find_if(listMount->begin(), listMount->end(),
                                    [nId](const STMount& stMount) { return stMount.nId == nId; });
    return mount == listMount->end() ? QByteArray() : QByteArray::fromStdString(mount->strSource);
}

std::optional<QByteArrayList> CVolumeInfo::MountPoints()
{
    const auto listMount = CMountTable::Mounts();
    if (!listMount) {
        return std::nullopt;
    }
    QByteArrayList listPoint;
    for (const STMount& mount : *listMount) {
        listPoint.append(QByteArray::fromStdString(mount.strPoint));
    }
    return listPoint;
}
