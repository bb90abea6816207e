#include "copy/CByteRanges.h"

#include <QStringList>

#include <iterator>

void CByteRanges::Add(const STByteRange& stRange)
{
    if (stRange.Bytes() <= 0) {
        return;
    }
    qint64 nFrom = stRange.nFrom;
    qint64 nEnd = stRange.nEnd;
    auto itPart = m_mapEnd.upper_bound(nFrom);
    if (itPart != m_mapEnd.begin() && std::prev(itPart)->second >= nFrom) {
        --itPart;
        nFrom = itPart->first;
    }
    while (itPart != m_mapEnd.end() && itPart->first <= nEnd) {
        nEnd = qMax(nEnd, itPart->second);
        itPart = m_mapEnd.erase(itPart);
    }
    m_mapEnd.emplace_hint(itPart, nFrom, nEnd);
}

void CByteRanges::Add(const CByteRanges& other)
{
    for (const auto& [nFrom, nEnd] : other.m_mapEnd) {
        Add({nFrom, nEnd});
    }
}

QString CByteRanges::Text(int nMost) const
{
    QStringList listPart;
    for (const auto& [nFrom, nEnd] : m_mapEnd) {
        if (listPart.count() == nMost) {
            listPart.append(QStringLiteral("…"));
            break;
        }
        listPart.append(QString::number(nFrom) + '-' + QString::number(nEnd - 1));
    }
    return listPart.join(QLatin1String(", "));
}
