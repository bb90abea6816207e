#include "app/CScreenGround.h"

#include "kit/CCompositor.h"
#include "kit/SkinColor.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

CScreenGround::CScreenGround()
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
{
    // Its end is not the program's.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setPalette(QPalette(QColor(SkinColor::GROUND)));
}

std::unique_ptr<CScreenGround> CScreenGround::Lay()
{
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    if (CCompositor::HasDesktop() || !pScreen) {
        return nullptr;
    }
    std::unique_ptr<CScreenGround> pGround(new CScreenGround);
    pGround->setGeometry(pScreen->geometry());
    // The pointer begins in the corner there, where nobody looks for it.
    QCursor::setPos(pGround->geometry().center());
    pGround->show();
    return pGround;
}
