#include "disk/platform/CVolumeFolder.h"
#include "files/CAsideQuestion.h"
#include "files/CFileName.h"
#include "files/CFolderReader.h"

#include <QFileInfo>

#include <chrono>

// A link may lead to a disk that does not answer; what it leads to counts as a folder then.
static constexpr std::chrono::milliseconds LINK_TIME{1000};

static bool LeadsToFolder(const QString& strLink)
{
    return CAsideQuestion<bool>::Ask(LINK_TIME, [strLink] { return QFileInfo(strLink).isDir(); })
        .value_or(true);
}

QStringList CVolumeFolder::Names(const QString& strFolder)
{
    QStringList listName;
    CFolderReader folder(CFileName::Encode(strFolder).constData());
    while (folder.Next()) {
        const QString strName = CFileName::Decode(folder.Name());
        if (strName.startsWith(QLatin1Char('.'))) {
            continue;
        }
        // The folder itself tells what an entry is, also where something is mounted on it.
        const bool bFolder
            = folder.IsLink() ? LeadsToFolder(strFolder + QLatin1Char('/') + strName) : folder.IsFolder();
        if (bFolder) {
            listName.append(strName);
        }
    }
    return listName;
}

bool CVolumeFolder::IsSameName(const QString& strOne, const QString& strOther) { return strOne == strOther; }
