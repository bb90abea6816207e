#pragma once

#include <QLabel>
#include <QPoint>

/**
 * A label that tells when it was clicked. One that is given a focus policy can
 * be reached by the keyboard as well and answers Space, Return and Enter.
 * GUI thread only.
 */
class CClickableLabel : public QLabel
{
    Q_OBJECT

public:
    /**
     * Makes a label that tracks the mouse.
     * @param f taken so that forms can build the label like any other, but not
     *        used: the label always is a plain child widget
     */
    explicit CClickableLabel(QWidget* parent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());

signals:
    /** Any mouse button was pressed and released at the very same pixel of the label, or a key clicked it. */
    void SignalLabelClicked();

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    /** Tints the label while it has the keyboard's focus. */
    void paintEvent(QPaintEvent* pEvent) override;

private:
    QPoint m_ptPress;
};
