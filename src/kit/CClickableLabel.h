#pragma once

#include <QLabel>
#include <QPoint>

/** A label that tells when it was clicked. GUI thread only. */
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
    /** Any mouse button was pressed and released at the very same pixel of the label. */
    void SignalLabelClicked();

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;

private:
    QPoint m_ptPress;
};
