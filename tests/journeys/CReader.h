#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QList>
#include <QString>
#include <QStringList>

/** One thing on the screen, as the accessibility bus names it. */
struct STHeard
{
    QString strService;
    QString strPath;

    /** Whether there is such a thing. */
    bool IsValid() const { return !strPath.isEmpty(); }
};

/**
 * Reads another program's window as a screen reader does: over the accessibility
 * bus, which tests/support/with-bus provides, and knowing nothing of Qt.
 *
 * Roles are named as in the bus's own words ("push button", "tree item").
 */
class CReader
{
public:
    /** Looks for the bus; see IsConnected. */
    CReader();

    /** Whether there is an accessibility bus. */
    bool IsConnected() const;

    /** The top of the program of that name; invalid while it is not on the bus. */
    STHeard Program(const QString& strName) const;

    /** Everything below, itself included, that is on the screen, from top to bottom. */
    QList<STHeard> Showing(const STHeard& stTop) const;

    /** The first of these with that role and name; invalid when there is none. */
    STHeard Find(const STHeard& stTop, const QString& strRole, const QString& strName) const;

    /** The one that has the keyboard's focus and nothing below it that has it, too. */
    STHeard Focus(const STHeard& stTop) const;

    QString Name(const STHeard& stHeard) const;
    QString Description(const STHeard& stHeard) const;
    QString Role(const STHeard& stHeard) const;
    QList<STHeard> Children(const STHeard& stHeard) const;

    /** The names of its states, in the bus's own order. */
    QStringList States(const STHeard& stHeard) const;
    bool Is(const STHeard& stHeard, const QString& strState) const;

    /** The names of what can be done with it. */
    QStringList Actions(const STHeard& stHeard) const;
    bool Do(const STHeard& stHeard, const QString& strAction) const;

    /** The value of a bar; -1 of what has none. */
    double Value(const STHeard& stHeard) const;

    /** Role and name of everything that is on the screen, a line each, indented by depth. */
    QString Outline(const STHeard& stTop) const;

private:
    void Collect(const STHeard& stTop, int nDepth, QList<STHeard>* pListHeard, QString* pOutline) const;

    QDBusConnection m_bus;
};
