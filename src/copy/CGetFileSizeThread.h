#pragma once

#include <QThread>

class CDirNode;

/**
 * Adds up the bytes that the user's ticks select, on a thread of its own, and
 * lists ticked folders that were never opened in the tree.
 *
 * While it runs the nodes belong to it. requestInterruption() makes it end soon
 * without a result; the owner waits for it before the nodes or the thread go.
 */
class CGetFileSizeThread : public QThread
{
    Q_OBJECT

public:
    explicit CGetFileSizeThread(QObject* pParent = nullptr);

    /** The root whose children are the top-level entries; not owned. Call it before start(). */
    void SetRootNode(CDirNode* pRootNode);

    /** Counts and emits SignalGetSizeFinish, unless it is interrupted. */
    void run() override;

    /** Adds each top-level entry: its volume's capacity when it is ticked, else its ticked files. */
    void GetDiskSize();

    /** Adds the ticked files below the node, not the node itself. */
    void GetSelFileSize(CDirNode* pNode);

signals:
    /** The selection's size in bytes. */
    void SignalGetSizeFinish(qint64 nSize);

private:
    void AddSize(qint64 nBytes);

    CDirNode* m_pRootNode = nullptr;
    qint64 m_nTotalSize = 0;
};
