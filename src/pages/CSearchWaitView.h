#pragma once

#include "kit/KvStyleDialog.h"

#include <QString>

#include <memory>

class Ui_CSearchWaitView;

/**
 * The small dialog that is shown while the user has to wait: an animation
 * beside a message of one or two lines, and no button.
 *
 * The owner shows and hides it and starts and stops the animation. GUI thread only.
 */
class CSearchWaitView : public KvStyleDialog
{
    Q_OBJECT

public:
    explicit CSearchWaitView(QWidget* parent = nullptr);
    ~CSearchWaitView() override;

    /** Sets message and title. From the first message that is wider than one line on the label wraps. */
    void SetText(const QString& strMessage, const QString& strTitle);

    /** Starts (true) or stops (false) the animation; does nothing when it is in that state already. */
    void ChangeGifStatus(bool bStart);

    /** Sets the fonts and hides the title; called once by the constructor. */
    void InitView();

    /** Gives the dialog its animation, at rest; called once by the constructor. */
    void InitData();

private:
    std::unique_ptr<Ui_CSearchWaitView> m_pForm;
};
