#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class CDirNode;

/** What is ticked as a whole: a file or a link, or a folder with everything in it. */
struct STTickedItem
{
    QString strPath; ///< absolute
    QString strVolume; ///< path of the top-level entry that it lies in, or is
};

/**
 * The ticks of a tree, in copies, so that whoever works with them needs no node:
 * the topmost fully ticked nodes, in the order of the rows.
 */
class CTickedItems
{
public:
    /**
     * Reads the nodes below the root. fnStopped is asked before each one: true ends it with
     * what was found so far, and no node is looked at any more.
     */
    static QVector<STTickedItem> Of(const CDirNode& root, const std::function<bool()>& fnStopped);

    /** The volumes that the items lie in, each once, in their order. */
    static QStringList Volumes(const QVector<STTickedItem>& listItem);
};
