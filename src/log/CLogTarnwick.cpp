#include "log/CLogTarnwick.h"

#include "log/CClock.h"
#include "log/CFallbackFolder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMutexLocker>
#include <QStringList>

#include <sys/stat.h>
#include <utility>

static const int LEAST_LIMIT = 1024;

CLogTarnwick g_TarnwickLog;

// Dates are written and read with the digits 0 to 9 whatever the system's
// language is: file names written under one language are judged under another.
static QString Format(const QDateTime& dateTime, const char* pFormat)
{
    return QLocale::c().toString(dateTime, QLatin1String(pFormat));
}

static QString Stamped(const QString& strMessage)
{
    return Format(CClock::Now(), "yyyy-MM-dd hh:mm:ss.zzz") + QStringLiteral(": ") + strMessage;
}

static QString Seconds(const QDateTime& dateTime) { return Format(dateTime, "yyyy-MM-dd hh:mm:ss"); }

// The seconds as 14 digits.
static QString Digits(const QDateTime& dateTime)
{
    return Seconds(dateTime).remove(QLatin1Char('-')).remove(QLatin1Char(' ')).remove(QLatin1Char(':'));
}

// Time at which the file was made; some file systems only know when it was changed.
static QDateTime CreationTime(const QString& strPath)
{
    const QFileInfo info(strPath);
    if (info.birthTime().isValid()) {
        return info.birthTime();
    }
    return info.metadataChangeTime().isValid() ? info.metadataChangeTime() : info.lastModified();
}

// The date of eight digits; invalid when they are none.
static QDate DateOfDigits(QString strDigits)
{
    strDigits.insert(6, QLatin1Char('-')).insert(4, QLatin1Char('-'));
    return QLocale::c().toDate(strDigits, QStringLiteral("yyyy-MM-dd"));
}

// A line of the retention step. The name goes in by the only call, so that a "%1" in it stays as it is.
static QString ResultText(const char* pText, const QString& strFile, bool bDone)
{
    return QString::fromLatin1(pText).arg(strFile, bDone ? QStringLiteral("true") : QStringLiteral("false"));
}

CLogTarnwick::CLogTarnwick() = default;

CLogTarnwick::~CLogTarnwick() { Close(); }

bool CLogTarnwick::InitFolder(const char* pSubFolder, int nSizeLimit, const char* pName,
                              const char* pExtension)
{
    if (pSubFolder == nullptr || *pSubFolder == '\0') {
        return false;
    }
    const QString strFolder
        = QCoreApplication::applicationDirPath() + QLatin1Char('/') + QString::fromUtf8(pSubFolder);
    QDir().mkpath(strFolder);

    const QMutexLocker locker(&m_lock);
    m_strFolder = strFolder;
    m_strName = QString::fromUtf8(pName);
    m_strExtension = QString::fromUtf8(pExtension);
    m_nLimit = quint64(qMax(nSizeLimit, LEAST_LIMIT));
    m_strDate = GetCurrDate();
    m_strPath = FilePath();
    m_pFallback.reset();
    m_bElsewhere = false;
    m_bLost = false;
    return true;
}

void CLogTarnwick::KeepDays(int nDays, const QString& strBackupFolder)
{
    if (m_strName.isEmpty() || m_nKeepDays < 0) {
        return;
    }
    m_nKeepDays = nDays;
    LogExt(QStringLiteral("Process KeepDays(%1), begin....").arg(nDays));
    if (!strBackupFolder.isEmpty()) {
        QDir().mkpath(strBackupFolder);
    }
    ClearLogFolder(strBackupFolder);
    LogExt(QStringLiteral("Process KeepDays end."));
}

bool CLogTarnwick::ClearLogFolder(const QString& strBackupFolder)
{
    if (m_nKeepDays < 1) {
        return false;
    }
    // The days stay negative from here on: that is what keeps the retention from
    // running twice in one run.
    m_nKeepDays = -m_nKeepDays;
    const QStringList listOutdated = OutdatedFiles(CClock::Now().date().addDays(m_nKeepDays));
    for (const QString& strFile : listOutdated) {
        if (strBackupFolder.isEmpty()) {
            RemoveOutdated(strFile);
        } else {
            BackUpOutdated(strFile, strBackupFolder);
        }
    }
    const QMutexLocker locker(&m_lock);
    ClearFallback(strBackupFolder);
    return true;
}

/** The same in the temporary folder, when lines go there. The caller holds the lock. */
void CLogTarnwick::ClearFallback(const QString& strBackupFolder)
{
    if (m_pFallback) {
        m_pFallback->m_nKeepDays = -m_nKeepDays;
        m_pFallback->ClearLogFolder(strBackupFolder);
    }
}

QString CLogTarnwick::FallbackFile() const
{
    const QMutexLocker locker(&m_lock);
    return m_bElsewhere ? m_pFallback->m_strPath : QString();
}

QString CLogTarnwick::CurrentFile() const
{
    const QMutexLocker locker(&m_lock);
    return m_bElsewhere ? m_pFallback->m_strPath : m_strPath;
}

bool CLogTarnwick::HasLostLines() const
{
    const QMutexLocker locker(&m_lock);
    return m_bLost;
}

void CLogTarnwick::SetPlaceWatcher(std::function<void()> fnChanged)
{
    const QMutexLocker locker(&m_lock);
    m_fnPlaceChanged = std::move(fnChanged);
}

void CLogTarnwick::LogExt(const QString& strMessage)
{
    const QString strLine = Stamped(strMessage);
    const QMutexLocker locker(&m_lock);
    WriteLog(strLine);
}

void CLogTarnwick::Log(const QString& strMessage)
{
    const QMutexLocker locker(&m_lock);
    WriteLog(strMessage);
}

void CLogTarnwick::KeepEarlyLines()
{
    const QMutexLocker locker(&m_lock);
    m_bKeepEarly = true;
}

void CLogTarnwick::WriteEarlyLines()
{
    const QMutexLocker locker(&m_lock);
    m_bKeepEarly = false;
    for (const QString& strLine : qAsConst(m_listEarly)) {
        WriteLog(strLine);
    }
    if (m_nEarlyLost > 0) {
        WriteLog(QStringLiteral("lines that found no room before the log was there: %1").arg(m_nEarlyLost));
    }
    m_listEarly.clear();
    m_nEarlyLost = 0;
}

/** True for a line that is not to be written yet. */
bool CLogTarnwick::KeepEarly(const QString& strLine)
{
    if (!m_bKeepEarly || !m_strPath.isEmpty()) {
        return false;
    }
    if (m_listEarly.size() < MOST_EARLY_LINES) {
        m_listEarly.append(strLine);
    } else {
        ++m_nEarlyLost;
    }
    return true;
}

void CLogTarnwick::WriteLog(const QString& strLine)
{
    if (KeepEarly(strLine) || m_strPath.isEmpty() || WriteHere(strLine) || m_bIsFallback) {
        return;
    }
    WriteElsewhere(strLine);
}

/** False when the line is not, or not as a whole, in the file. */
bool CLogTarnwick::WriteHere(const QString& strLine)
{
    if (!OpenFile()) {
        return false;
    }
    if (quint64(m_file.size()) > m_nLimit) {
        SetAside();
        if (!OpenFile()) {
            return false;
        }
    }
    m_stream.setDevice(&m_file);
    // The stream has just asked to be told when the file closes. It lives on the
    // start-up thread, so a worker's line would have it flushed there later, outside
    // the lock, and each line would add one more such request.
    m_file.disconnect();
    m_stream << strLine << QLatin1Char('\n');
    m_stream.flush();
    const bool bWritten = m_stream.status() == QTextStream::Ok;
    m_file.close();
    return bWritten;
}

// The log's own place is tried again for each line: a disk may have room again.
void CLogTarnwick::WriteElsewhere(const QString& strLine)
{
    if (!m_pFallback) {
        m_pFallback = MakeFallback();
    }
    const bool bWritten = m_pFallback && m_pFallback->WriteHere(strLine);
    bool& bFlag = bWritten ? m_bElsewhere : m_bLost;
    const bool bChanged = !std::exchange(bFlag, true);
    if (bChanged && m_fnPlaceChanged) {
        m_fnPlaceChanged();
    }
}

/** A log of the same kind in the temporary folder, which begins with the reason; null without a folder. */
std::unique_ptr<CLogTarnwick> CLogTarnwick::MakeFallback()
{
    const QString strFolder = CFallbackFolder::Make();
    if (strFolder.isEmpty()) {
        return nullptr;
    }
    auto pLog = std::make_unique<CLogTarnwick>();
    pLog->m_bIsFallback = true;
    pLog->m_strFolder = strFolder;
    pLog->m_strName = m_strName;
    pLog->m_strExtension = m_strExtension;
    pLog->m_nLimit = m_nLimit;
    pLog->m_strDate = m_strDate;
    pLog->m_strPath = pLog->FilePath();
    pLog->WriteHere(Stamped(QStringLiteral("the log is written here, since it cannot be written to %1: %2")
                                .arg(m_strPath, WhyNotHere())));
    if (m_nKeepDays < 0) {
        // The days of its own place have been looked at before.
        pLog->m_nKeepDays = -m_nKeepDays;
        pLog->ClearLogFolder(QString());
    }
    return pLog;
}

QString CLogTarnwick::WhyNotHere() const
{
    return m_file.error() == QFileDevice::NoError ? QStringLiteral("it is no file") : m_file.errorString();
}

QString CLogTarnwick::GetCurrDate() const
{
    return Format(CClock::Now(), "yyyy-MM-dd").remove(QLatin1Char('-'));
}

void CLogTarnwick::Close()
{
    if (m_file.isOpen()) {
        m_file.flush();
        m_file.close();
    }
}

QString CLogTarnwick::FilePath() const
{
    return m_strFolder + QLatin1Char('/') + m_strName + QLatin1Char('_') + m_strDate + m_strExtension;
}

// Opening a pipe would wait for somebody who reads it.
static bool IsNoFile(const QString& strPath)
{
    struct stat status;
    return ::stat(QFile::encodeName(strPath).constData(), &status) == 0 && !S_ISREG(status.st_mode);
}

bool CLogTarnwick::OpenFile()
{
    if (m_strPath.isEmpty() || IsNoFile(m_strPath)) {
        return false;
    }
    m_file.setFileName(m_strPath);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text);
}

void CLogTarnwick::SetAside()
{
    const QString strNow = Digits(CClock::Now());
    const QString strCreated = Digits(CreationTime(m_strPath));
    // The only place where the date moves on: a run that spans midnight keeps
    // writing to the file of the day on which it started.
    m_strDate = GetCurrDate();
    // Whether the renaming worked is not asked: if it did not, the same file goes on growing.
    m_file.rename(m_strFolder + QLatin1Char('/') + m_strName + QLatin1Char('_') + strCreated
                  + QLatin1Char('_') + strNow + m_strExtension + QStringLiteral(".bak"));
    Close();
    m_strPath = FilePath();
}

QStringList CLogTarnwick::OutdatedFiles(const QDate& dateCutOff) const
{
    QStringList listOutdated;
    const QFileInfoList listInfo = QDir(m_strFolder).entryInfoList(QDir::Files, QDir::Unsorted);
    for (const QFileInfo& info : listInfo) {
        const QString strFile = info.fileName();
        if (info.isDir() || strFile.length() < m_strName.length() + m_strDate.length()) {
            continue;
        }
        // The base name itself is not compared: whatever has an old date at this
        // place belongs to a log of this folder, also one that was named otherwise.
        const QDate date = DateOfDigits(strFile.mid(m_strName.length() + 1, m_strDate.length()));
        if (date.isValid() && date < dateCutOff) {
            listOutdated.append(strFile);
        }
    }
    return listOutdated;
}

void CLogTarnwick::RemoveOutdated(const QString& strFile)
{
    const bool bRemoved = QFile::remove(m_strFolder + QLatin1Char('/') + strFile);
    LogExt(ResultText("No Backup delete outdate file(%1):(%2)", strFile, bRemoved));
}

void CLogTarnwick::BackUpOutdated(const QString& strFile, const QString& strBackupFolder)
{
    const QString strSource = m_strFolder + QLatin1Char('/') + strFile;
    const QString strTarget = strBackupFolder + QLatin1Char('/') + strFile;
    const bool bCopied = QFile::copy(strSource, strTarget);
    LogExt(ResultText("First Backup copy outdate file(%1):(%2)", strFile, bCopied));
    if (bCopied) {
        LogExt(ResultText("First Backup delete outdate file(%1):(%2)", strFile, QFile::remove(strSource)));
        return;
    }
    // Most often the name is taken, so a time is added to it. "Sencond" is kept so:
    // docs/behaviour.md. The source goes in any case: the folder must not keep what
    // can never be backed up.
    const bool bCopiedNow = QFile::copy(strSource, strTarget + Seconds(CClock::Now()));
    LogExt(ResultText("Sencond Backup copy outdate file(%1):(%2)", strFile, bCopiedNow));
    LogExt(ResultText("Sencond Backup delete outdate file(%1):(%2)", strFile, QFile::remove(strSource)));
}
