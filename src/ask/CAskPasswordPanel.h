#pragma once

#include "ask/CAskPanel.h"
#include "ask/CCapsLockGuess.h"
#include "ask/CDeadKeys.h"
#include "ask/STAskRequest.h"

class QLineEdit;

/** Asks for the password of an encrypted volume. */
class CAskPasswordPanel : public CAskPanel
{
    Q_OBJECT

public:
    /** Exit statuses of the answers. */
    static constexpr int STATUS_PASSWORD = 0;
    static constexpr int STATUS_SKIP = 1;
    static constexpr int STATUS_LAYOUT = 3;

    explicit CAskPasswordPanel(const STAskRequest& stRequest);

    QWidget* FirstFocus() const override;

    /** Looks at the keys that go to the field. */
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void AddField();
    void AddKeyboard();
    void AddAnswers();
    void Unlock();

    const STAskRequest m_stRequest;
    QLineEdit* m_pEdit = nullptr;
    QLabel* m_pCapsLab = nullptr;
    QPushButton* m_pSkipBtn = nullptr;
    CCapsLockGuess m_caps;
    CDeadKeys m_deadKeys;
};
