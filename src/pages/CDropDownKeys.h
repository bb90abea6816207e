#pragma once

#include <QObject>

class QKeyEvent;
class QListWidget;
class QListWidgetItem;
class QPushButton;

/**
 * The keys of a drop-down that is made of a button and a list that pops up.
 *
 * On the button Down (also with Alt), Return and Enter ask for the list. In the
 * open list Return, Enter and Space choose the current entry, Escape closes it
 * without a choice, and afterwards the focus is back on the button; the keys
 * that move are the list's own. Item views take Return for different things on
 * different systems, so nothing here relies on what they make of it.
 * GUI thread only.
 */
class CDropDownKeys : public QObject
{
    Q_OBJECT

public:
    /** Watches both, and lives as long as the button. The list must live as long. */
    CDropDownKeys(QPushButton* pButton, QListWidget* pList);

    /** Takes the keys named above from button and list. */
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

signals:
    /** The list is to be shown. */
    void SignalOpen();

    /** An entry was chosen; never null. The list closes after this. */
    void SignalChosen(QListWidgetItem* pItem);

private:
    bool ButtonKey(const QKeyEvent& event);
    bool ListKey(const QKeyEvent& event);
    void Choose();
    void Close();

    QPushButton* m_pButton;
    QListWidget* m_pList;
};
