#include "files/CMountTable.h"
#include "flow/CReadAdvice.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/sysmacros.h>
#include <sys/uio.h>

static QByteArray NumberOf(quint64 nDevice)
{
    return QByteArray::number(major(nDevice)) + ':' + QByteArray::number(minor(nDevice));
}

/** The first line of a short file of the system; empty when there is none. */
static QByteArray LineOf(const QByteArray& baPath)
{
    QFile file(baPath);
    return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed() : QByteArray();
}

/** Whether the disk turns; a partition is asked through the disk that it is of. */
static std::optional<bool> Turns(const QByteArray& baNumber)
{
    const QByteArray baBlock = "/sys/dev/block/" + baNumber;
    QByteArray baAnswer = LineOf(baBlock + "/queue/rotational");
    if (baAnswer.isEmpty()) {
        baAnswer = LineOf(baBlock + "/../queue/rotational");
    }
    return baAnswer.isEmpty() ? std::nullopt : std::make_optional(baAnswer != "0");
}

STSourceDisk CReadAdvice::DiskOf(quint64 nDevice)
{
    STSourceDisk stDisk;
    const QByteArray baNumber = NumberOf(nDevice);
    const auto listMount = CMountTable::Mounts();
    if (!listMount) {
        return stDisk;
    }
    for (const STMount& stMount : *listMount) {
        if (baNumber != stMount.strNumber.c_str()) {
            continue;
        }
        const QByteArray baType(stMount.strType.c_str());
        stDisk.bInMemory = baType == "tmpfs" || baType == "ramfs" || baType == "devtmpfs";
        // A driver in user space says at each opening whether what is in memory is to be forgotten.
        stDisk.bKeeps = major(nDevice) != 0 && !baType.startsWith("fuse");
        stDisk.bSeeks = Turns(baNumber);
        break;
    }
    return stDisk;
}

quint64 CReadAdvice::PlaceOf(const STSourceFile& stFile)
{
    // Behind the request there is room for the first extent.
    alignas(struct fiemap) char listRaw[sizeof(struct fiemap) + sizeof(struct fiemap_extent)] = {};
    auto* pMap = reinterpret_cast<struct fiemap*>(listRaw);
    pMap->fm_length = ~0ULL;
    pMap->fm_extent_count = 1;
    if (ioctl(stFile.nDescriptor, FS_IOC_FIEMAP, pMap) != 0 || pMap->fm_mapped_extents == 0) {
        return stFile.nInode;
    }
    struct fiemap_extent stFirst;
    std::memcpy(&stFirst, listRaw + sizeof(struct fiemap), sizeof(stFirst));
    return stFirst.fe_physical;
}

bool CReadAdvice::WillNeed(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    return posix_fadvise(nDescriptor, nFrom, nBytes, POSIX_FADV_WILLNEED) == 0;
}

ENThere CReadAdvice::IsThere(int nDescriptor, qint64 nFrom)
{
    char cByte = 0;
    const struct iovec stByte = {&cByte, 1};
    const ssize_t nRead = preadv2(nDescriptor, &stByte, 1, off_t(nFrom), RWF_NOWAIT);
    if (nRead >= 0) {
        return ENThere::YES;
    }
    return errno == EAGAIN ? ENThere::NO : ENThere::UNKNOWN;
}

void CReadAdvice::StopReadAhead(int nDescriptor) { posix_fadvise(nDescriptor, 0, 0, POSIX_FADV_RANDOM); }

qint64 CReadAdvice::FreeMemory()
{
    QFile file("/proc/meminfo");
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QByteArray baKey = "MemAvailable:";
    for (QByteArray baLine = file.readLine(); !baLine.isEmpty(); baLine = file.readLine()) {
        if (baLine.startsWith(baKey)) {
            const QByteArrayList listWord = baLine.mid(baKey.size()).simplified().split(' ');
            return listWord.constFirst().toLongLong() * 1024;
        }
    }
    return 0;
}
