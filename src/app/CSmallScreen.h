#pragma once

#include <QByteArray>
#include <QSize>

class QMainWindow;
class QStackedWidget;

/** The window on a screen that is smaller than the window. GUI thread. */
class CSmallScreen
{
public:
    /**
     * Makes the window small enough for the screen, with its pages in an area that scrolls;
     * the title strip stays in sight. A window that fits is left as it is. Once, before
     * the window is shown.
     */
    static void Fit(QMainWindow& window, QStackedWidget* pPages, const QSize& sizeScreen);

    /**
     * Whether a value of "QT_SCALE_FACTOR" or "QT_SCREEN_SCALE_FACTORS" makes anything
     * smaller than it is: the toolkit cannot draw that, and cuts the window to pieces.
     */
    static bool IsBelowOne(const QByteArray& baFactors);
};
