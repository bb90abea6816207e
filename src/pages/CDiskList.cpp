#include "pages/CDiskList.h"

#include <QSet>

#include <algorithm>

CDiskList::CDiskList(QList<QPair<QString, QString>>& listDisk)
    : m_listDisk(listDisk)
{
}

std::optional<STDiskSearch> CDiskList::NewSearch()
{
    const auto pReplaced = std::make_shared<std::atomic<bool>>(false);
    const STDiskSearch search{m_nEvent, pReplaced};
    // A later search answers the same question with fresher news, so an earlier
    // one that is still asking gives up.
    if (const auto pEarlier = std::atomic_exchange(&m_pReplaced, pReplaced)) {
        *pEarlier = true;
    }
    // Read after the exchange: Close sets it before it looks for a search to
    // replace, so one of the two always notices the other.
    if (m_bClosed) {
        return std::nullopt;
    }
    return search;
}

void CDiskList::Close()
{
    m_bClosed = true;
    if (const auto pLatest = std::atomic_load(&m_pReplaced)) {
        *pLatest = true;
    }
}

bool CDiskList::Begin(const STDiskSearch& search)
{
    if (*search.pReplaced) {
        return false;
    }
    // Whether the search comes across a disk that arrived after its start nobody knows.
    const auto fnIsKnown = [this, &search](const QPair<QString, QString>& disk) {
        return !HasEventSince(disk.first, search.nFirstEvent, true);
    };
    m_listDisk.erase(std::remove_if(m_listDisk.begin(), m_listDisk.end(), fnIsKnown), m_listDisk.end());
    return true;
}

void CDiskList::Found(const STDiskSearch& search, const QString& strPath, const QString& strName,
                      const QByteArray& baDevice)
{
    if (*search.pReplaced || IsListed(strPath) || HasEventSince(strPath, search.nFirstEvent, false)) {
        return;
    }
    m_listDisk.append(qMakePair(strPath, strName));
    m_hashDevice.insert(strPath, baDevice);
}

// A stick that arrives during a search is found by it and reported by an event.
bool CDiskList::End(const STDiskSearch& search)
{
    if (*search.pReplaced) {
        return false;
    }
    QSet<QString> setPath;
    const auto fnIsRepeated = [&setPath](const QPair<QString, QString>& disk) {
        const int nBefore = setPath.size();
        setPath.insert(disk.first);
        return setPath.size() == nBefore;
    };
    m_listDisk.erase(std::remove_if(m_listDisk.begin(), m_listDisk.end(), fnIsRepeated), m_listDisk.end());
    return true;
}

void CDiskList::Arrived(const QString& strPath, const QString& strName,
                        const std::optional<QByteArray>& baDevice)
{
    NoteEvent(strPath, true);
    m_listDisk.append(qMakePair(strPath, strName));
    m_hashDevice.remove(strPath);
    if (baDevice) {
        m_hashDevice.insert(strPath, *baDevice);
    }
}

void CDiskList::Told(const QString& strPath, const QByteArray& baDevice)
{
    if (IsListed(strPath) && !m_hashDevice.contains(strPath)) {
        m_hashDevice.insert(strPath, baDevice);
    }
}

void CDiskList::Removed(const QString& strPath)
{
    NoteEvent(strPath, false);
    const auto fnHasPath = [&strPath](const QPair<QString, QString>& disk) { return disk.first == strPath; };
    m_listDisk.erase(std::remove_if(m_listDisk.begin(), m_listDisk.end(), fnHasPath), m_listDisk.end());
    m_hashDevice.remove(strPath);
}

QStringList CDiskList::Paths() const
{
    QStringList listPath;
    for (const QPair<QString, QString>& disk : qAsConst(m_listDisk)) {
        listPath.append(disk.first);
    }
    return listPath;
}

QString CDiskList::PathOf(const QString& strName) const
{
    for (const QPair<QString, QString>& disk : qAsConst(m_listDisk)) {
        if (disk.second == strName) {
            return disk.first;
        }
    }
    return QString();
}

STCopyTarget CDiskList::Target(const QString& strName, const QByteArray& baDeviceNow) const
{
    const QString strPath = PathOf(strName);
    return {strPath, strName, m_hashDevice.value(strPath, baDeviceNow), m_nEvent};
}

// A disk that is pulled can leave its mount point behind as a plain folder of
// the disk below, which would take the copy; another disk may also have come in
// its place.
bool CDiskList::IsGone(const STCopyTarget& target, const QByteArray& baDeviceNow) const
{
    const bool bRemoved = HasEventSince(target.strPath, target.nFirstEvent, false);
    return !target.strPath.isEmpty() && (bRemoved || baDeviceNow != target.baDevice);
}

bool CDiskList::RemoveIfMoved(const QString& strPath, const QByteArray& baDeviceNow)
{
    if (m_hashDevice.value(strPath, baDeviceNow) == baDeviceNow) {
        return false;
    }
    Removed(strPath);
    return true;
}

void CDiskList::NoteEvent(const QString& strPath, bool bArrived)
{
    m_hashLastEvent.insert(strPath, STEvent{++m_nEvent, bArrived});
}

// True when the last thing that happened to the path after that event was an
// arrival (bArrived) or a removal.
bool CDiskList::HasEventSince(const QString& strPath, quint64 nFirstEvent, bool bArrived) const
{
    const auto it = m_hashLastEvent.constFind(strPath);
    return it != m_hashLastEvent.constEnd() && it->nNumber > nFirstEvent && it->bArrived == bArrived;
}

bool CDiskList::IsListed(const QString& strPath) const
{
    return std::any_of(m_listDisk.constBegin(), m_listDisk.constEnd(),
                       [&strPath](const QPair<QString, QString>& disk) { return disk.first == strPath; });
}
