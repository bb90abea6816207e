#pragma once

#include <QObject>

/**
 * What start-up asks of the platform's window system. Each system has its own
 * source file. GUI thread; GetScreen also works before the application object
 * exists.
 */
class CGetScreenPixel : public QObject
{
    Q_OBJECT

public:
    /** Makes the object without a parent. */
    CGetScreenPixel();

    /** Width of the main screen in points, cut to whole points; 0 when there is no screen. */
    int GetScreen();

    /** A width in points as GetScreen gives it: taken to single precision, then cut towards zero. */
    static int WholePoints(double fWidth);

    /** Hook for the window-title feature: does nothing. */
    void HideWindowTitle(unsigned long long nWindowId);

    /** Looks up the window of the widget with this native id; nothing further is done with it. */
    void SetFourKFunciton(unsigned long long nWindowId);

    /** Asks the desktop to open the system's security settings, where it has any. */
    void OpenSysSecurity();
};
