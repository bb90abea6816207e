#include "disk/CDestinationDiscovery.h"

#include "disk/CInfoQuery.h"
#include "disk/CMountLook.h"
#include "disk/platform/CVolumeFolder.h"
#include "disk/platform/CVolumeInfo.h"
#include "files/CFileName.h"
#include "log/CLogTarnwick.h"
#include "settings/PListParser.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QVector>

#include <memory>
#include <utility>
#include <vector>

// How often a wait looks at the wish to cancel.
static const int SLICE_MS = 50;

// An answer that takes longer makes the volumes that are left be asked at once, so
// that several disks that do not answer cost one wait and not one each.
static const int LATE_MS = 2000;

static const int DEFAULT_TIMEOUT_MS = 30000;
static std::atomic<int> s_nTimeoutMs{DEFAULT_TIMEOUT_MS};

static std::atomic<bool> s_bEnded{false};

static std::function<void(const STDiskWait&)>& Waiter()
{
    static std::function<void(const STDiskWait&)> s_fnWaiter;
    return s_fnWaiter;
}

namespace {

/** Asks the command for one volume after the other, or for all that are left. */
class CVolumeQueries
{
public:
    CVolumeQueries(QVector<STVolume>& listVolume, const std::atomic<bool>& bCancelled)
        : m_listVolume(listVolume)
        , m_bCancelled(bCancelled)
        , m_listQuery(size_t(listVolume.size()))
    {
    }

    bool IsCancelled() const { return m_bCancelled || s_bEnded; }

    /** Sets a volume's device and waits for what the command prints of it. In the order of the volumes. */
    QByteArray Answer(int nVolume);

private:
    void Start(int nVolume);
    void StartRest(int nFirst);
    void ProceedAll(int nVolume);

    QVector<STVolume>& m_listVolume;
    const std::atomic<bool>& m_bCancelled;
    std::vector<std::unique_ptr<CInfoQuery>> m_listQuery; // one for each volume that is being asked for
    std::unique_ptr<CInfoQuery> m_pIdle; // serves one volume after the other
};

} // namespace

QByteArray CVolumeQueries::Answer(int nVolume)
{
    Start(nVolume);
    CInfoQuery& query = *m_listQuery[size_t(nVolume)];
    while (!query.IsOver() && !IsCancelled()) {
        ProceedAll(nVolume);
        if (query.ElapsedMs() > LATE_MS) {
            StartRest(nVolume + 1);
        }
        if (Waiter()) {
            Waiter()({m_listVolume[nVolume].strName, query.ElapsedMs()});
        }
    }
    const QByteArray baOutput = query.TakeOutput();
    m_pIdle = std::move(m_listQuery[size_t(nVolume)]);
    return baOutput;
}

void CVolumeQueries::Start(int nVolume)
{
    std::unique_ptr<CInfoQuery>& pQuery = m_listQuery[size_t(nVolume)];
    if (pQuery) {
        return;
    }
    pQuery = m_pIdle ? std::move(m_pIdle) : std::make_unique<CInfoQuery>();
    STVolume& volume = m_listVolume[nVolume];
    volume.baDevice = CVolumeInfo::DeviceOf(volume.strPath);
    pQuery->Start(CDestinationDiscovery::InfoCommand(),
                  CDestinationDiscovery::InfoArguments(CFileName::Decode(volume.baDevice)),
                  CDestinationDiscovery::CommandTimeoutMs());
}

void CVolumeQueries::StartRest(int nFirst)
{
    for (int nVolume = nFirst; nVolume < m_listVolume.size(); ++nVolume) {
        Start(nVolume);
    }
}

void CVolumeQueries::ProceedAll(int nVolume)
{
    m_listQuery[size_t(nVolume)]->Proceed(SLICE_MS);
    for (size_t n = size_t(nVolume) + 1; n < m_listQuery.size(); ++n) {
        if (m_listQuery[n]) {
            m_listQuery[n]->Proceed(0);
        }
    }
}

QString CDestinationDiscovery::VolumesFolder() { return QStringLiteral("/Volumes"); }

QString CDestinationDiscovery::InfoCommand() { return QStringLiteral("diskutil"); }

QStringList CDestinationDiscovery::InfoArguments(const QString& strDeviceNode)
{
    return {QStringLiteral("info"), QStringLiteral("-plist"), strDeviceNode};
}

int CDestinationDiscovery::CommandTimeoutMs() { return s_nTimeoutMs; }

void CDestinationDiscovery::SetCommandTimeoutMs(int nTimeoutMs)
{
    s_nTimeoutMs = nTimeoutMs > 0 ? nTimeoutMs : DEFAULT_TIMEOUT_MS;
}

QString CDestinationDiscovery::BusProtocol(const QByteArray& baPList)
{
    QBuffer buffer;
    buffer.setData(baPList);
    buffer.open(QIODevice::ReadOnly);
    return PListParser::parsePList(&buffer).toMap().value(QStringLiteral("BusProtocol")).toString();
}

ENVolumeRole CDestinationDiscovery::RoleOf(const QString& strBusProtocol, const QByteArray& baDevice,
                                           const QByteArray& baOwnDevice)
{
    if (strBusProtocol != QLatin1String("USB")) {
        return VOLUME_ROLE_SOURCE;
    }
    return baDevice == baOwnDevice ? VOLUME_ROLE_OWN_MEDIUM : VOLUME_ROLE_DESTINATION;
}

static void LogVolume(const STVolume& volume)
{
    switch (volume.enRole) {
    case VOLUME_ROLE_DESTINATION:
        // The template has a %2 and no %1; it is the lowest number, so arg() fills it.
        g_TarnwickLog.LogExt(QStringLiteral("diskName: %2").arg(volume.strName));
        break;
    case VOLUME_ROLE_SOURCE:
        g_TarnwickLog.LogExt(volume.strPath);
        break;
    case VOLUME_ROLE_OWN_MEDIUM:
        g_TarnwickLog.LogExt(QStringLiteral("skipped, the program runs from it: ") + volume.strPath);
        break;
    }
}

void CDestinationDiscovery::EndScans() { s_bEnded = true; }

void CDestinationDiscovery::SetWaiter(std::function<void(const STDiskWait&)> fnWaiter)
{
    Waiter() = std::move(fnWaiter);
}

static QVector<STVolume> ListedVolumes()
{
    QVector<STVolume> listVolume;
    const QString strFolder = CDestinationDiscovery::VolumesFolder();
    const QStringList listName = CVolumeFolder::Names(strFolder);
    for (const QString& strName : listName) {
        listVolume.append(
            {strFolder + QLatin1Char('/') + strName, strName, QByteArray(), VOLUME_ROLE_SOURCE});
    }
    return listVolume;
}

/** What is shown by a search must not come once more as an arrival. */
static void NoteFound(quint64 nSearch, const QByteArrayList& listPath)
{
    CMountLook& look = CMountLook::GetInstance();
    if (look.HasBegun()) {
        look.Listed(nSearch, listPath, CVolumeInfo::MountPoints().value_or(QByteArrayList()));
    }
}

bool CDestinationDiscovery::Scan(const std::function<void(const STVolume&)>& fnFound,
                                 const std::atomic<bool>& bCancelled)
{
    const quint64 nSearch = CMountLook::GetInstance().SearchBegins();
    QVector<STVolume> listVolume = ListedVolumes();
    QByteArrayList listTold; // whose bus is told; another one may still be a destination when it arrives
    const QByteArray baOwnDevice = CVolumeInfo::DeviceOf(QCoreApplication::applicationDirPath());
    CVolumeQueries queries(listVolume, bCancelled);
    for (int nVolume = 0; nVolume < listVolume.size(); ++nVolume) {
        const QByteArray baPList = queries.IsCancelled() ? QByteArray() : queries.Answer(nVolume);
        if (queries.IsCancelled()) {
            return false;
        }
        STVolume& volume = listVolume[nVolume];
        const QString strBus = BusProtocol(baPList);
        volume.enRole = RoleOf(strBus, volume.baDevice, baOwnDevice);
        if (!strBus.isEmpty()) {
            listTold.append(CFileName::Encode(volume.strPath));
        }
        LogVolume(volume);
        fnFound(volume);
    }
    if (queries.IsCancelled()) {
        return false;
    }
    NoteFound(nSearch, listTold);
    return true;
}
