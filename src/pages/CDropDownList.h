#pragma once

#include <QListWidget>

class QPushButton;

/**
 * The list of a drop-down: names in a popup, one of which is the chosen one.
 *
 * A child of its button, which is where screen readers look for it. It closes
 * by Escape and by a press elsewhere; who opens it and what a choice means is
 * the owner's. GUI thread only.
 */
class CDropDownList : public QListWidget
{
    Q_OBJECT

public:
    /** Closed and empty; strEmpty is what it says while it has no names. */
    CDropDownList(const QString& strEmpty, QPushButton* pButton);

    /** Replaces the names, which are shown as plain text. */
    void SetNames(const QStringList& listName);

    /** Opens with its top left corner there, the first entry of that name marked as the chosen one. */
    void Open(const QPoint& ptGlobal, const QString& strChosen);

signals:
    /** A key on the button asks for the list. */
    void SignalOpen();

    /** An entry was clicked or chosen by key; never null. */
    void SignalChosen(QListWidgetItem* pItem);

private:
    QPushButton* m_pButton;
};
