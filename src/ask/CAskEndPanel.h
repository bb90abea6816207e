#pragma once

#include "ask/CAskPanel.h"

#include <QTimer>

/**
 * Says that everything is at rest; after a while without an answer the computer restarts. Or says
 * that a disk has not taken everything, and waits.
 */
class CAskEndPanel : public CAskPanel
{
    Q_OBJECT

public:
    /** Exit statuses of the answers. */
    static constexpr int STATUS_RESTART = 0;
    static constexpr int STATUS_POWER_OFF = 1;

    /** How long an answer is waited for. */
    static constexpr int SECONDS = 60;

    /**
     * Of the request: whether a disk did not take all that was to be written, and whether the stick
     * that the computer was started from is still needed.
     */
    explicit CAskEndPanel(const STAskRequest& stRequest);

    QWidget* FirstFocus() const override;

    /** A second of the wait has gone by. */
    void Tick();

private:
    void CountDown();
    void TellSeconds();

    QLabel* m_pSecondsLab = nullptr;
    QPushButton* m_pRestartBtn = nullptr;
    QTimer m_timer;
    int m_nLeft = SECONDS;
};
