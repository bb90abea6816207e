#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/STCopyOutcome.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

class CCopyControl;

/**
 * Gives copies what belongs to their sources beside the bytes: permissions, the
 * user's extended attributes, the times of folders and links. Counts what the disk does
 * not hold, also where it says that it does. Used on the thread that copies.
 */
class CBelongings
{
public:
    /** control outlives this. */
    explicit CBelongings(CCopyControl& control);

    /** Of a file that is closed; its times stay what they are. */
    void GiveToFile(const QString& strSource, const STFileState& stSource, const QString& strTarget);

    /** Of a folder in which nothing more is made. */
    void GiveToFolder(const QString& strSource, const STFileState& stSource, const QString& strTarget);

    /** Of a link itself; what a disk cannot hold of it is not counted. */
    void GiveToLink(const STFileState& stSource, const QString& strTarget);

    /** What was lost: one for each kind, its detail is the number of items. */
    QVector<STCopyReason> Lost() const;

private:
    std::optional<QVector<QByteArray>> AttributesOf(const QString& strSource);
    void GiveAttributes(const QString& strSource, const std::optional<QVector<QByteArray>>& listName,
                        const QString& strTarget);
    bool GiveOne(const QByteArray& baSource, const QByteArray& baTarget, const QByteArray& baName);
    bool GivePermissions(const STFileState& stSource, const STFileState& stTarget, const QString& strTarget);
    void BookPermissions(const STFileState& stSource, const STFileState& stTarget, bool bTried);
    std::optional<STFileState> TargetState(const QString& strTarget);

    CCopyControl& m_control;
    bool m_bAttributes = true; // the disk has not said that it holds none
    bool m_bPermissions = true;
    QString m_strFolder; // in which a file of the copy was looked at
    unsigned m_nNewPermissions = 0; // that a new file gets there
    qint64 m_nAttributesLost = 0; // items
    qint64 m_nPermissionsLost = 0;
    qint64 m_nTimesLost = 0; // folders
};
