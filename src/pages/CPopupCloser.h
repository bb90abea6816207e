#pragma once

#include <QObject>

class QAbstractScrollArea;

/**
 * Closes a scroll area that pops up as soon as the mouse is pressed elsewhere,
 * as every popup of the desktop does. A scroll area leaves such a press
 * unanswered, and the user could not get rid of the popup. GUI thread only.
 */
class CPopupCloser : public QObject
{
    Q_OBJECT

public:
    /** Watches the popup, which owns it from then on. */
    explicit CPopupCloser(QAbstractScrollArea* pPopup);

    /** Hides the popup when the mouse is pressed outside it; the press goes no further. */
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    QAbstractScrollArea* m_pPopup;
};
