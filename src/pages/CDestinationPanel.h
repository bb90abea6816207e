#pragma once

#include "pages/CDiskQuestions.h"

#include <QObject>
#include <QString>

#include <optional>

class CNoticeLine;
class CSelFileForm;

/**
 * The right side of the selection page: the chosen disk with its space. A disk
 * that does not answer is shown without it, and named in the line of notices; the
 * space comes in when the disk tells it.
 *
 * It also knows which destination the user knows of, and says so when another one
 * is shown, and that one cannot hold large files where these are to be copied, whatever
 * the tree shows. GUI thread only.
 */
class CDestinationPanel : public QObject
{
    Q_OBJECT

public:
    /** Neither of the two is owned; they have to live as long. */
    CDestinationPanel(CSelFileForm* pForm, CNoticeLine* pNotice, QObject* pParent);

    /** Shows a disk that the user has not chosen, its picture included; the prompt for an empty path. */
    void Show(const QString& strName, const QString& strPath);

    /** Shows the disk that the user has chosen; picture and what a copy needs stay. */
    void Choose(const QString& strName, const QString& strPath);

    /** Reads the space of the disk that is shown once more. */
    void Refresh();

    /** From now on the user knows of the disk that is shown. */
    void Accept();

    /** Whether a tick means everything in it, so that nobody has seen what is in it. */
    void SetComplete(bool bComplete);

    /** Reads a disk's state, waiting shortly; nothing when it does not answer. For what is not shown. */
    std::optional<STDiskState> Glance(const QString& strPath);

    /**
     * Reads a disk's state, waiting up to five seconds under the wait cursor. When it
     * has not answered by then the notice says so, and there is no result.
     */
    std::optional<STDiskState> Insist(const QString& strName, const QString& strPath);

    /** The disk at that path has gone: what it has been asked is forgotten. */
    void Forget(const QString& strPath);

signals:
    /** A disk that did not answer in time has told its state. */
    void SignalAnswered(const QString& strPath, const STDiskState& state);

private:
    void ShowSpace();
    void OnAnswered(const QString& strPath, const STDiskState& state);
    void TakeState(const STDiskState& state);
    void TakeRules(const STDiskRules& stRules);
    void NoticeOther();
    void NoticeNoAnswer(const QString& strName);

    CSelFileForm* m_pForm;
    CNoticeLine* m_pNotice;
    CDiskQuestions m_questions;
    QString m_strName; // of the disk that is shown
    QString m_strPath; // empty while none is
    QString m_strKnown; // path of the one that the user knows of; empty before there was any
    STDiskRules m_stRules; // of the disk that is shown, as far as it has told
    bool m_bComplete = false;
};
