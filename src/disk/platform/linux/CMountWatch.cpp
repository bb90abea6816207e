#include "disk/platform/linux/CMountWatch.h"

#include "files/CFileName.h"

#include <QFileInfo>

#include <utility>

CMountWatch::CMountWatch(QByteArray baFolder, FnDeliver fnDeliver)
    : m_baFolder(std::move(baFolder))
    , m_fnDeliver(std::move(fnDeliver))
{
}

bool CMountWatch::Start()
{
    // Opened before the first reading, so that no change can fall in between.
    m_fileSignal.setFileName(CFileName::Decode(CMountTable::FileName()));
    if (!m_fileSignal.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return false;
    }
    const std::optional<std::vector<STMount>> listVolume = Volumes();
    if (!listVolume) {
        return false;
    }
    m_listVolume = *listVolume;
    // The kernel signals a change as urgent data, and clears it with the poll that saw it.
    m_pNotifier = std::make_unique<QSocketNotifier>(m_fileSignal.handle(), QSocketNotifier::Exception);
    QObject::connect(m_pNotifier.get(), &QSocketNotifier::activated, m_pNotifier.get(),
                     [this] { OnTableChanged(); });
    return true;
}

/** The volumes of the folder, as its entries. The table knows their real paths only. */
std::optional<std::vector<STMount>> CMountWatch::Volumes() const
{
    const std::optional<std::vector<STMount>> listMount = CMountTable::Mounts();
    if (!listMount) {
        return std::nullopt;
    }
    const QString strReal = QFileInfo(CFileName::Decode(m_baFolder)).canonicalFilePath();
    if (strReal.isEmpty()) {
        return std::vector<STMount>(); // the folder is not there, or its link leads nowhere
    }
    const std::string strFolder = CFileName::Encode(strReal).toStdString();
    std::vector<STMount> listVolume = CMountChanges::VolumesIn(strFolder, *listMount);
    for (STMount& volume : listVolume) {
        volume.strPoint.replace(0, strFolder.size(), m_baFolder.constData());
    }
    return listVolume;
}

void CMountWatch::OnTableChanged()
{
    const std::optional<std::vector<STMount>> listNow = Volumes();
    if (!listNow) {
        return;
    }
    m_listPending += CMountChanges::Between(m_listVolume, *listNow);
    m_listVolume = *listNow;
    DeliverPending();
}

/**
 * The receiver may open a dialog, whose event loop brings the next change in
 * here. It then finds the rest of the earlier events still pending, and hands
 * them out before its own.
 */
void CMountWatch::DeliverPending()
{
    while (!m_listPending.isEmpty()) {
        m_fnDeliver(m_listPending.takeFirst());
    }
}
