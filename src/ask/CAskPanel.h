#pragma once

#include "ask/STAskAnswer.h"

#include <QFrame>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;
struct STAskRequest;

/**
 * The white panel that every question stands on: the program's name, a title, and below it
 * what the question adds. Return presses the button that has the keyboard's focus; Escape
 * answers nothing. Names are shown as plain text. GUI thread.
 */
class CAskPanel : public QFrame
{
    Q_OBJECT

public:
    /** Width of the panel where the screen is wide enough, in points. */
    static constexpr int WIDTH = 600;

    /** The part that is to have the keyboard's focus first; null for none. */
    virtual QWidget* FirstFocus() const { return nullptr; }

signals:
    /** The question is answered; comes once. */
    void SignalAnswer(const STAskAnswer& stAnswer);

    /** What is on the panel takes another height now. */
    void SignalHeight();

protected:
    explicit CAskPanel(const QString& strTitle);

    /** Adds a paragraph of plain text. */
    QLabel* AddText(const QString& strText);

    /** Adds what the request tells of a disk: its name, and below it kind, size and model. */
    void AddDisk(const STAskRequest& stRequest, const QString& strKind);

    /** Adds a button below everything, from left to right. */
    QPushButton* AddButton(const QString& strText, bool bMain);

    /** Gives the answer; whatever comes after it counts for nothing, such as a key that bounces. */
    void Answer(const STAskAnswer& stAnswer);

    /** Where the parts of a question go. */
    QVBoxLayout* Body() const { return m_pBody; }

    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    QVBoxLayout* m_pBody = nullptr;
    QHBoxLayout* m_pButtons = nullptr;
    bool m_bAnswered = false;
};
