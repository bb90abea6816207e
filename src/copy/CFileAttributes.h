#pragma once

#include <QByteArray>
#include <QVector>

#include <functional>
#include <optional>

/**
 * The extended attributes of a file, a folder or a link itself that belong to the
 * user, by its path. On macOS there are none of these: CFileMetadata gives them, by open
 * descriptors. Any thread; the reason of a failure is in errno.
 */
class CFileAttributes
{
public:
    /** The names; none where the disk has no such thing, nothing when they cannot be read. */
    static std::optional<QVector<QByteArray>> Names(const QByteArray& baPath);

    /** The value; nothing when it cannot be read. */
    static std::optional<QByteArray> Value(const QByteArray& baPath, const QByteArray& baName);

    /** The name that a copy of it gets, as a disk may show its names in a way of its own. */
    static QByteArray NameOfCopy(const QByteArray& baName);

    /** Sets or replaces one. ENOTSUP is the reason where the disk holds none. */
    static bool Set(const QByteArray& baPath, const QByteArray& baName, const QByteArray& baValue);

    /** What a call gives that fills a buffer and, without one, tells how large it has to be. */
    static std::optional<QByteArray> Filled(const std::function<qint64(char* pBuf, size_t nSize)>& fnCall);

private:
    // The calls of the system, which have other parameters on each.
    static qint64 List(const char* pszPath, char* pNames, size_t nSize);
    static qint64 Get(const char* pszPath, const char* pszName, void* pValue, size_t nSize);
    static bool SetOne(const char* pszPath, const char* pszName, const void* pValue, size_t nSize);
    static bool IsUsers(const QByteArray& baName);
};
