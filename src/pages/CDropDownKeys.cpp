#include "pages/CDropDownKeys.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>

CDropDownKeys::CDropDownKeys(QPushButton* pButton, QListWidget* pList)
    : QObject(pButton)
    , m_pButton(pButton)
    , m_pList(pList)
{
    m_pButton->installEventFilter(this);
    m_pList->installEventFilter(this);
}

bool CDropDownKeys::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() != QEvent::KeyPress) {
        return false;
    }
    const auto& event = *static_cast<const QKeyEvent*>(pEvent);
    return pWatched == m_pList ? ListKey(event) : ButtonKey(event);
}

bool CDropDownKeys::ButtonKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // A key that is still held from the list must not open it again.
        if (!event.isAutoRepeat()) {
            emit SignalOpen();
        }
        return true;
    default:
        return false;
    }
}

bool CDropDownKeys::ListKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        // Nor may the key that has opened the list choose from it.
        if (!event.isAutoRepeat()) {
            Choose();
        }
        return true;
    case Qt::Key_Escape:
        Close();
        return true;
    default:
        return false;
    }
}

void CDropDownKeys::Choose()
{
    if (QListWidgetItem* pItem = m_pList->currentItem()) {
        emit SignalChosen(pItem);
    }
    Close();
}

void CDropDownKeys::Close()
{
    m_pList->hide();
    m_pButton->setFocus(Qt::PopupFocusReason);
}
