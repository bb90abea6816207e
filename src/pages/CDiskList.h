#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <atomic>
#include <memory>
#include <optional>

/** One search for disks, which each of its steps has to name. */
struct STDiskSearch
{
    quint64 nFirstEvent = 0; ///< disk events with a higher number came after its start
    std::shared_ptr<const std::atomic<bool>> pReplaced; ///< true as soon as nobody waits for it any more
};

/** The disk that was chosen when Copy was pressed. */
struct STCopyTarget
{
    QString strPath; ///< empty when none was chosen
    QString strName; ///< as shown to the user
    QByteArray baDevice; ///< where the path lay when it was listed
    quint64 nFirstEvent = 0; ///< as in STDiskSearch
};

/**
 * Keeps the list of the disks that may receive a copy right, while searches for
 * disks, arrivals and removals come in any order.
 *
 * A search tells what it has found in steps, and what it has seen may be over by
 * then. So disk events are numbered, and what happened to a path after a search
 * had begun counts for more than what that search says of it. Touches neither a
 * disk nor a widget. GUI thread, but for NewSearch and Close.
 */
class CDiskList
{
public:
    /** Works on that list of paths and display names, which has to live as long. */
    explicit CDiskList(QList<QPair<QString, QString>>& listDisk);

    /** Begins a search, which replaces an earlier one; nothing after Close. Any thread. */
    std::optional<STDiskSearch> NewSearch();

    /** Lets no search begin any more and tells the latest that nobody waits for it. Any thread. */
    void Close();

    /** A search's first step: forgets the disks but for later arrivals. False when it was replaced. */
    bool Begin(const STDiskSearch& search);

    /** A search has found a disk; old news of it changes nothing. */
    void Found(const STDiskSearch& search, const QString& strPath, const QString& strName,
               const QByteArray& baDevice);

    /** A search's last step: each path is listed once from then on. False when it was replaced. */
    bool End(const STDiskSearch& search);

    /** A disk has appeared and is appended, listed already or not; its device may be unknown. */
    void Arrived(const QString& strPath, const QString& strName, const std::optional<QByteArray>& baDevice);

    /** A disk that is listed without its device has told it after all. */
    void Told(const QString& strPath, const QByteArray& baDevice);

    /** A disk has gone: every entry with this path leaves the list; an unknown path changes nothing. */
    void Removed(const QString& strPath);

    /** The paths of the list, in its order. */
    QStringList Paths() const;

    /** The path of the first disk of this name; empty without one. */
    QString PathOf(const QString& strName) const;

    /** The disk of this name as a copy's target; baDeviceNow stands for a device that was never told. */
    STCopyTarget Target(const QString& strName, const QByteArray& baDeviceNow) const;

    /** True when the target was removed, or its path lies on another device now; not when none was chosen. */
    bool IsGone(const STCopyTarget& target, const QByteArray& baDeviceNow) const;

    /** Takes a disk out whose path lies elsewhere than when it was listed; true when it did. */
    bool RemoveIfMoved(const QString& strPath, const QByteArray& baDeviceNow);

private:
    struct STEvent
    {
        quint64 nNumber = 0;
        bool bArrived = false;
    };

    void NoteEvent(const QString& strPath, bool bArrived);
    bool HasEventSince(const QString& strPath, quint64 nFirstEvent, bool bArrived) const;
    bool IsListed(const QString& strPath) const;

    QList<QPair<QString, QString>>& m_listDisk;
    QHash<QString, QByteArray> m_hashDevice; // by path
    QHash<QString, STEvent> m_hashLastEvent; // by path
    std::atomic<quint64> m_nEvent{0};
    std::shared_ptr<std::atomic<bool>> m_pReplaced; // of the latest search; read and written atomically
    std::atomic<bool> m_bClosed{false};
};
