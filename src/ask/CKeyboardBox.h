#pragma once

#include <QComboBox>

/**
 * The list of the keyboard's layouts. It opens on a click, on Space, Return and the
 * arrows; nothing but a choice in the open list chooses. GUI thread.
 */
class CKeyboardBox : public QComboBox
{
    Q_OBJECT

public:
    /** Shows the layout of that name as the one in use; a name that is not in the list is added. */
    explicit CKeyboardBox(const QString& strLayout, QWidget* pParent = nullptr);

signals:
    /** Another layout than the one in use was chosen. */
    void SignalLayout(const QString& strLayout);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;

private:
    void Choose(int nIndex);

    const QString m_strLayout;
};
