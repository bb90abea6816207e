#pragma once

#include "disk/CHomeFolders.h"
#include "files/CAsideQuestion.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

#include <map>
#include <memory>
#include <optional>

class CNoticeLine;
struct STVolume;

/**
 * Says in the line of notices where the files of a Mac's users are when they are not on
 * its start-up volume, or that their volume may be locked; and that a volume has come that
 * is to be searched for.
 *
 * Each volume is asked aside. One that does not answer is waited for as long as told
 * below, holds one thread however often it is asked, and is heard later. GUI thread only.
 */
class CSourceNotice : public QObject
{
    Q_OBJECT

public:
    /** So long nothing is said while a volume has not answered. */
    static constexpr std::chrono::milliseconds PATIENCE{5000};

    /** The line is not owned and has to live as long. */
    CSourceNotice(CNoticeLine* pNotice, QObject* pParent);

    /** Takes the notice back: what there is is looked for anew. */
    void Forget();

    /** Asks the sources among these volumes; waits for nothing. */
    void Look(const QVector<STVolume>& listVolume);

    /** A volume has come that a search will make a source. Said in place of all else until one has. */
    void Came(const QString& strPath);

    /** A volume has gone; an unknown path changes nothing. */
    void Removed(const QString& strPath);

private:
    using Question = CAsideQuestion<STHomeFacts>;

    /** A question that has not been answered. */
    struct STOpen
    {
        std::unique_ptr<Question> pQuestion;
        bool bStale = false; ///< asked for an earlier look
    };

    void Ask(const QString& strPath);
    void OnAnswer(const QString& strPath);
    void Tell();
    bool IsKnown(const QString& strPath) const;
    static QString LockedText(); // in a source of each platform's own
    QString NeededText(const std::optional<STMissingHomes>& stMissing) const;
    QString ElsewhereText(const STMissingHomes& stMissing) const;

    CNoticeLine* m_pNotice;
    QVector<STHomeVolume> m_listVolume; // of the last look
    QString m_strCome; // path of a volume that no search has found yet
    std::map<QString, STOpen> m_mapOpen; // by path
    QTimer m_patience{this};
};
