#pragma once

#include "copy/CCopyReportText.h"
#include "copy/STCopyAccount.h"
#include "files/CDescriptor.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <memory>
#include <mutex>

/** What has become of a report. */
struct STReportEnd
{
    QString strPath = {}; ///< empty when there is none
    bool bMissing = false; ///< it was needed, and is not there or not complete
};

/**
 * The report beside a copy: the path of the copy's folder with ".txt" behind it. It
 * is there from the beginning, so that a copy that breaks off leaves its trace, holds
 * room that is given up before a file is, and goes when there is nothing to say.
 *
 * It never makes a copy fail. Any thread, each call as a whole; one whose disk does
 * not answer holds the others.
 */
class CCopyReportFile
{
public:
    /** For a copy into that folder. Touches no disk. */
    explicit CCopyReportFile(QString strFolder);

    /** Makes the file in pParent, which holds the copy's folder; where that fails it goes on without. */
    void Begin(std::shared_ptr<const CDescriptor> pParent, const STCopyBeginning& stBeginning);

    /** Adds the line of an item. */
    void Add(const STCopyItem& stItem);

    /**
     * Gives up the room that it holds, and at last itself, when nBytes may find room
     * then. False when that cannot help, or nothing is left to give up.
     */
    bool GiveUpRoom(qint64 nBytes);

    /** Returns when all that was written is on the copy's disk; false when it is not, or nobody knows. */
    bool FlushDisk();

    /**
     * Ends the report, or removes it when the copy is whole and there is nothing to
     * say. On a destination that is gone nothing is touched. Later calls do nothing
     * and tell the same.
     */
    STReportEnd End(const STCopyAccount& stAccount);

private:
    bool Create();
    void Remove();
    bool IsOurs() const;
    bool WriteAt(const QByteArray& baText, qint64 nPos);
    bool CutOff();
    bool WriteLine(const QByteArray& baLine);
    bool WriteItems(const STCopyItem* pLast);
    bool Complete(const STCopyAccount& stAccount);
    STReportEnd EndOf(const STCopyAccount& stAccount);

    const QString m_strFolder;
    std::mutex m_mutex; // guards all below
    STCopyBeginning m_stBeginning;
    std::shared_ptr<const CDescriptor> m_pParent;
    CDescriptor m_file;
    QByteArray m_baName; // of the file, in the folder
    qint64 m_nEnd = 0; // where the next line goes
    bool m_bReserved = false; // it holds room behind its end
    bool m_bBegun = false;
    bool m_bEnded = false;
    STReportEnd m_stEnd;
    QVector<STCopyItem> m_listItem; // the first ones, to be written again
    qint64 m_nItems = 0;
    qint64 m_nWritten = 0; // of them, from the first on
};
