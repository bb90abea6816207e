#include "settings/CSystemLanguages.h"
#include "settings/PListParser.h"

#include <QFile>
#include <QFileInfo>

static const char PREFERENCES[] = "/Library/Preferences/.GlobalPreferences.plist";

// QSettings has no property-list format on this system, so the file is read as XML.
QStringList CSystemLanguages::Read()
{
    QFile file(QString::fromLatin1(PREFERENCES));
    // Only a regular file: opening a pipe of this name would wait for its writer.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return QStringList();
    }
    const QVariantMap mapPreference = PListParser::parsePList(&file).toMap();
    return mapPreference.value(QStringLiteral("AppleLanguages")).toStringList();
}
