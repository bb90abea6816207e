#include "disk/platform/CVolumeFolder.h"
#include "files/CFileName.h"
#include "files/CFolderReader.h"

#include <QFileInfo>

QStringList CVolumeFolder::Names(const QString& strFolder)
{
    QStringList listName;
    CFolderReader folder(CFileName::Encode(strFolder).constData());
    while (folder.Next()) {
        const QString strName = CFileName::Decode(folder.Name());
        // The system hides volumes by a flag of their own as well.
        if (folder.IsFolder() && !QFileInfo(strFolder + QLatin1Char('/') + strName).isHidden()) {
            listName.append(strName);
        }
    }
    return listName;
}

bool CVolumeFolder::IsSameName(const QString& strOne, const QString& strOther)
{
    const QString::NormalizationForm enForm = QString::NormalizationForm_C;
    return strOne.normalized(enForm) == strOther.normalized(enForm);
}
