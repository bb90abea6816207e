#include "app/CFontFallback.h"

// The family belongs to the system, which finds the letters that it lacks by
// the preferred languages itself.
void CFontFallback::Install() { }

QStringList CFontFallback::Families(const QStringList&) { return QStringList(); }
