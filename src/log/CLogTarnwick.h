#pragma once

#include <QFile>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <memory>

/**
 * The program's text log: one file a day in a folder beside the executable, set
 * aside as a ".bak" file when it has grown too large, deleted after some days.
 *
 * A line that cannot be written there goes to a file of the same name in the temporary
 * folder (CFallbackFolder), for which size and days are the same.
 *
 * There is one object, g_TarnwickLog. Lines that arrive before InitFolder() has
 * run are dropped, unless KeepEarlyLines() was called. The text is written in the
 * locale's encoding.
 */
class CLogTarnwick : public QObject
{
    Q_OBJECT

public:
    CLogTarnwick();
    ~CLogTarnwick() override;

    /**
     * Chooses the log folder (created when missing) and the current file.
     *
     * @param pSubFolder folder below the folder of the executable
     * @param nSizeLimit size in bytes above which the file is set aside; at least 1024 is used
     * @param pName base name of the files; null counts as empty
     * @param pExtension extension with its dot; null counts as empty
     * @return false when pSubFolder is null or empty, and then nothing has changed
     *
     * Start-up thread, once the application object exists.
     */
    bool InitFolder(const char* pSubFolder, int nSizeLimit, const char* pName, const char* pExtension);

    /** The most lines that are kept for WriteEarlyLines(). */
    static constexpr int MOST_EARLY_LINES = 1000;

    /**
     * From now on lines that arrive before InitFolder() has run are kept, each with the time
     * at which it came. Any thread.
     */
    void KeepEarlyLines();

    /**
     * Writes the lines that were kept, and how many did not find room; keeps none any
     * more. After InitFolder(); any thread.
     */
    void WriteEarlyLines();

    /**
     * Removes the log files that are more than nDays days old, once per run;
     * later calls do nothing.
     *
     * @param nDays days to keep, today not counted; below 1 nothing is removed
     * @param strBackupFolder where the files are copied to first (created when
     *        missing); empty removes them without a copy
     *
     * Start-up thread. Failures are lines in the log.
     */
    void KeepDays(int nDays, const QString& strBackupFolder);

    /**
     * The removal itself, with the days that KeepDays() has set.
     *
     * @return false when no days are set or the removal has already run
     */
    bool ClearLogFolder(const QString& strBackupFolder);

    /** The file in the temporary folder; empty while every line was written where it belongs. Any thread. */
    QString FallbackFile() const;

    /** The file that lines go to now, of the two; empty before InitFolder(). Any thread. */
    QString CurrentFile() const;

    /** Whether a line could be written in neither place. Any thread. */
    bool HasLostLines() const;

    /**
     * Has fnChanged called when one of the two above has become another, on the thread that
     * logs; it must not use the log. An empty function ends that. Any thread.
     */
    void SetPlaceWatcher(std::function<void()> fnChanged);

    /** Writes a line "yyyy-MM-dd hh:mm:ss.zzz: message". Any thread; one that cannot be written is lost. */
    void LogExt(const QString& strMessage);

    /** Writes the message as a line, without a time. Any thread; one that cannot be written is lost. */
    void Log(const QString& strMessage);

    /** Writes one line. The caller holds the lock, which only Log() and LogExt() take. */
    void WriteLog(const QString& strLine);

    /** Present local date as yyyyMMdd. Any thread. */
    QString GetCurrDate() const;

    /** Flushes and closes the current file if it is open. Not while another thread is logging. */
    void Close();

private:
    QString FilePath() const;
    bool KeepEarly(const QString& strLine);
    bool OpenFile();
    bool WriteHere(const QString& strLine);
    void WriteElsewhere(const QString& strLine);
    std::unique_ptr<CLogTarnwick> MakeFallback();
    void ClearFallback(const QString& strBackupFolder);
    QString WhyNotHere() const;
    void SetAside();
    QStringList OutdatedFiles(const QDate& dateCutOff) const;
    void RemoveOutdated(const QString& strFile);
    void BackUpOutdated(const QString& strFile, const QString& strBackupFolder);

    QFile m_file;
    QTextStream m_stream;
    mutable QMutex m_lock;
    QString m_strFolder;
    QString m_strName;
    QString m_strExtension;
    QString m_strPath;
    QString m_strDate;
    quint64 m_nLimit = 0;
    qint32 m_nKeepDays = 0;
    bool m_bKeepEarly = false;
    QStringList m_listEarly; // kept for WriteEarlyLines
    qint64 m_nEarlyLost = 0; // lines that found no room there
    std::unique_ptr<CLogTarnwick> m_pFallback; // in the temporary folder, as soon as it is needed
    bool m_bIsFallback = false; // of another log: it has none itself
    bool m_bElsewhere = false; // a line was written by m_pFallback
    bool m_bLost = false; // a line was written nowhere
    std::function<void()> m_fnPlaceChanged;
};

/** The program's one log, usable from static initialisation to the end of the process. */
extern CLogTarnwick g_TarnwickLog;
