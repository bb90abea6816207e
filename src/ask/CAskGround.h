#pragma once

#include <QWidget>

class CAskPanel;

/**
 * The whole screen in one quiet colour with a panel in its middle: where there is no window
 * manager nothing else clears the screen or puts a window in place. GUI thread.
 */
class CAskGround : public QWidget
{
    Q_OBJECT

public:
    /** Takes the panel over. */
    explicit CAskGround(CAskPanel* pPanel);

    /** The panel in the middle. */
    CAskPanel* Panel() const { return m_pPanel; }

    /** Covers the main screen; false when there is none. */
    bool Cover();

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void PutPanel();

    CAskPanel* const m_pPanel;
};
