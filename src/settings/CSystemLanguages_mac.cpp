#include "settings/CSystemLanguages.h"

#include <QSettings>
#include <QVariant>

static const char PREFERENCES[] = "/Library/Preferences/.GlobalPreferences.plist";

QStringList CSystemLanguages::Read()
{
    const QSettings settings(QString::fromLatin1(PREFERENCES), QSettings::NativeFormat);
    return settings.value(QStringLiteral("AppleLanguages")).toStringList();
}
