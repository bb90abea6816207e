#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/**
 * Tells whether the bytes of a translation file are in order. Qt trusts the offsets
 * and lengths in such a file and reads wherever they lead. No state; any thread.
 */
class CTranslationFile
{
public:
    /** The bytes of a regular file; nothing when it cannot be read or is far too large. */
    static std::optional<QByteArray> Read(const QString& strPath);

    /** What is wrong with the bytes, in words for the log; nothing when they can be loaded. */
    static std::optional<QString> Damage(const QByteArray& baFile);
};
