#include "copy/CCopyReportFile.h"

#include "copy/CCopyPlatform.h"
#include "copy/CFreeFile.h"
#include "files/CFileName.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

static const qint64 RESERVE = qint64(64) * 1024;
static const qint64 BLOCK = 512; // unit in which the system tells the room of a file

static QString ParentOf(const QString& strPath) { return strPath.left(qMax(strPath.lastIndexOf('/'), 1)); }

CCopyReportFile::CCopyReportFile(QString strFolder)
    : m_strFolder(std::move(strFolder))
{
}

void CCopyReportFile::Begin(std::shared_ptr<const CDescriptor> pParent, const STCopyBeginning& stBeginning)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_bBegun) {
        return;
    }
    m_bBegun = true;
    m_pParent = std::move(pParent);
    m_stBeginning = stBeginning;
    if (!Create()) {
        return;
    }
    m_bReserved = CCopyPlatform::Reserve(m_file.Get(), m_nEnd, RESERVE);
    CCopyPlatform::FlushFile(m_file.Get());
}

/** Makes the file with its first head, under a name that is free. */
bool CCopyReportFile::Create()
{
    if (!m_pParent) {
        return false;
    }
    const QByteArray baStem = CFileName::Encode(m_strFolder.mid(m_strFolder.lastIndexOf('/') + 1));
    const STFreeFile stFile = CFreeFile::Create(m_pParent->Get(), baStem, ".txt");
    m_file.Reset(stFile.nDescriptor);
    m_baName = stFile.baName;
    m_nWritten = 0;
    m_nEnd = CCopyReportText::HEAD_SIZE;
    if (m_file.IsOpen() && !WriteAt(CCopyReportText::HeadAtBegin(m_stBeginning), 0)) {
        Remove();
    }
    return m_file.IsOpen();
}

/** Whether the name still leads to the file that was made. */
bool CCopyReportFile::IsOurs() const
{
    struct stat stFile;
    struct stat stName;
    return fstat(m_file.Get(), &stFile) == 0
        && fstatat(m_pParent->Get(), m_baName.constData(), &stName, AT_SYMLINK_NOFOLLOW) == 0
        && stFile.st_dev == stName.st_dev && stFile.st_ino == stName.st_ino;
}

void CCopyReportFile::Remove()
{
    if (!IsOurs() || unlinkat(m_pParent->Get(), m_baName.constData(), 0) == 0) {
        m_file.Reset();
    }
}

bool CCopyReportFile::WriteAt(const QByteArray& baText, qint64 nPos)
{
    qint64 nDone = 0;
    while (nDone < baText.size()) {
        const qint64 nWritten
            = pwrite(m_file.Get(), baText.constData() + nDone, size_t(baText.size() - nDone), nPos + nDone);
        if (nWritten <= 0) {
            return false;
        }
        nDone += nWritten;
    }
    return true;
}

/** Ends the file behind its last line: the reserve goes, and what was written of a line by half. */
bool CCopyReportFile::CutOff()
{
    m_bReserved = false;
    return ftruncate(m_file.Get(), m_nEnd) == 0;
}

/** Writes a line behind the others, as a whole or not at all. */
bool CCopyReportFile::WriteLine(const QByteArray& baLine)
{
    if (!WriteAt(baLine, m_nEnd)) {
        CutOff();
        return false;
    }
    m_nEnd += baLine.size();
    return true;
}

/** Writes the lines that are missing so far; pLast is the last item when it is not in the list. */
bool CCopyReportFile::WriteItems(const STCopyItem* pLast)
{
    while (m_nWritten < m_nItems) {
        const bool bListed = m_nWritten < m_listItem.count();
        if (!bListed && (pLast == nullptr || m_nWritten + 1 != m_nItems)) {
            return false;
        }
        if (!WriteLine(CCopyReportText::Line(bListed ? m_listItem.at(int(m_nWritten)) : *pLast))) {
            return false;
        }
        ++m_nWritten;
    }
    return true;
}

void CCopyReportFile::Add(const STCopyItem& stItem)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_bEnded) {
        return;
    }
    ++m_nItems;
    if (m_listItem.count() < STCopyAccount::LISTED_ITEMS) {
        m_listItem.append(stItem);
    }
    if (m_file.IsOpen()) {
        WriteItems(&stItem);
    }
}

bool CCopyReportFile::GiveUpRoom(qint64 nBytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    struct stat stFile;
    if (m_bEnded || !m_file.IsOpen() || fstat(m_file.Get(), &stFile) != 0) {
        return false;
    }
    // Some file systems do not tell the room that a file takes.
    const qint64 nHeld = qMax(qint64(stFile.st_blocks) * BLOCK, m_nEnd + (m_bReserved ? RESERVE : 0));
    if (nBytes > nHeld) {
        return false;
    }
    if (m_bReserved) {
        return CutOff();
    }
    Remove();
    return !m_file.IsOpen();
}

bool CCopyReportFile::FlushDisk()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pParent && CCopyPlatform::FlushFileSystem(m_pParent->Get());
}

STReportEnd CCopyReportFile::End(const STCopyAccount& stAccount)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_bEnded) {
        m_bEnded = true;
        m_stEnd = EndOf(stAccount);
        m_file.Reset();
        m_pParent.reset();
    }
    return m_stEnd;
}

STReportEnd CCopyReportFile::EndOf(const STCopyAccount& stAccount)
{
    if (!m_bBegun) {
        return {};
    }
    if (stAccount.bGone) {
        return {QString(), true};
    }
    if (stAccount.IsWhole() && stAccount.nNotes == 0) {
        if (!m_file.IsOpen()) {
            return {};
        }
        Remove();
        if (!m_file.IsOpen()) {
            CCopyPlatform::FlushFile(m_pParent->Get());
            return {};
        }
    }
    const bool bComplete = Complete(stAccount);
    return {m_file.IsOpen() ? ParentOf(m_strFolder) + '/' + CFileName::Decode(m_baName) : QString(),
            !bComplete};
}

/** Writes what is missing, makes the file anew where there is none, and brings it to the disk. */
bool CCopyReportFile::Complete(const STCopyAccount& stAccount)
{
    if (m_file.IsOpen() && !IsOurs()) {
        m_file.Reset(); // somebody has taken it away: nobody could read it
    }
    if (!m_file.IsOpen()) {
        if (!m_pParent) {
            // It may have been made with the folder of the copy.
            m_pParent = std::make_shared<const CDescriptor>(CCopyPlatform::OpenFolder(ParentOf(m_strFolder)));
        }
        if (!Create()) {
            return false;
        }
    }
    bool bComplete = WriteItems(nullptr);
    if (m_nWritten < m_nItems) {
        WriteLine(CCopyReportText::LineOfOthers(m_nItems - m_nWritten));
    }
    bComplete = WriteAt(CCopyReportText::HeadAtEnd(m_stBeginning, stAccount), 0) && bComplete;
    bComplete = CutOff() && bComplete;
    return CCopyPlatform::FlushFile(m_file.Get()) && bComplete;
}
