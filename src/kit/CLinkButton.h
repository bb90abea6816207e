#pragma once

#include <QPushButton>

/**
 * A button that looks like a link in a text. Beside Space it takes Return and
 * Enter, as links do. GUI thread only.
 */
class CLinkButton : public QPushButton
{
    Q_OBJECT

public:
    explicit CLinkButton(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
};
