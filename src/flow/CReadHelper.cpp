#include "flow/CReadHelper.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cerrno>
#include <utility>

static const qint64 STEP = qint64(128) << 10; // what is asked for at once
static const int MOST_LISTED = 4096; // entries of a folder

namespace {

/** Leaves the device alone when what is done meanwhile takes long. */
class CStallWatch
{
public:
    explicit CStallWatch(CReadPlan& plan)
        : m_plan(plan)
    {
        m_timer.start();
    }
    ~CStallWatch()
    {
        if (m_timer.nsecsElapsed() / 1000 >= CSourceDisk::STALL_US) {
            m_plan.EndDisk();
        }
    }
    CStallWatch(const CStallWatch&) = delete;
    CStallWatch& operator=(const CStallWatch&) = delete;

private:
    CReadPlan& m_plan;
    QElapsedTimer m_timer;
};

} // namespace

CReadHelper::CReadHelper(std::shared_ptr<CReadPlan> pPlan)
    : m_pPlan(std::move(pPlan))
{
}

CReadHelper::~CReadHelper()
{
    for (const STHeld* pHeld : {&m_stLarge, &m_stLast}) {
        if (pHeld->stFile.nDescriptor != -1) {
            CReadAdvice::Close(pHeld->stFile.nDescriptor);
        }
    }
}

void CReadHelper::Run()
{
    for (;;) {
        switch (m_pPlan->Wait()) {
        case ENReadWork::END:
            return;
        case ENReadWork::BATCH:
            Batch();
            break;
        case ENReadWork::LARGE:
            Large();
            break;
        case ENReadWork::LOOK:
            Look();
            break;
        }
    }
}

/** Asks for the next files, in the order of the disk or of the copy. */
void CReadHelper::Batch()
{
    Look();
    qint64 nRoom = m_pPlan->BeginBatch(CReadAdvice::FreeMemory());
    // What is cut off at the end of a batch is asked for as it is read, and the next batch not before.
    const qint64 nKeptWhole = nRoom / 2;
    const int nMost = m_pPlan->BatchFiles();
    const bool bSeeks = m_pPlan->Seeks();
    std::vector<STPlaced> listPlaced;
    for (int nFiles = 0; nFiles < nMost && nRoom >= STEP;) {
        const std::optional<STAskedFile> stAsked = m_pPlan->Take();
        if (!stAsked) {
            break;
        }
        if (stAsked->stFile.bFolder) {
            Unfold(stAsked->stFile.baPath);
            continue;
        }
        ++nFiles;
        const std::optional<STHeld> stHeld = Open(stAsked->nNumber, stAsked->stFile.baPath);
        if (!stHeld) {
            continue;
        }
        const qint64 nSize = stHeld->stFile.nSize;
        const qint64 nShare = nSize <= nKeptWhole ? nSize : std::min(nSize, nRoom / STEP * STEP);
        nRoom -= nShare;
        if (!bSeeks) {
            Ask(*stHeld, nShare);
            continue;
        }
        const CStallWatch watch(*m_pPlan);
        listPlaced.push_back(
            {stHeld->nNumber, stAsked->stFile.baPath, CReadAdvice::PlaceOf(stHeld->stFile), nShare});
        CReadAdvice::Close(stHeld->stFile.nDescriptor);
    }
    std::stable_sort(
        listPlaced.begin(), listPlaced.end(),
        [](const STPlaced& stOne, const STPlaced& stOther) { return stOne.nPlace < stOther.nPlace; });
    for (const STPlaced& stPlaced : listPlaced) {
        if (const std::optional<STHeld> stHeld = Open(stPlaced.nNumber, stPlaced.baPath)) {
            Ask(*stHeld, std::min(stPlaced.nShare, stHeld->stFile.nSize));
        }
    }
}

void CReadHelper::Unfold(const QByteArray& baFolder)
{
    const CStallWatch watch(*m_pPlan);
    const STSourceFolder stFolder = CReadAdvice::List(baFolder, m_pPlan->Device(), MOST_LISTED);
    if (stFolder.nError == EIO) {
        m_pPlan->EndDisk();
    }
    if (stFolder.nError != 0) {
        return;
    }
    QVector<STExpectedFile> listEntry;
    const QByteArray baPrefix = baFolder.endsWith('/') ? baFolder : baFolder + '/';
    for (const QByteArray& baName : stFolder.listFile) {
        listEntry.append(STExpectedFile{baPrefix + baName});
    }
    if (stFolder.bWhole) {
        for (const QByteArray& baName : stFolder.listFolder) {
            listEntry.append(STExpectedFile{baPrefix + baName, -1, true});
        }
    }
    m_pPlan->Unfold(listEntry, stFolder.bWhole);
}

/** Opens the file when it is still wanted, and a file of this device with bytes. */
std::optional<CReadHelper::STHeld> CReadHelper::Open(qint64 nNumber, const QByteArray& baPath)
{
    if (!m_pPlan->IsWanted(nNumber)) {
        return std::nullopt;
    }
    const CStallWatch watch(*m_pPlan);
    const STSourceFile stFile = CReadAdvice::Open(baPath, m_pPlan->Device());
    if (stFile.nError == EIO) {
        m_pPlan->EndDisk();
    }
    const bool bHere = stFile.nDevice == 0 || m_pPlan->IsOnDisk(nNumber, stFile.nDevice);
    if (stFile.nDescriptor != -1 && bHere) {
        return STHeld{nNumber, stFile};
    }
    if (stFile.nDescriptor != -1) {
        CReadAdvice::Close(stFile.nDescriptor);
    }
    return std::nullopt;
}

/** Asks for the share of a file and closes it, unless more is to be asked for later. */
void CReadHelper::Ask(const STHeld& stHeld, qint64 nShare)
{
    const bool bWhole = nShare == stHeld.stFile.nSize;
    if (!AskFor(stHeld, 0, nShare)) {
        CReadAdvice::Close(stHeld.stFile.nDescriptor);
        return;
    }
    m_pPlan->NoteAdvised(stHeld.nNumber, nShare, bWhole);
    if (bWhole || m_stLarge.stFile.nDescriptor != -1) {
        Keep(stHeld);
        return;
    }
    m_stLarge = stHeld;
    m_nLargeFrom = nShare;
    m_pPlan->SetLarge(stHeld.nNumber, stHeld.stFile.nSize);
}

/** False when it was given up. */
bool CReadHelper::AskFor(const STHeld& stHeld, qint64 nFrom, qint64 nTo)
{
    for (qint64 nAt = nFrom; nAt < nTo; nAt += STEP) {
        const bool bWanted
            = nFrom == 0 ? m_pPlan->IsWanted(stHeld.nNumber) : m_pPlan->IsWantedOn(stHeld.nNumber);
        if (!bWanted) {
            return false;
        }
        const CStallWatch watch(*m_pPlan);
        if (!CReadAdvice::WillNeed(stHeld.stFile.nDescriptor, nAt, std::min(STEP, nTo - nAt))) {
            m_pPlan->EndDisk();
            return false;
        }
    }
    return true;
}

/** Keeps the file open that was asked for last, to see when it has come. */
void CReadHelper::Keep(const STHeld& stHeld)
{
    const qint64 nNumber = std::max(m_stLast.nNumber, stHeld.nNumber);
    if (m_stLast.stFile.nDescriptor != -1) {
        CReadAdvice::Close(m_stLast.stFile.nDescriptor);
    }
    m_stLast = stHeld;
    m_stLast.nNumber = nNumber;
    m_pPlan->EndBatch(nNumber);
}

/** Asks for more of the file that is being read. */
void CReadHelper::Large()
{
    const STLargeWork stWork = m_pPlan->TakeLarge();
    const bool bGoesOn = !stWork.bLeft && AskFor(m_stLarge, m_nLargeFrom, stWork.nTo);
    m_nLargeFrom = std::max(m_nLargeFrom, stWork.nTo);
    if (!bGoesOn || m_nLargeFrom >= m_stLarge.stFile.nSize) {
        CReadAdvice::Close(m_stLarge.stFile.nDescriptor);
        m_stLarge = STHeld();
        m_pPlan->DropLarge();
    }
}

/** Sees whether the last file that was asked for has come, and so all others. */
void CReadHelper::Look()
{
    if (m_stLast.stFile.nDescriptor == -1) {
        return;
    }
    if (CReadAdvice::IsThere(m_stLast.stFile.nDescriptor, m_stLast.stFile.nSize - 1) != ENThere::NO) {
        CReadAdvice::Close(m_stLast.stFile.nDescriptor);
        m_stLast.stFile.nDescriptor = -1;
        m_pPlan->NoteArrived();
    }
}
