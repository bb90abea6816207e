#include "copy/CDiskCopy.h"

#include "copy/CCopyReport.h"
#include "copy/CCopyWork.h"
#include "copy/CDiskWalk.h"
#include "files/CFileName.h"

#include <QFileInfo>

#include <cerrno>
#include <utility>

static STCopyReason TooLarge()
{
    return {ENCopyProblem::TOO_LARGE, QStringLiteral("its target's file system cannot hold it"), EFBIG};
}

CDiskCopy::CDiskCopy(const CDirNode& root, CCopyWork& work, QString strDest)
    : m_work(work)
    , m_strDest(std::move(strDest))
    , m_listItem(CTickedItems::Of(root, [&work] { return work.IsStopped(); }))
    , m_entries(work, m_strDest)
    , m_belongings(work)
    , m_damaged(work, [this](const STDamagedFile& stFile, const STCopyOutcome& stOutcome) {
        BookCopied(stFile.strSource, stFile.stState, stFile.strTarget, stOutcome);
    })
{
}

QStringList CDiskCopy::Sources() { return CTickedItems::Volumes(m_listItem); }

void CDiskCopy::Walk()
{
    CDiskWalk(m_listItem, *this).Walk();
    m_damaged.Finish();
    FinishLate();
    FinishAbove();
    BookLost();
}

bool CDiskCopy::GoesOn()
{
    if (!m_work.WaitWhilePaused()) {
        return false;
    }
    m_work.StepBegins(ENCopyStep::LISTING);
    return true;
}

void CDiskCopy::BeginItem(const STTickedItem& stItem)
{
    m_work.ItemBegins(stItem.strPath);
    const STTargetEntry stAbove
        = m_entries.Above(stItem.strPath, [&](const QString& strSource, const STTargetEntry& stEntry) {
              BookRenamed(strSource, stEntry);
              // What lies above the volume is of the system that runs here.
              if ((strSource + '/').startsWith(stItem.strVolume)) {
                  m_listAbove.append({strSource, STFileState(), stEntry.strPath});
              }
          });
    m_listFolder = {{stItem.strPath, stAbove.strPath, stAbove.stReason}};
}

bool CDiskCopy::BeginFolder(const STDiskEntry& stFolder)
{
    const QString strSource = CFileName::Decode(stFolder.baPath);
    m_work.ItemBegins(strSource);
    if (m_entries.IsRoot(strSource, stFolder.stState)) {
        LeftOut(strSource,
                {ENCopyProblem::ENTERED_BEFORE, QStringLiteral("it is the folder that is copied into")});
        return false;
    }
    const STOpenFolder stParent = m_listFolder.constLast();
    if (stParent.stReason) {
        m_work.BookProblem(STCopyOutcome::Missing(strSource, *stParent.stReason));
        m_listFolder.append({strSource, QString(), stParent.stReason});
        return true;
    }
    // The root of the whole system has no name, and is the folder of the copy itself.
    const STTargetEntry stEntry = stFolder.baPlace.isEmpty()
        ? STTargetEntry{stParent.strTarget}
        : m_entries.Folder(stParent.strTarget, stFolder.baPlace);
    if (m_work.IsStopped()) {
        return false;
    }
    if (stEntry.stReason) {
        m_work.BookProblem(STCopyOutcome::Missing(strSource, *stEntry.stReason));
    }
    BookRenamed(strSource, stEntry);
    m_listFolder.append({strSource, stEntry.strPath, stEntry.stReason});
    return true;
}

void CDiskCopy::EndFolder(const STDiskEntry& stFolder)
{
    const STOpenFolder stEnded = m_listFolder.takeLast();
    if (stEnded.bDamaged) {
        m_listFolder.last().bDamaged = true;
        m_listLate.append({stEnded.strSource, stFolder.stState, stEnded.strTarget});
    } else if (!stEnded.stReason) {
        m_belongings.GiveToFolder(stEnded.strSource, stFolder.stState, stEnded.strTarget);
    }
    m_work.ItemBegins(m_listFolder.constLast().strSource);
}

void CDiskCopy::File(const STDiskEntry& stFile)
{
    const QString strSource = CFileName::Decode(stFile.baPath);
    m_work.ItemBegins(strSource);
    const std::optional<STCopyReason> stReason = m_listFolder.constLast().stReason;
    const qint64 nSize = stFile.stState.nSize;
    // The total that the progress is of has no such files in it.
    if (stFile.stState.bOnlyInCloud) {
        m_work.BookProblem(STCopyOutcome::Missing(strSource, STCopyReason::OnlyInCloud(), 0));
    } else if (nSize > m_entries.Rules().nMostFileBytes) {
        m_work.BookProblem(STCopyOutcome::Missing(strSource, stReason.value_or(TooLarge()), nSize));
    } else if (stReason) {
        BookMissing(strSource, *stReason, nSize);
    } else {
        CopyFile(strSource, stFile.stState, stFile.baPlace);
    }
    // What is waited for after this is the folder.
    m_work.ItemBegins(m_listFolder.constLast().strSource);
}

void CDiskCopy::CopyFile(const QString& strSource, const STFileState& stState, const QByteArray& baName)
{
    const QString strFolder = m_listFolder.constLast().strTarget;
    CDescriptor made;
    const STTargetEntry stEntry = m_entries.File(strFolder, baName, made);
    const bool bStopped = m_work.IsStopped();
    if (stEntry.stReason) {
        if (!bStopped) {
            BookMissing(strSource, *stEntry.stReason, stState.nSize);
        }
        return;
    }
    BookRenamed(strSource, stEntry);
    if (bStopped) {
        // It is there, and nobody is to take it for the file.
        m_work.BookFile({ENCopyEnd::STOPPED,
                         strSource,
                         {ENCopyProblem::STOPPED, QStringLiteral("the copy was stopped")},
                         0,
                         stState.nSize});
        return;
    }
    const STCopyOutcome stOutcome
        = m_work.CopyBytesTo(made, QFileInfo(strSource), strFolder, stEntry.strPath);
    if (stOutcome.stReason.enProblem == ENCopyProblem::SOURCE_READ
        && stOutcome.enEnd == ENCopyEnd::NOT_WHOLE) {
        m_listFolder.last().bDamaged = true;
        m_damaged.Add({strSource, stEntry.strPath, stOutcome, stState});
        return;
    }
    BookCopied(strSource, stState, stEntry.strPath, stOutcome);
}

void CDiskCopy::Link(const STDiskEntry& stLink, const QByteArray& baTarget)
{
    const QString strSource = CFileName::Decode(stLink.baPath);
    m_work.ItemBegins(strSource);
    if (m_listFolder.constLast().stReason) {
        m_work.BookProblem(STCopyOutcome::Missing(strSource, *m_listFolder.constLast().stReason));
    } else {
        MakeLink(strSource, stLink, baTarget);
    }
    m_work.ItemBegins(m_listFolder.constLast().strSource);
}

void CDiskCopy::MakeLink(const QString& strSource, const STDiskEntry& stLink, const QByteArray& baTarget)
{
    const STTargetEntry stEntry
        = m_entries.Link(m_listFolder.constLast().strTarget, stLink.baPlace, baTarget);
    if (m_work.IsStopped()) {
        return;
    }
    if (stEntry.stReason) {
        LeftOut(strSource, *stEntry.stReason);
        return;
    }
    BookRenamed(strSource, stEntry);
    m_belongings.GiveToLink(stLink.stState, stEntry.strPath);
    m_work.BookLink();
}

void CDiskCopy::LeftOut(const QString& strPath, const STCopyReason& stReason)
{
    const STCopyOutcome stOutcome = STCopyOutcome::Missing(strPath, stReason);
    if (CCopyReport::Item(stOutcome).bNote) {
        m_work.BookNote(stOutcome);
    } else {
        m_work.BookProblem(stOutcome);
    }
}

/** Of a folder that cannot be made nothing is read. */
bool CDiskCopy::WantsMore() const { return !m_listFolder.constLast().stReason && m_work.WantsMore(); }

bool CDiskCopy::WantsAnew() const { return WantsMore() && m_work.WantsAnew(); }

void CDiskCopy::Expect(const QVector<STExpectedFile>& listFile, bool bAnew)
{
    m_work.Expect(listFile, bAnew);
}

/** Books a file whose bytes were dealt with, and gives its copy what belongs to it. */
void CDiskCopy::BookCopied(const QString& strSource, const STFileState& stState, const QString& strTarget,
                           const STCopyOutcome& stOutcome)
{
    const ENCopyProblem enProblem = stOutcome.stReason.enProblem;
    if (stOutcome.HasAllBytes() || enProblem == ENCopyProblem::DAMAGED
        || enProblem == ENCopyProblem::SOURCE_CHANGED || enProblem == ENCopyProblem::FORK_READ) {
        m_belongings.GiveToFile(strSource, stState, strTarget);
    }
    m_work.BookFile(stOutcome);
    if (stOutcome.enEnd == ENCopyEnd::NOT_WHOLE && !m_work.IsStopped()) {
        TellRest(strSource, stState.nSize - stOutcome.nTold);
    }
}

/** Books a file of which nothing was copied. */
void CDiskCopy::BookMissing(const QString& strSource, const STCopyReason& stReason, qint64 nSize)
{
    m_work.BookProblem(STCopyOutcome::Missing(strSource, stReason, nSize));
    TellRest(strSource, nSize);
}

void CDiskCopy::BookRenamed(const QString& strSource, const STTargetEntry& stEntry)
{
    if (!stEntry.bRenamed) {
        return;
    }
    const QString strBelow = m_entries.Below(stEntry.strPath);
    STCopyReason stReason{ENCopyProblem::NAME_CHANGED,
                          "the disk does not take its name, there it is " + CCopyReport::Quoted(strBelow)};
    stReason.strDetail = CCopyReport::Shown(strBelow);
    m_work.BookNote(STCopyOutcome::Missing(strSource, stReason));
}

/** Lets what will not be copied of a file count as done, so that the progress is of all of it. */
void CDiskCopy::TellRest(const QString& strSource, qint64 nBytes)
{
    if (nBytes > 0) {
        m_work.ChunkDone(QFileInfo(strSource).fileName(), nBytes);
    }
}

/** Gives the folders of damaged files what belongs to them. */
void CDiskCopy::FinishLate()
{
    for (const STLateFolder& stFolder : qAsConst(m_listLate)) {
        if (m_work.IsStopped()) {
            break;
        }
        m_work.ItemBegins(stFolder.strSource);
        m_belongings.GiveToFolder(stFolder.strSource, stFolder.stState, stFolder.strTarget);
    }
    m_listLate.clear();
}

/**
 * Gives the folders above the items what belongs to them. What a link leads to has
 * nothing to do with the folder that was made for it.
 */
void CDiskCopy::FinishAbove()
{
    while (!m_listAbove.isEmpty() && !m_work.IsStopped()) {
        const STLateFolder stFolder = m_listAbove.takeLast();
        m_work.ItemBegins(stFolder.strSource);
        m_work.StepBegins(ENCopyStep::READING);
        const std::optional<STFileState> stState = CCopyPlatform::GetEntryState(stFolder.strSource);
        if (stState && stState->enKind == ENFileKind::DIRECTORY) {
            m_belongings.GiveToFolder(stFolder.strSource, *stState, stFolder.strTarget);
        }
    }
}

/** Books what the disk could not hold, each kind once for the whole copy. */
void CDiskCopy::BookLost()
{
    const QStringList listVolume = Sources();
    for (const STCopyReason& stReason : m_belongings.Lost()) {
        m_work.BookNote(
            STCopyOutcome::Missing(listVolume.count() == 1 ? listVolume.constFirst() : m_strDest, stReason));
    }
}
