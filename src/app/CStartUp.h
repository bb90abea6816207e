#pragma once

#include <QByteArray>
#include <QPoint>
#include <QSize>
#include <QString>

/** How the window is scaled on a screen of some width. */
struct STScale
{
    bool bHighDpiAttribute = false; ///< set Qt::AA_EnableHighDpiScaling
    QByteArray baFactor; ///< value of QT_SCALE_FACTOR; empty leaves it alone
};

/** The way from main to the event loop and back. Main thread. */
class CStartUp
{
public:
    /** Runs the whole program; returns the process's exit status. */
    static int Run(int& nArgc, char** ppArgv);

    /** The scale for a main screen nWidth points wide; 0 stands for no screen. */
    static STScale ChooseScale(int nWidth);

    /** Takes the scale for a main screen nWidth points wide; before there is an application object. */
    static STScale ApplyScale(int nWidth);

    /** Style sheet text of the bytes in the bundle: Latin-1 up to the first zero byte. */
    static QString StyleSheetText(const QByteArray& baContent);

    /**
     * Top-left corner that centres a window on a desktop, in pixels; ptNow, the
     * place where it is, when the desktop has no area.
     */
    static QPoint CentredPosition(const QSize& sizeDesktop, const QSize& sizeWindow, const QPoint& ptNow);
};
