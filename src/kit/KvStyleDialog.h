#pragma once

#include "kit/KvStyleShadow.h"

#include <QDialog>
#include <QPoint>

/**
 * Base of the program's dialogs: no frame of the window system, a rounded
 * panel with a shadow, moved by dragging its surface.
 *
 * Escape, Return and Enter do nothing, so that no question is answered by an
 * accidental key; Tab and Space reach the buttons as usual. GUI thread only.
 * A derived class keeps the outer 4 pixels free for the shadow.
 */
class KvStyleDialog : public QDialog
{
    Q_OBJECT

public:
    /** Makes a frameless, translucent dialog that holds the keyboard focus itself. */
    explicit KvStyleDialog(QWidget* parent = nullptr);

protected:
    /** Puts the dialog in the middle of its parent's window and leaves no button that Return would press. */
    void showEvent(QShowEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;

    /** True from a press on the surface to its release. */
    bool IsDragged() const { return m_bPressed; }

    /** Ends a drag whose release another widget has got. */
    void EndDrag() { m_bPressed = false; }

private:
    void ClipToPanel();

    KvStyleShadow m_Shadow;
    bool m_bPressed = false;
    QPoint m_ptPress;
};
