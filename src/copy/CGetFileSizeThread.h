#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/CDiskSize.h"
#include "files/CAsideThread.h"

#include <QString>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

class CDirNode;

/**
 * Adds up the bytes that the user's ticks select, on a thread of its own, and
 * lists ticked folders that were never opened in the tree. Where the root says that
 * all of it is meant, the disk is counted instead, and no node is made.
 *
 * While it runs the nodes belong to it. requestInterruption() makes it end soon
 * without a result; the owner waits for it before the nodes or the thread go.
 *
 * Disks are asked on one more thread, which holds no nodes: one that does not
 * answer keeps this one from ending only until it is interrupted.
 */
class CGetFileSizeThread : public QThread
{
    Q_OBJECT

public:
    explicit CGetFileSizeThread(QObject* pParent = nullptr);
    ~CGetFileSizeThread() override;

    /** The root whose children are the top-level entries; not owned. Call it before start(). */
    void SetRootNode(CDirNode* pRootNode);

    /** What the destination can hold; a count of everything heeds it. Call it before start(). */
    void SetDiskRules(const STDiskRules& stRules);

    /** Room that the copy needs on the destination, in bytes; valid after SignalGetSizeFinish. */
    qint64 RoomNeeded() const;

    /** Files that the destination cannot hold, which are in no sum; valid after SignalGetSizeFinish. */
    qint64 TooLarge() const;

    /** Counts and emits SignalGetSizeFinish, unless it is interrupted. */
    void run() override;

    /** Adds each top-level entry: its volume's capacity when it is ticked, else its ticked files. */
    void GetDiskSize();

    /** Adds the ticked files below the node, not the node itself. */
    void GetSelFileSize(CDirNode* pNode);

    /** How long the disk has not answered that is being asked, in ms. Any thread. */
    qint64 SinceProgressMs() const;

    /** The name of the top-level entry that is being counted; empty before the first. Any thread. */
    QString CurrentEntry() const;

signals:
    /** The selection's size in bytes. */
    void SignalGetSizeFinish(qint64 nSize);

private:
    struct STProgress;

    template <typename Answer> std::optional<Answer> Ask(std::function<Answer()> fnAsk);
    template <typename Answer>
    std::optional<Answer> Ask(std::function<Answer()> fnAsk, const std::function<bool()>& fnGiveUp);
    void CountComplete();
    static STDiskSize CountOnDisk(const QVector<STTickedItem>& listItem, const STDiskRules& stRules,
                                  STProgress& stProgress, const std::atomic<bool>& bEnded);
    bool ListFolder(CDirNode& node);
    bool IsToGiveUp(std::atomic<bool>& bEnded) const;
    void AddFiles(QStringList& listFile);
    void AddSize(qint64 nBytes);
    void NoteProgress();

    CDirNode* m_pRootNode = nullptr;
    qint64 m_nTotalSize = 0;
    std::optional<STDiskSize> m_stComplete; // of a count of all
    STDiskRules m_stRules;
    std::unique_ptr<CAsideThread> m_pAside; // while it counts
    const std::shared_ptr<STProgress> m_pProgress;
};
