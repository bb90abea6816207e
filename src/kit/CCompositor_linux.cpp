#include "kit/CCompositor.h"

#include <QX11Info>

// Only on X a compositor may be missing, and a rescue system often has none.
bool CCompositor::IsRunning()
{
    return !QX11Info::isPlatformX11() || QX11Info::isCompositingManagerRunning();
}
