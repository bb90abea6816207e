#pragma once

#include "disk/platform/STDiskEvent.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QVector>

#include <mutex>

/**
 * Which volumes came and went without a notice, told from a look at what is mounted
 * every now and then.
 *
 * Notices, searches and looks come across the same volumes, and whatever is told
 * makes an entry of its own: whoever is first tells, the others are silent. Names
 * are the same where they mean the same letters. Any thread.
 */
class CMountLook
{
public:
    /** The one for systems whose source of events looks. */
    static CMountLook& GetInstance();

    /**
     * Looks begin, for the volumes directly in baFolder, an absolute path without a closing
     * slash: what is mounted now (mount points, any order) is known and never told.
     */
    void Begin(const QByteArray& baFolder, const QByteArrayList& listPoint);

    /** Whether this system's source of events looks at all. */
    bool HasBegun();

    /**
     * What nobody has told yet: first the volumes that went, then those that came, with
     * the bytes of their mount points. It counts as told from now on.
     */
    QVector<STDiskEvent> Look(const QByteArrayList& listPoint);

    /**
     * A notice has come. False when a look or a search was first, and it is not to be told;
     * always true before Begin.
     */
    bool Hear(ENDiskEventType enType, const QByteArray& baPath);

    /** A search begins to list the volumes: its number, for what it finds. */
    quint64 SearchBegins();

    /**
     * The search of that number has found the volumes at these paths, and shows them: they
     * are known like those that were told. listPoint is what is mounted at its end. One that
     * went after the search had begun is not known by it, nor is what is no volume.
     */
    void Listed(quint64 nSearch, const QByteArrayList& listPath, const QByteArrayList& listPoint);

private:
    QString KeyOf(const QByteArray& baPath) const;
    QSet<QString> KeysOf(const QByteArrayList& listPoint) const;

    std::mutex m_mutex; // held for all that follows
    QString m_strPrefix; // of the volumes' paths; empty before Begin
    QMap<QString, QByteArray> m_mapKnown; // mount points of the volumes that are known, by key
    QHash<QString, ENDiskEventType> m_hashAhead; // by key: told last before a notice of it
    quint64 m_nGone = 0; // volumes that have gone
    QHash<QString, quint64> m_hashGone; // by key: which of them it was last
};
