#include "flow/CWritePace.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>
#include <utility>

static const qint64 MIB = qint64(1024) * 1024;

// What the disk writes for a small file beside its bytes.
static const qint64 FILE_BYTES = 4096;

// Small files that the disk gets together.
static const size_t BATCH_FILES = 32;
static const qint64 BATCH_BYTES = MIB;
// Where files are flushed there are two batches, big ones and small ones.
static_assert(2 * BATCH_FILES <= CWritePace::MOST_KEPT);

static const qint64 PARTS_OF_WINDOW = 8;
static const qint64 MOST_STEP_BYTES = 4 * MIB;

static const qint64 MOST_BYTES = 256 * MIB;
static const qint64 PART_OF_MEMORY = 16;

namespace {

/** Leaves errno as it was, for what happens in between is none of the copy's business. */
class CKeepErrno
{
public:
    CKeepErrno() = default;
    ~CKeepErrno() { errno = m_nError; }
    CKeepErrno(const CKeepErrno&) = delete;
    CKeepErrno& operator=(const CKeepErrno&) = delete;

private:
    const int m_nError = errno;
};

} // namespace

static qint64 MostBytes()
{
    const qint64 nMemory = qint64(sysconf(_SC_PHYS_PAGES)) * qint64(sysconf(_SC_PAGESIZE));
    return std::clamp(nMemory / PART_OF_MEMORY, CWritePace::FIRST_BYTES, MOST_BYTES);
}

CWritePace::CWritePace(std::function<bool(bool)> fnGoesOn, std::function<qint64()> fnSteadyMs,
                       std::shared_ptr<const CWriteBack> pWriteBack)
    : m_fnGoesOn(std::move(fnGoesOn))
    , m_fnSteadyMs(std::move(fnSteadyMs))
    , m_pWriteBack(std::move(pWriteBack))
    , m_nMostBytes(MostBytes())
{
}

CWritePace::~CWritePace() = default;

void CWritePace::Begin()
{
    End();
    m_enKind.reset();
    m_nFlushBytes = LEAST_BYTES;
    m_nFlushError = 0;
}

void CWritePace::End()
{
    const CKeepErrno keep;
    m_late.Flush([this](int nDescriptor) { return FlushOne(nDescriptor); });
    m_enKind = ENWriteBack::NONE;
    m_stFile = STFile();
    m_stBatch = STWriteJob();
    m_pQueue.reset();
    m_listKept.clear();
    m_nUnflushed = 0;
}

void CWritePace::Written(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    if (m_enKind == ENWriteBack::NONE || nBytes <= 0) {
        return;
    }
    const CKeepErrno keep;
    if (!FindKind(nDescriptor)) {
        return;
    }
    if (m_stFile.nDescriptor != nDescriptor) {
        m_stFile = {nDescriptor};
    }
    m_stFile.nBytes = nFrom + nBytes;
    if (m_enKind == ENWriteBack::RANGES) {
        if (m_stFile.nBytes >= BIG_BYTES) {
            AddGrown(false);
        }
        KeepToWindow();
        return;
    }
    m_nUnflushed += nBytes;
    if (m_nUnflushed >= m_nFlushBytes && m_fnGoesOn(false)) {
        FlushAll();
    }
}

/** Finds out by the first file what the disk is; false when there is nothing to be done for it. */
bool CWritePace::FindKind(int nDescriptor)
{
    if (!m_enKind) {
        m_enKind = m_pWriteBack->KindOf(nDescriptor);
        if (m_enKind == ENWriteBack::RANGES) {
            m_pQueue = std::make_unique<CWriteQueue>(m_pWriteBack, m_fnSteadyMs);
            m_enKind = m_pQueue->IsValid() ? ENWriteBack::RANGES : ENWriteBack::NONE;
        }
    }
    return m_enKind != ENWriteBack::NONE;
}

/** Bytes of a big file that the disk gets at once: the more, the fewer pieces it makes of it. */
qint64 CWritePace::StepBytes() const
{
    return std::clamp(WindowBytes() / PARTS_OF_WINDOW, MIB, MOST_STEP_BYTES);
}

/** Adds what a big file has grown by, in whole steps unless bAll. */
void CWritePace::AddGrown(bool bAll)
{
    const qint64 nMost = StepBytes();
    const qint64 nLeast = bAll ? 1 : nMost;
    if (m_stFile.nBytes - m_stFile.nAdded < nLeast) {
        return;
    }
    AddBatch(); // was written before
    if (!m_stFile.pKept && !Keep()) {
        m_stFile.nAdded = m_stFile.nBytes;
    }
    while (m_stFile.nBytes - m_stFile.nAdded >= nLeast) {
        const qint64 nStep = std::min(m_stFile.nBytes - m_stFile.nAdded, nMost);
        m_pQueue->Add({{{m_stFile.pKept, m_stFile.nAdded, nStep}}, nStep});
        m_stFile.nAdded += nStep;
    }
}

void CWritePace::Ends(int nDescriptor)
{
    if (m_enKind == ENWriteBack::NONE || m_stFile.nDescriptor != nDescriptor) {
        return;
    }
    const CKeepErrno keep;
    if (m_enKind != ENWriteBack::RANGES) {
        EndFlushed();
    } else if (m_stFile.nBytes >= BIG_BYTES) {
        AddGrown(true);
    } else {
        EndSmall();
    }
    m_stFile = STFile();
}

void CWritePace::EndSmall()
{
    // A disk finds a better place for a file that is closed, so this one is not yet among them.
    if (m_stBatch.listPart.size() >= BATCH_FILES || m_stBatch.nBytes >= BATCH_BYTES) {
        AddBatch();
    }
    if (Keep()) {
        m_stBatch.listPart.push_back({m_stFile.pKept, 0, m_stFile.nBytes});
        m_stBatch.nBytes += m_stFile.nBytes + FILE_BYTES;
    }
}

void CWritePace::AddBatch()
{
    if (!m_stBatch.listPart.empty()) {
        m_pQueue->Add(std::exchange(m_stBatch, STWriteJob()));
    }
}

void CWritePace::KeepToWindow()
{
    while (WaitingBytes() > WindowBytes()) {
        if (m_pQueue->WaitingBytes() == 0) {
            AddBatch();
        }
        if (m_pQueue->WaitingBytes() == 0 || !WaitForAnswer()) {
            return;
        }
    }
}

/** Waits a moment for the disk; false when the copy is not to wait. */
bool CWritePace::WaitForAnswer()
{
    // Asked first, as it may have been stopped or paused long ago.
    return m_fnGoesOn(false) && m_fnGoesOn(m_pQueue->WaitForAnswer());
}

/** Keeps the copy's file open beyond its end; false when that cannot be. */
bool CWritePace::Keep()
{
    const auto fnCount = [this] {
        const auto fnGone = [](const std::weak_ptr<const CDescriptor>& pKept) { return pKept.expired(); };
        m_listKept.erase(std::remove_if(m_listKept.begin(), m_listKept.end(), fnGone), m_listKept.end());
        return int(m_listKept.size());
    };
    while (fnCount() >= MOST_KEPT) {
        AddBatch();
        if (!WaitForAnswer()) {
            return false;
        }
    }
    auto pKept = std::make_shared<const CDescriptor>(m_pWriteBack->OpenAgain(m_stFile.nDescriptor));
    if (!pKept->IsOpen()) {
        return false;
    }
    m_listKept.emplace_back(pKept);
    m_stFile.pKept = std::move(pKept);
    return true;
}

bool CWritePace::Settle(int nDescriptor)
{
    if (m_enKind == ENWriteBack::NONE || !FindKind(nDescriptor) || m_enKind != ENWriteBack::FILES) {
        return true;
    }
    int nError = 0;
    if (m_stFile.nDescriptor != nDescriptor) {
        nError = FlushOne(nDescriptor); // one that was begun before
    } else if (!KeepForLater()) {
        FlushAll();
        nError = std::exchange(m_stFile.nError, 0);
    }
    m_stFile.bSettled = m_stFile.nDescriptor == nDescriptor;
    errno = nError;
    return nError == 0;
}

/** Whether the copy's file is a small one that can wait: a flush for each takes longer than all the rest. */
bool CWritePace::KeepForLater()
{
    const bool bWaits
        = m_stFile.nBytes < BIG_BYTES && m_stFile.nError == 0 && m_late.Count() < int(BATCH_FILES) && Keep();
    if (bWaits) {
        m_late.Add(m_stFile.pKept);
    }
    return bWaits;
}

/** Flushes what waits. It is one call for each file, so less may wait than where it goes by parts. */
void CWritePace::FlushAll()
{
    const qint64 nBeganMs = m_fnSteadyMs();
    m_late.Flush([this](int nDescriptor) { return FlushOne(nDescriptor); });
    for (const STWritePart& stPart : m_stBatch.listPart) {
        KeepError(FlushOne(stPart.pFile->Get()));
    }
    const int nError = FlushOne(m_stFile.nDescriptor);
    if (m_enKind == ENWriteBack::DISK) {
        KeepError(nError); // it may be of any file
    } else if (m_stFile.nError == 0) {
        m_stFile.nError = nError;
    }
    FlushTook(m_fnSteadyMs() - nBeganMs);
    m_stBatch = STWriteJob();
    m_nUnflushed = 0;
}

/** Lets the next flush take as long as it should. */
void CWritePace::FlushTook(qint64 nMs)
{
    if (m_nUnflushed < m_nFlushBytes && nMs <= FLUSH_MS) {
        return; // the end of a file, which tells nothing of more
    }
    const double dFits = double(m_nUnflushed) * double(FLUSH_MS) / double(std::max<qint64>(1, nMs));
    const double dMost = double(std::min(m_nMostBytes, 2 * m_nFlushBytes));
    m_nFlushBytes = qint64(std::clamp(dFits, double(LEAST_BYTES), dMost));
}

/** Why the file cannot be flushed; 0 also where no file can be, as nothing was lost then. */
static int FlushErrorOf(const CWriteBack& writeBack, int nDescriptor)
{
    const bool bDone = writeBack.Flush(nDescriptor);
    const int nError = errno;
    const bool bCannot = nError == EINVAL || nError == ENOSYS || nError == ENOTSUP || nError == EINTR;
    return bDone || bCannot ? 0 : nError;
}

int CWritePace::FlushOne(int nDescriptor) const
{
    const int nError = FlushErrorOf(*m_pWriteBack, nDescriptor);
    m_fnGoesOn(true);
    return nError;
}

void CWritePace::KeepError(int nError)
{
    if (m_nFlushError == 0) {
        m_nFlushError = nError;
    }
}

std::function<bool()> CWritePace::TakeLate()
{
    return [pWriteBack = m_pWriteBack, listFile = m_late.Take()] {
        return listFile && std::all_of(listFile->begin(), listFile->end(), [&](const auto& pFile) {
                   return FlushErrorOf(*pWriteBack, pFile->Get()) == 0;
               });
    };
}

/** A file ends of which something may wait to be flushed. */
void CWritePace::EndFlushed()
{
    KeepError(m_stFile.nError);
    if (m_enKind == ENWriteBack::DISK || m_stFile.bSettled) {
        return; // the next file's flush brings it along, or it has had its own
    }
    if (m_stFile.nBytes < BIG_BYTES) {
        // Whoever settles none of them has no time for any.
        m_nUnflushed = std::max<qint64>(0, m_nUnflushed - m_stFile.nBytes);
        return;
    }
    if (m_nUnflushed == 0) {
        return;
    }
    if (m_stBatch.listPart.size() < BATCH_FILES) {
        if (Keep()) {
            m_stBatch.listPart.push_back({m_stFile.pKept, 0, m_stFile.nBytes});
        }
    } else if (m_fnGoesOn(false)) {
        FlushAll();
        KeepError(std::exchange(m_stFile.nError, 0));
    }
}

qint64 CWritePace::WindowBytes() const
{
    const std::optional<qint64> nKnown = m_pQueue ? m_pQueue->BytesIn(WINDOW_MS) : std::nullopt;
    return nKnown ? std::clamp(*nKnown, LEAST_BYTES, m_nMostBytes) : FIRST_BYTES;
}

qint64 CWritePace::WaitingBytes() const
{
    if (!m_pQueue) {
        return m_nUnflushed;
    }
    return m_pQueue->WaitingBytes() + m_stBatch.nBytes + m_stFile.nBytes - m_stFile.nAdded;
}
