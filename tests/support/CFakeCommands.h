#pragma once

#include <QStringList>
#include <QTemporaryDir>

/**
 * Stands scripts in front of the commands that the program runs by name, while
 * the object lives, by a folder at the front of PATH.
 */
class CFakeCommands
{
public:
    CFakeCommands();
    ~CFakeCommands();
    CFakeCommands(const CFakeCommands&) = delete;
    CFakeCommands& operator=(const CFakeCommands&) = delete;

    /**
     * Makes the command strName a shell script with this body. Each call is
     * recorded first; "$CALLS" is a folder that the body may write to.
     */
    void Add(const QString& strName, const QString& strBody = QString());

    /**
     * Makes "diskutil" tell the bus of a device node: USB for "/dev/sd…", PCI-Express
     * for all others. strBefore is shell code that it goes through first.
     */
    void AddDiskutil(const QString& strBefore = QString());

    /** Arguments of each call so far, joined by one blank, in order. */
    QStringList Calls(const QString& strName) const;

    /** Content of a file that a body wrote to "$CALLS"; empty when there is none. */
    QByteArray Written(const QString& strFile) const;

private:
    QTemporaryDir m_dir;
    QByteArray m_baPathBefore;
};
