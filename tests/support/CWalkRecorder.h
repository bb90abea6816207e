#pragma once

#include "copy/CDiskVisitor.h"
#include "copy/CTickedItems.h"

#include <QFile>
#include <QStringList>

#include <functional>
#include <utility>

/**
 * Writes down what a walk over the disk hands over, one line for each: by the place
 * where it would come to lie, below the volume. "folder/", "file", "link -> text",
 * "left out /path: why". Looks whether descriptor, name and path of an entry lead to it.
 */
class CWalkRecorder : public CDiskVisitor
{
public:
    explicit CWalkRecorder(QString strVolume)
        : m_strVolume(std::move(strVolume))
    {
    }

    bool GoesOn() override
    {
        m_bEnded = m_bEnded || m_nSteps++ == m_nMostSteps;
        return !m_bEnded;
    }

    void BeginItem(const STTickedItem& stItem) override
    {
        NoteCall();
        m_listOpen = QStringList(stItem.strPath.mid(m_strVolume.size()).section('/', 0, -2));
    }

    bool BeginFolder(const STDiskEntry& stFolder) override
    {
        Note(stFolder, "/");
        const QString strLine = m_listLine.constLast();
        if (m_fnEntry) {
            m_fnEntry(strLine);
        }
        if (m_listRefused.contains(strLine)) {
            return false;
        }
        m_listOpen.append(QFile::decodeName(stFolder.baPlace));
        return true;
    }

    void EndFolder(const STDiskEntry& stFolder) override
    {
        m_listOpen.removeLast();
        Note(stFolder, "/ ends");
    }

    void File(const STDiskEntry& stFile) override
    {
        Note(stFile, QString());
        if (m_fnEntry) {
            m_fnEntry(m_listLine.constLast());
        }
    }

    void Link(const STDiskEntry& stLink, const QByteArray& baTarget) override
    {
        Note(stLink, " -> " + QFile::decodeName(baTarget));
    }

    void LeftOut(const QString& strPath, const STCopyReason& stReason) override
    {
        NoteCall();
        const QString strError = stReason.nError == 0 ? QString() : ", " + qt_error_string(stReason.nError);
        m_listLine.append("left out " + strPath.mid(m_strVolume.size()) + ": " + stReason.strText + strError);
        m_listProblem.append(stReason.enProblem);
    }

    /** What was handed over, sorted, without the ends of folders. */
    QStringList Entries() const
    {
        QStringList listLine;
        for (const QString& strLine : m_listLine) {
            if (!strLine.endsWith(" ends")) {
                listLine.append(strLine);
            }
        }
        listLine.sort();
        return listLine;
    }

    QStringList m_listLine; ///< in the order of the calls
    QVector<ENCopyProblem> m_listProblem; ///< why something was left out
    QStringList m_listRefused; ///< folders, with "/", that are not to be entered
    QStringList m_listWrong; ///< entries that are not where the walk says
    std::function<void(const QString& strLine)> m_fnEntry; ///< called with each file and folder
    qint64 m_nSteps = 0; ///< how often it was asked whether it goes on
    qint64 m_nMostSteps = -1; ///< after so many it does not; -1 for all
    int m_nAfterEnd = 0; ///< calls after it did not go on

private:
    void NoteCall() { m_nAfterEnd += m_bEnded ? 1 : 0; }

    void Note(const STDiskEntry& stEntry, const QString& strEnd)
    {
        NoteCall();
        const QString strPlace = (m_listOpen + QStringList(QFile::decodeName(stEntry.baPlace))).join('/');
        m_listLine.append(strPlace.mid(1) + strEnd);
        const std::optional<STFileState> stNamed
            = CCopyPlatform::GetEntryState(stEntry.nFolder, stEntry.pszName);
        const std::optional<STFileState> stPath
            = CCopyPlatform::GetEntryState(QFile::decodeName(stEntry.baPath));
        if (!IsEntry(stNamed, stEntry) || !IsEntry(stPath, stEntry)) {
            m_listWrong.append(m_listLine.constLast());
        }
    }

    bool IsEntry(const std::optional<STFileState>& stState, const STDiskEntry& stEntry) const
    {
        return stState && stState->nInode == stEntry.stState.nInode
            && stState->nDevice == stEntry.stState.nDevice && stState->enKind == stEntry.stState.enKind;
    }

    const QString m_strVolume;
    QStringList m_listOpen;
    bool m_bEnded = false;
};
