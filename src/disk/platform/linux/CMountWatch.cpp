#include "disk/platform/linux/CMountWatch.h"

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
    m_fileSignal.setFileName(QFile::decodeName(CMountTable::FileName()));
    QByteArray baText;
    if (!m_fileSignal.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !CMountTable::Read(&baText)) {
        return false;
    }
    m_listMount = CMountTable::Parse(baText);
    // The kernel signals a change as urgent data, and clears it with the poll that saw it.
    m_pNotifier = std::make_unique<QSocketNotifier>(m_fileSignal.handle(), QSocketNotifier::Exception);
    QObject::connect(m_pNotifier.get(), &QSocketNotifier::activated, m_pNotifier.get(),
                     [this] { OnTableChanged(); });
    return true;
}

/** Where the folder really is; the folder itself as long as it is not there. */
QByteArray CMountWatch::RealFolder() const
{
    const QString strReal = QFileInfo(QFile::decodeName(m_baFolder)).canonicalFilePath();
    return strReal.isEmpty() ? m_baFolder : QFile::encodeName(strReal);
}

void CMountWatch::OnTableChanged()
{
    QByteArray baText;
    if (!CMountTable::Read(&baText)) {
        return;
    }
    const QVector<STMount> listNow = CMountTable::Parse(baText);
    const QByteArray baReal = RealFolder();
    QVector<STDiskEvent> listEvent = CMountTable::Compare(m_listMount, listNow, baReal);
    for (STDiskEvent& event : listEvent) {
        event.baPath.replace(0, baReal.size(), m_baFolder);
    }
    m_listPending += listEvent;
    m_listMount = listNow;
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
