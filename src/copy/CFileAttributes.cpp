#include "copy/CFileAttributes.h"

#include <QList>

#include <cerrno>
#include <limits>

// They may grow between the question for their size and the one for them.
static const int MOST_TRIES = 5;

std::optional<QByteArray>
CFileAttributes::Filled(const std::function<qint64(char* pBuf, size_t nSize)>& fnCall)
{
    for (int nTry = 0; nTry < MOST_TRIES; ++nTry) {
        const qint64 nSize = fnCall(nullptr, 0);
        if (nSize <= 0) {
            return nSize == 0 ? std::make_optional(QByteArray("")) : std::nullopt;
        }
        if (nSize > std::numeric_limits<int>::max() / 2) {
            errno = E2BIG;
            return std::nullopt;
        }
        QByteArray baBuffer(int(nSize), Qt::Uninitialized);
        const qint64 nFilled = fnCall(baBuffer.data(), size_t(baBuffer.size()));
        if (nFilled >= 0) {
            baBuffer.truncate(int(nFilled));
            return baBuffer;
        }
        if (errno != ERANGE) {
            break;
        }
    }
    return std::nullopt;
}

std::optional<QVector<QByteArray>> CFileAttributes::Names(const QByteArray& baPath)
{
    const std::optional<QByteArray> baAll
        = Filled([&baPath](char* pBuf, size_t nSize) { return List(baPath.constData(), pBuf, nSize); });
    if (!baAll && errno != ENOTSUP && errno != ENOSYS) {
        return std::nullopt;
    }
    QVector<QByteArray> listName;
    for (const QByteArray& baName : baAll.value_or(QByteArray()).split('\0')) {
        if (!baName.isEmpty() && IsUsers(baName)) {
            listName.append(baName);
        }
    }
    return listName;
}

std::optional<QByteArray> CFileAttributes::Value(const QByteArray& baPath, const QByteArray& baName)
{
    return Filled(
        [&](char* pBuf, size_t nSize) { return Get(baPath.constData(), baName.constData(), pBuf, nSize); });
}

bool CFileAttributes::Set(const QByteArray& baPath, const QByteArray& baName, const QByteArray& baValue)
{
    return SetOne(baPath.constData(), baName.constData(), baValue.constData(), size_t(baValue.size()));
}
