#pragma once

#include <QPushButton>

/** A large button that says in a line what it does, and below in a sentence what that means. GUI thread. */
class CChoiceButton : public QPushButton
{
    Q_OBJECT

public:
    CChoiceButton(const QString& strTitle, const QString& strMeaning, QWidget* pParent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int nWidth) const override;
};
