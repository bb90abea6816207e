#include "kit/CCompositor.h"

#include <QGuiApplication>
#include <QX11Info>

// The toolkit puts the windows onto the screen by itself, each as an opaque rectangle.
static bool IsBareScreen() { return QGuiApplication::platformName() == QLatin1String("linuxfb"); }

// On X a compositor may be missing, and a rescue system often has none.
bool CCompositor::IsRunning()
{
    return !IsBareScreen() && (!QX11Info::isPlatformX11() || QX11Info::isCompositingManagerRunning());
}

bool CCompositor::CanClip() { return !IsBareScreen(); }

bool CCompositor::HasDesktop() { return !IsBareScreen(); }
