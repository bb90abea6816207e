#pragma once

#include <QString>
#include <QtGlobal>

#include <map>

/** Bytes of a file from nFrom to before nEnd. */
struct STByteRange
{
    qint64 nFrom = 0; ///< of the first one
    qint64 nEnd = 0; ///< behind the last one

    /** Their number. */
    qint64 Bytes() const { return nEnd - nFrom; }
};

/** Parts of a file that do not overlap, in order; those that touch are one. */
class CByteRanges
{
public:
    /** Adds bytes; some of them may be there already. Adding none changes nothing. */
    void Add(const STByteRange& stRange);

    /** Adds all of the other's. */
    void Add(const CByteRanges& other);

    /** Whether there are none. */
    bool IsEmpty() const { return m_mapEnd.empty(); }

    /** The first nMost of them, first and last byte of each: "4096-8191, 12288-12288, …". */
    QString Text(int nMost) const;

private:
    std::map<qint64, qint64> m_mapEnd; // of each part by its beginning
};
