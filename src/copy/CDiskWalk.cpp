#include "copy/CDiskWalk.h"

#include "copy/CNamesAhead.h"
#include "copy/STWalkFolder.h"
#include "files/CDescriptor.h"
#include "files/CFileName.h"
#include "files/CFolderReader.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <utility>

static const std::size_t MOST_OPEN = 32; // folders held open, however deep they lie
static const int FOLDERS_TOLD = 32; // folders of those that wait in one

static STCopyReason CannotOpen(int nError)
{
    return {ENCopyProblem::SOURCE_OPEN, QStringLiteral("it cannot be looked at"), nError};
}

/** The longest path that the system takes has room for its end, too. */
static bool IsTooLong(const QByteArray& baPath) { return baPath.size() >= PATH_MAX; }

static QByteArray LastName(const QByteArray& baPath) { return baPath.mid(baPath.lastIndexOf('/') + 1); }

CDiskWalk::CDiskWalk(QVector<STTickedItem> listItem, CDiskVisitor& visitor)
    : m_listItem(std::move(listItem))
    , m_visitor(visitor)
    , m_fnGoesOn([this] { return GoesOn(); })
    , m_items(m_fnGoesOn)
{
}

CDiskWalk::~CDiskWalk() = default;

bool CDiskWalk::GoesOn()
{
    m_bEnded = m_bEnded || !m_visitor.GoesOn();
    return !m_bEnded;
}

void CDiskWalk::LeaveOut(const QByteArray& baPath, const STCopyReason& stReason)
{
    m_visitor.LeftOut(CFileName::Decode(baPath), stReason);
}

void CDiskWalk::Walk()
{
    NoteTicked();
    for (const STTickedItem& stItem : m_listItem) {
        if (!GoesOn()) {
            return;
        }
        WalkItem(stItem);
        m_listFolder.clear();
    }
}

void CDiskWalk::NoteTicked()
{
    for (const STTickedItem& stItem : m_listItem) {
        if (!GoesOn()) {
            return;
        }
        if (m_items.GoTo(stItem) == ENPathEnd::FOUND && m_items.Found().State().enKind != ENFileKind::LINK) {
            m_setTicked.Insert(STFileId::Of(m_items.Found().State()));
        }
    }
}

void CDiskWalk::WalkItem(const STTickedItem& stItem)
{
    m_visitor.BeginItem(stItem);
    switch (m_items.GoTo(stItem)) {
    case ENPathEnd::FOUND:
        MeetItem(stItem, m_items.Found());
        break;
    case ENPathEnd::STOPPED:
        break;
    case ENPathEnd::OUTSIDE:
        m_visitor.LeftOut(
            stItem.strPath,
            {ENCopyProblem::SOURCE_OPEN, QStringLiteral("a link above it leads out of its volume")});
        break;
    case ENPathEnd::TOO_MANY_LINKS:
        m_visitor.LeftOut(stItem.strPath, CannotOpen(ELOOP));
        break;
    default:
        LeaveOutItem(stItem);
        break;
    }
    while (!m_listFolder.empty() && GoesOn()) {
        GoOn();
    }
}

/** What is told of an item that cannot be reached; a volume is a folder all the same. */
void CDiskWalk::LeaveOutItem(const STTickedItem& stItem)
{
    const CVolumeRoot& root = m_items.Root();
    std::optional<STFileState> stState;
    if (root.Error() != 0 && stItem.strPath == stItem.strVolume) {
        stState = CCopyPlatform::GetPathState(stItem.strPath);
    }
    if (!stState || stState->enKind != ENFileKind::DIRECTORY) {
        m_visitor.LeftOut(stItem.strPath, CannotOpen(m_items.Error()));
        return;
    }
    const QByteArray baName = root.Path() + "/.";
    const STDiskEntry stEntry = {AT_FDCWD, baName.constData(), root.Path(), root.Name(), *stState};
    if (m_visitor.BeginFolder(stEntry)) {
        m_visitor.LeftOut(stItem.strPath, STCopyReason::CannotList(false, root.Error()));
        m_visitor.EndFolder(stEntry);
    }
}

void CDiskWalk::MeetItem(const STTickedItem& stItem, const CVolumePath& path)
{
    const STDiskEntry stEntry = {path.Folder().nDescriptor, path.Name().constData(), path.Path(),
                                 LastName(CFileName::Encode(stItem.strPath)), path.State()};
    m_listAbove = path.Folder().listChain;
    if (stEntry.stState.enKind == ENFileKind::LINK) {
        MeetLink(stEntry, path.Folder(), false);
    } else if (stEntry.stState.enKind != ENFileKind::DIRECTORY) {
        HandOver(stEntry);
    } else if (MayEnter(stEntry, true)) {
        Enter(stEntry, path.Chain());
    }
}

/** Hands over what is neither a folder nor a link. */
void CDiskWalk::HandOver(const STDiskEntry& stEntry)
{
    if (stEntry.stState.enKind == ENFileKind::SPECIAL) {
        LeaveOut(stEntry.baPath, {ENCopyProblem::SPECIAL_FILE, QStringLiteral("a pipe, socket or device")});
    } else if (IsTooLong(stEntry.baPath)) {
        LeaveOut(stEntry.baPath, CannotOpen(ENAMETOOLONG));
    } else {
        m_visitor.File(stEntry);
    }
}

/** A link in that folder; while the folder is being listed one that leads to a folder has to wait. */
void CDiskWalk::MeetLink(const STDiskEntry& stLink, const STVolumeFolder& stIn, bool bListing)
{
    const QByteArray baText = ReadLinkText(stLink.nFolder, stLink.pszName);
    if (baText.isNull()) {
        LeaveOut(stLink.baPath, CannotOpen(errno));
        return;
    }
    if (m_setTicked.Contains(stIn.listChain.constFirst())) {
        m_visitor.Link(stLink, baText); // with all of the volume
        return;
    }
    CVolumePath path(m_items.Root(), stIn, m_fnGoesOn);
    const ENPathEnd enEnd = path.Follow(baText);
    if (enEnd == ENPathEnd::STOPPED) {
        return;
    }
    const bool bAnyway = IsCopiedAnyway(path.Chain());
    if (enEnd == ENPathEnd::FAILED && !bAnyway) {
        LeaveOut(stLink.baPath, CannotOpen(path.Error()));
    } else if (enEnd != ENPathEnd::FOUND || bAnyway || path.State().enKind == ENFileKind::SPECIAL
               || IsAround(STFileId::Of(path.State()))) {
        m_visitor.Link(stLink, baText);
    } else if (bListing && path.State().enKind == ENFileKind::DIRECTORY) {
        m_listFolder.back()->Wait(stLink.pszName);
    } else {
        Follow(stLink, path);
    }
}

/** Takes what the link leads to for what is there. */
void CDiskWalk::Follow(const STDiskEntry& stLink, const CVolumePath& path)
{
    const STDiskEntry stEntry
        = {path.Folder().nDescriptor, path.Name().constData(), path.Path(), stLink.baPlace, path.State()};
    const bool bFolder = stEntry.stState.enKind == ENFileKind::DIRECTORY;
    if (bFolder && !MayEnter(stEntry, false)) {
        return;
    }
    m_setFollowed.Insert(STFileId::Of(stEntry.stState));
    if (bFolder) {
        Enter(stEntry, path.Chain());
    } else {
        HandOver(stEntry);
    }
}

/** Whether what has these identities on the way to it is or lies in an item, or in what was followed. */
bool CDiskWalk::IsCopiedAnyway(const QVector<STFileId>& listChain) const
{
    return std::any_of(listChain.begin(), listChain.end(), [this](const STFileId& stId) {
        return m_setTicked.Contains(stId) || m_setFollowed.Contains(stId);
    });
}

/** Whether that folder is around where the walk is. */
bool CDiskWalk::IsAround(const STFileId& stId) const
{
    return m_listAbove.contains(stId)
        || std::any_of(m_listFolder.begin(), m_listFolder.end(), [&stId](const auto& pFolder) {
               return pFolder->stId == stId || pFolder->listChain.contains(stId);
           });
}

/** Whether the folder is to be entered; says why it is not. */
bool CDiskWalk::MayEnter(const STDiskEntry& stFolder, bool bItem)
{
    const STFileId stId = STFileId::Of(stFolder.stState);
    if (IsTooLong(stFolder.baPath)) {
        LeaveOut(stFolder.baPath, STCopyReason::CannotList(false, ENAMETOOLONG));
        return false;
    }
    if (m_setEntered.Contains(stId) || (!bItem && m_setTicked.Contains(stId))) {
        LeaveOut(stFolder.baPath,
                 {ENCopyProblem::ENTERED_BEFORE,
                  QStringLiteral("the same folder as another one, which is copied")});
        return false;
    }
    return true;
}

bool CDiskWalk::IsOtherFileSystem(const STDiskEntry& stFolder) const
{
    return stFolder.stState.nDevice != m_listFolder.back()->stId.nDevice
        && CCopyPlatform::IsMountPoint(stFolder.nFolder, stFolder.pszName);
}

/** Enters a folder and hands over what is in it, but for folders. Without a chain it lies in the last one. */
void CDiskWalk::Enter(const STDiskEntry& stFolder, const QVector<STFileId>& listChain)
{
    const bool bOther = listChain.isEmpty() && IsOtherFileSystem(stFolder);
    if (!GoesOn() || !m_visitor.BeginFolder(stFolder) || !GoesOn()) {
        return;
    }
    if (bOther) {
        LeaveOut(stFolder.baPath,
                 {ENCopyProblem::OTHER_FILE_SYSTEM,
                  QStringLiteral("another file system is mounted there, not entered")});
        m_visitor.EndFolder(stFolder);
        return;
    }
    if (stFolder.stState.bOnlyInCloud) {
        LeaveOut(stFolder.baPath, STCopyReason::OnlyInCloud());
        m_visitor.EndFolder(stFolder);
        return;
    }
    auto pReader = std::make_unique<CFolderReader>(stFolder.nFolder, stFolder.pszName);
    if (!pReader->IsOpen()) {
        LeaveOut(stFolder.baPath, STCopyReason::CannotList(false, pReader->Error()));
        m_visitor.EndFolder(stFolder);
        return;
    }
    m_listFolder.push_back(std::make_unique<STWalkFolder>());
    STWalkFolder& stNew = *m_listFolder.back();
    stNew.stEntry = stFolder;
    stNew.stEntry.pszName = ".";
    stNew.stId = STFileId::Of(stFolder.stState);
    stNew.listChain = listChain;
    stNew.stEntry.nFolder = pReader->Descriptor();
    stNew.pReader = std::move(pReader);
    m_setEntered.Insert(stNew.stId);
    if (m_listFolder.size() > MOST_OPEN) {
        m_listFolder[m_listFolder.size() - 1 - MOST_OPEN]->Close();
    }
    List(stNew);
}

/** Hands over the files and links in the folder; the names of folders wait. */
void CDiskWalk::List(STWalkFolder& stFolder)
{
    CFolderReader& reader = *stFolder.pReader;
    CNamesAhead names(reader);
    bool bTold = false;
    STDiskEntry stEntry;
    stEntry.nFolder = reader.Descriptor();
    stEntry.baPath.reserve(PATH_MAX);
    stEntry.baPath += stFolder.Prefix();
    const int nPrefix = stEntry.baPath.size();
    while (GoesOn()) {
        if (names.IsLow() && (bTold ? m_visitor.WantsMore() : m_visitor.WantsAnew())) {
            TellNames(names, !bTold);
            bTold = true;
        }
        if (!names.Next()) {
            break;
        }
        if (names.IsKnownFolder()) {
            stFolder.Wait(names.Name());
            continue;
        }
        stEntry.pszName = names.Name();
        stEntry.baPlace = names.Name();
        stEntry.baPath.resize(nPrefix);
        stEntry.baPath += names.Name();
        const std::optional<STFileState> stState
            = CCopyPlatform::GetEntryState(stEntry.nFolder, stEntry.pszName);
        if (!stState) {
            LeaveOut(stEntry.baPath, CannotOpen(errno));
            continue;
        }
        stEntry.stState = *stState;
        if (stState->enKind == ENFileKind::DIRECTORY) {
            stFolder.Wait(names.Name());
        } else if (stState->enKind == ENFileKind::LINK) {
            MeetLink(stEntry, Here(), true);
        } else {
            HandOver(stEntry);
        }
    }
    if (!m_bEnded && reader.Error() != 0) {
        LeaveOut(stFolder.stEntry.baPath, STCopyReason::CannotList(true, reader.Error()));
    }
}

/** Reads names of the last folder ahead, and tells which are new, and what comes behind them. */
void CDiskWalk::TellNames(CNamesAhead& names, bool bAnew)
{
    const QByteArray baPrefix = m_listFolder.back()->Prefix();
    QVector<STExpectedFile> listNext = names.Fill(baPrefix);
    if (names.IsEnd()) {
        listNext += m_listFolder.back()->Waiting(FOLDERS_TOLD) + names.Folders(baPrefix);
        listNext += Waiting(m_listFolder.size() - 1);
    }
    m_visitor.Expect(listNext, bAnew);
}

/** The first folders that wait in the first nDepth ones, the innermost before those around it. */
QVector<STExpectedFile> CDiskWalk::Waiting(std::size_t nDepth) const
{
    QVector<STExpectedFile> listNext;
    for (std::size_t nAt = nDepth; nAt > 0 && listNext.count() < FOLDERS_TOLD; --nAt) {
        listNext += m_listFolder[nAt - 1]->Waiting(FOLDERS_TOLD - listNext.count());
    }
    return listNext;
}

/** The folder that was entered last. */
STVolumeFolder CDiskWalk::Here() const
{
    auto itBegin = m_listFolder.end();
    do {
        --itBegin;
    } while ((*itBegin)->listChain.isEmpty());
    STVolumeFolder stHere
        = {m_listFolder.back()->Descriptor(), m_listFolder.back()->stEntry.baPath, (*itBegin)->listChain};
    for (auto it = std::next(itBegin); it != m_listFolder.end(); ++it) {
        stHere.listChain.append((*it)->stId);
    }
    return stHere;
}

/** Goes to the next folder that waits in the last one, or leaves that. */
void CDiskWalk::GoOn()
{
    STWalkFolder& stFolder = *m_listFolder.back();
    if (stFolder.nNext == stFolder.baWaiting.size()) {
        Leave();
        return;
    }
    if (m_visitor.WantsAnew()) {
        m_visitor.Expect(Waiting(m_listFolder.size()), true);
    }
    const char* pszName = stFolder.baWaiting.constData() + stFolder.nNext;
    stFolder.nNext += int(std::strlen(pszName)) + 1;
    STDiskEntry stEntry = {stFolder.Descriptor(), pszName, stFolder.Prefix() + pszName, pszName};
    const std::optional<STFileState> stState = CCopyPlatform::GetEntryState(stEntry.nFolder, pszName);
    if (!stState) {
        LeaveOut(stEntry.baPath, CannotOpen(errno));
        return;
    }
    stEntry.stState = *stState;
    if (stState->enKind == ENFileKind::LINK) {
        MeetLink(stEntry, Here(), false);
    } else if (stState->enKind != ENFileKind::DIRECTORY) {
        HandOver(stEntry);
    } else if (MayEnter(stEntry, false)) {
        Enter(stEntry, {});
    }
}

void CDiskWalk::Leave()
{
    STWalkFolder& stLast = *m_listFolder.back();
    stLast.stEntry.nFolder = stLast.Descriptor();
    m_visitor.EndFolder(stLast.stEntry);
    if (m_listFolder.size() > 1 && GoesOn()) {
        STWalkFolder& stAbove = *m_listFolder[m_listFolder.size() - 2];
        if (stAbove.Descriptor() == -1 && !Reopen(stAbove, stLast) && !m_bEnded) {
            LeaveOut(stAbove.stEntry.baPath, STCopyReason::CannotList(true, errno));
            stAbove.baWaiting.clear();
            stAbove.nNext = 0;
        }
    }
    m_listFolder.pop_back();
}

/** Opens a folder again that lies above another one; false when it is not there any more. */
bool CDiskWalk::Reopen(STWalkFolder& stFolder, const STWalkFolder& stBelow)
{
    const int nFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const auto fnIsSame = [&stFolder] {
        const std::optional<STFileState> stState = CCopyPlatform::GetOpenState(stFolder.reopened.Get());
        return stState && STFileId::Of(*stState) == stFolder.stId;
    };
    if (stBelow.listChain.isEmpty()) {
        stFolder.reopened.Reset(openat(stBelow.Descriptor(), "..", nFlags));
        if (fnIsSame()) {
            return true;
        }
    }
    CVolumePath path(m_items.Root(), m_fnGoesOn);
    if (path.GoTo(stFolder.stEntry.baPath.mid(m_items.Root().Path().size())) == ENPathEnd::FOUND) {
        stFolder.reopened.Reset(openat(path.Folder().nDescriptor, path.Name().constData(), nFlags));
        if (fnIsSame()) {
            return true;
        }
    }
    stFolder.reopened.Reset();
    errno = ESTALE;
    return false;
}
