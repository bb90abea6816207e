#pragma once

#include "flow/STExpectedFile.h"

#include <QByteArray>
#include <QVector>

#include <deque>

class CFolderReader;

/**
 * Reads the names of a folder as CFolderReader does, some of them ahead where somebody wants to
 * know what comes: they are handed out in the same order, and an error when its turn has come.
 * Does not own the reader. One thread.
 */
class CNamesAhead
{
public:
    static constexpr int MOST = 256; ///< names that are read ahead

    explicit CNamesAhead(CFolderReader& reader);

    /** Goes to the next name; false at the end, and when the folder cannot be read (any further). */
    bool Next();

    /** The name that Next has gone to, until the next Next. */
    const char* Name() const;

    /** Whether it is said in the list itself that this is a folder. */
    bool IsKnownFolder() const;

    /** Whether few names are left of those read ahead, and there may be more. */
    bool IsLow() const { return !m_bEnd && m_listAhead.size() <= MOST / 2; }

    /**
     * Reads ahead up to MOST names, before Next; what may be a file of those that are new, by its
     * path in the folder of baPrefix.
     */
    QVector<STExpectedFile> Fill(const QByteArray& baPrefix);

    /** Whether the names ahead are all that there are. */
    bool IsEnd() const { return m_bEnd; }

    /** The folders among the names ahead, by their paths. */
    QVector<STExpectedFile> Folders(const QByteArray& baPrefix) const;

private:
    /** A name that was read. */
    struct STName
    {
        QByteArray baName = {};
        bool bFolder = false; ///< it is said in the list itself that it is a folder
    };

    CFolderReader& m_reader;
    std::deque<STName> m_listAhead;
    STName m_stHere; // the name, when it was read ahead
    bool m_bAhead = false; // it was
    bool m_bEnd = false; // the reader has said so
};
