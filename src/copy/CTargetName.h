#pragma once

#include "copy/CCopyPlatform.h"

#include <QByteArray>
#include <QHash>
#include <QtGlobal>

#include <functional>

/** What has become of making an entry. */
struct STMadeEntry
{
    QByteArray baPath = {}; ///< what was made, or what was tried first when nothing was
    bool bRenamed = false; ///< it has another name than its source
    int nError = 0; ///< errno value that kept it from being made; 0 when it is there
};

/**
 * Finds the name that an entry gets at the destination, by making it: its own where
 * it can be had, a number behind it where something is there already, "_" for what the
 * disk does not take in a name, and the front of a name that is too long. Nothing that
 * is there is ever touched. One object for one copy, on the thread that copies.
 */
class CTargetName
{
public:
    /**
     * Makes the entry of that path and returns 0, or the errno value; EEXIST when
     * anything has that name, which stays as it is.
     */
    using FnMake = std::function<int(const QByteArray& baPath)>;

    /** Sets what is known of the disk, so that nothing is tried that it would take wrongly. */
    void SetRules(const STDiskRules& stRules) { m_stRules = stRules; }

    /** Makes an entry in baFolder whose name is baName, or as near to that as can be had. */
    STMadeEntry Make(const QByteArray& baFolder, const QByteArray& baName, const FnMake& fnMake);

    /** The name with a number before its suffix, without the dot: name_1txt. */
    static QByteArray Numbered(const QByteArray& baName, qint64 nNumber);

private:
    QByteArray FirstForm(const QByteArray& baName) const;
    void Remember(const QByteArray& baKey, qint64 nNumber);

    STDiskRules m_stRules;
    QHash<QByteArray, qint64> m_mapNumber; // next free number by path, so that a thousand alike are quick
};
