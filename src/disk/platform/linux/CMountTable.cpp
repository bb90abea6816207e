#include "disk/platform/linux/CMountTable.h"

#include <QFile>
#include <QSet>

#include <poll.h>

// How often the table is read again because it changed meanwhile.
static const int READ_ATTEMPTS = 10;

// The fields of a line, counted from the left; optional fields follow up to a
// lone "-", behind which the type and the source stand.
enum ENField
{
    FIELD_ID = 0,
    FIELD_PARENT = 1,
    FIELD_NUMBER = 2,
    FIELD_POINT = 4,
    FIELD_FIRST_OPTIONAL = 6,
    FIELD_SOURCE_BEHIND_DASH = 2
};

const char* CMountTable::FileName() { return "/proc/self/mountinfo"; }

static bool ChangedSinceOpened(const QFile& file)
{
    pollfd request{file.handle(), POLLPRI, 0};
    return ::poll(&request, 1, 0) > 0 && (request.revents & (POLLPRI | POLLERR)) != 0;
}

bool CMountTable::Read(QByteArray* pText)
{
    // The kernel hands the table out page by page. A change in between can hide
    // the line of a volume that is still there, which would look like its removal.
    for (int nAttempt = 0; nAttempt < READ_ATTEMPTS; ++nAttempt) {
        QFile file(QFile::decodeName(FileName()));
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            return false;
        }
        *pText = file.readAll();
        if (!ChangedSinceOpened(file)) {
            break;
        }
    }
    return !pText->isEmpty();
}

static bool IsOctal(char ch) { return ch >= '0' && ch <= '7'; }

/** Blanks, line ends, "\" and "#" stand in the table as "\" and three octal digits. */
static QByteArray Unescaped(const QByteArray& baField)
{
    QByteArray baPlain;
    baPlain.reserve(baField.size());
    for (int i = 0; i < baField.size(); ++i) {
        const bool bEscape = baField[i] == '\\' && i + 3 < baField.size() && IsOctal(baField[i + 1])
            && IsOctal(baField[i + 2]) && IsOctal(baField[i + 3]);
        if (!bEscape) {
            baPlain.append(baField[i]);
            continue;
        }
        baPlain.append(
            char((baField[i + 1] - '0') * 64 + (baField[i + 2] - '0') * 8 + (baField[i + 3] - '0')));
        i += 3;
    }
    return baPlain;
}

static bool ParseLine(const QByteArray& baLine, STMount* pMount)
{
    const QList<QByteArray> listField = baLine.split(' ');
    const int nDash = listField.indexOf("-", FIELD_FIRST_OPTIONAL);
    if (nDash < 0 || nDash + FIELD_SOURCE_BEHIND_DASH >= listField.size()) {
        return false;
    }
    bool bId = false;
    bool bParent = false;
    pMount->nId = listField[FIELD_ID].toLongLong(&bId);
    pMount->nParentId = listField[FIELD_PARENT].toLongLong(&bParent);
    pMount->baNumber = listField[FIELD_NUMBER];
    pMount->baPoint = Unescaped(listField[FIELD_POINT]);
    pMount->baSource = Unescaped(listField[nDash + FIELD_SOURCE_BEHIND_DASH]);
    return bId && bParent;
}

QVector<STMount> CMountTable::Parse(const QByteArray& baText)
{
    QVector<STMount> listMount;
    const QList<QByteArray> listLine = baText.split('\n');
    for (const QByteArray& baLine : listLine) {
        STMount mount;
        if (ParseLine(baLine, &mount)) {
            listMount.append(mount);
        }
    }
    return listMount;
}

static bool IsDirectlyIn(const QByteArray& baPoint, const QByteArray& baFolder)
{
    const int nNameAt = baFolder.size() + 1;
    return baPoint.size() > nNameAt && baPoint.startsWith(baFolder + '/')
        && baPoint.indexOf('/', nNameAt) < 0;
}

static QVector<STMount> VolumesOf(const QVector<STMount>& listMount, const QByteArray& baFolder)
{
    QVector<STMount> listInFolder;
    QSet<QPair<qint64, QByteArray>> setCovered;
    for (const STMount& mount : listMount) {
        if (IsDirectlyIn(mount.baPoint, baFolder)) {
            listInFolder.append(mount);
            setCovered.insert({mount.nParentId, mount.baPoint});
        }
    }
    QVector<STMount> listVolume;
    for (const STMount& mount : qAsConst(listInFolder)) {
        if (!setCovered.contains({mount.nId, mount.baPoint})) {
            listVolume.append(mount);
        }
    }
    return listVolume;
}

static bool IsSameVolume(const STMount& first, const STMount& second)
{
    return first.nId == second.nId && first.baPoint == second.baPoint && first.baNumber == second.baNumber
        && first.baSource == second.baSource;
}

static bool Holds(const QVector<STMount>& listVolume, const STMount& wanted)
{
    return std::any_of(listVolume.cbegin(), listVolume.cend(),
                       [&wanted](const STMount& volume) { return IsSameVolume(volume, wanted); });
}

QVector<STDiskEvent> CMountTable::Compare(const QVector<STMount>& listBefore,
                                          const QVector<STMount>& listAfter, const QByteArray& baFolder)
{
    const QVector<STMount> listOld = VolumesOf(listBefore, baFolder);
    const QVector<STMount> listNew = VolumesOf(listAfter, baFolder);
    QVector<STDiskEvent> listEvent;
    for (const STMount& volume : listOld) {
        if (!Holds(listNew, volume)) {
            listEvent.append({DISK_EVENT_DISAPPEARED, volume.baPoint});
        }
    }
    for (const STMount& volume : listNew) {
        if (!Holds(listOld, volume)) {
            listEvent.append({DISK_EVENT_APPEARED, volume.baPoint});
        }
    }
    return listEvent;
}
