#include "ask/CMissingList.h"

#include <QHash>
#include <QList>

static ENMissing WhyOf(const QByteArray& baWord)
{
    static const QHash<QByteArray, ENMissing> s_words{
        {"locked", ENMissing::LOCKED}, {"damaged", ENMissing::DAMAGED}, {"unknown", ENMissing::UNKNOWN},
        {"silent", ENMissing::SILENT}, {"apart", ENMissing::APART},     {"lost", ENMissing::LOST},
    };
    return s_words.value(baWord, ENMissing::UNKNOWN);
}

static qint64 SizeOf(const QByteArray& baBytes)
{
    bool bNumber = false;
    const qint64 nSize = baBytes.toLongLong(&bNumber);
    return bNumber && nSize >= 0 ? nSize : -1;
}

QVector<STMissingVolume> CMissingList::Parse(const QByteArray& baLines)
{
    QVector<STMissingVolume> listMissing;
    for (const QByteArray& baLine : baLines.split('\n')) {
        if (baLine.trimmed().isEmpty()) {
            continue;
        }
        const QList<QByteArray> listPart = baLine.split('\t');
        listMissing.append({WhyOf(listPart.value(0)), QString::fromUtf8(listPart.value(1)),
                            QString::fromUtf8(listPart.value(3)), SizeOf(listPart.value(2))});
    }
    return listMissing;
}
