#pragma once

#include <QPainterPath>
#include <QSize>

class QWidget;

/** Draws the white rounded panel with a soft grey shadow that all dialogs of the program wear. */
class KvStyleShadow
{
public:
    /**
     * Paints panel and shadow into the widget, which must be inside its
     * paintEvent (GUI thread). The outer 4 pixels belong to the shadow and need
     * a translucent background. A null or empty widget is left alone.
     */
    void Paint(QWidget* pWidget);

    /** Outline of the white panel in a widget of that size, in pixels. Any thread. */
    static QPainterPath Panel(const QSize& size);
};
