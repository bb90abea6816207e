#pragma once

#include <QWidget>

#include <memory>

/**
 * The whole screen in one quiet colour behind the window, where there is no desktop that would
 * cover what the system's start has left there. GUI thread.
 */
class CScreenGround : public QWidget
{
    Q_OBJECT

public:
    /** Shows one where it is needed, and gives nothing elsewhere; before the first other window. */
    static std::unique_ptr<CScreenGround> Lay();

private:
    CScreenGround();
};
