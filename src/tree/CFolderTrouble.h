#pragma once

#include <QCoreApplication>
#include <QString>

class CDirNode;
class QPainter;
class QRectF;

/** What is wrong with a folder of the tree. */
enum class ENFolderTrouble
{
    NONE,
    LOCKED, ///< the user may not read it
    UNREADABLE, ///< nothing of it can be read
    CUT_SHORT, ///< only a part of it can be read
    LEADS_BACK, ///< a link to a folder that it lies in
    NO_ANSWER ///< its disk does not answer
};

/** Shows a folder that cannot be listed as what it is, and not as an empty one. GUI thread only. */
class CFolderTrouble
{
    Q_DECLARE_TR_FUNCTIONS(CFolderTrouble)

public:
    /** What is wrong with the node's folder; NONE also for a file. */
    static ENFolderTrouble Of(const CDirNode& node);

    /** The same in a sentence for the user; empty when nothing is wrong. */
    static QString Text(const CDirNode& node);

    /** Draws the badge for it into the lower right corner of an icon; nothing for NONE. */
    static void DrawBadge(QPainter* pPainter, const QRectF& icon, ENFolderTrouble enTrouble);

private:
    static QString Reason(int nError);
};
