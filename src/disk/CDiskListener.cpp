#include "disk/CDiskListener.h"

#include "disk/CDestinationDiscovery.h"
#include "disk/platform/CVolumeFolder.h"
#include "disk/platform/IDiskEventSource.h"
#include "files/CFileName.h"

#include <QDebug>
#include <QFileInfo>

#include <algorithm>
#include <cstring>
#include <memory>

// What a source passes when a disk went away and it cannot say which.
static const char* const NO_PATH = "USB";

static bool NamesNoDisk(ENDiskEventType enType, const char* pDevicePath)
{
    return enType == DISK_EVENT_DISAPPEARED && std::strcmp(pDevicePath, NO_PATH) == 0;
}

QString DiskEventPath(const STDiskNotication& stNotication)
{
    const QString strPath = CFileName::Decode(stNotication.strDevicePath.toLatin1());
    const QString strVolumes = CDestinationDiscovery::VolumesFolder();
    const int nSlash = strPath.lastIndexOf(QLatin1Char('/'));
    const bool bReal = nSlash > 0 && strPath.left(nSlash) == QFileInfo(strVolumes).canonicalFilePath();
    return bReal ? strVolumes + strPath.mid(nSlash) : strPath;
}

QString ListedDiskPath(const QString& strPath, const QStringList& listPath)
{
    if (listPath.contains(strPath)) {
        return strPath;
    }
    const auto itSame = std::find_if(listPath.begin(), listPath.end(), [&strPath](const QString& strListed) {
        return CVolumeFolder::IsSameName(strListed, strPath);
    });
    return itSame == listPath.end() ? strPath : *itSame;
}

CDiskListener& CDiskListener::GetInstance()
{
    static CDiskListener s_listener;
    return s_listener;
}

bool CDiskListener::StartListener(PFNDiskCallback pfnCallback, void* pContext)
{
    if (m_bStarted) {
        return true;
    }
    m_pfnCallback = pfnCallback;
    m_pContext = pContext;
    // Disks are watched until the process ends, so nothing ever destroys the source.
    static IDiskEventSource* const s_pSource = IDiskEventSource::Create().release();
    s_pSource->Start(*this);
    m_bStarted = true;
    return true;
}

void CDiskListener::OnDiskChanged(ENDiskEventType enType, const char* pDevicePath)
{
    if (pDevicePath == nullptr || m_pfnCallback == nullptr) {
        return;
    }
    const auto pRecord = std::make_unique<STDiskNotication>();
    pRecord->strDevicePath = QString::fromLatin1(pDevicePath);
    pRecord->enType = enType;
    pRecord->nHasPath = NamesNoDisk(enType, pDevicePath) ? 0 : 1;
    qDebug().noquote() << QStringLiteral("OnDiskChanged:%1 devicePath:%2!")
                              .arg(QString::number(qint32(enType)), pRecord->strDevicePath);
    m_pfnCallback(pRecord.get(), m_pContext);
}
