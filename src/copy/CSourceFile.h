#pragma once

#include "files/CDescriptor.h"

#include <QtGlobal>

#include <memory>
#include <optional>

class QFile;

/** Reads a file that is open, piece by piece. What keeps a read from its bytes is in errno afterwards. */
class CSourceFile
{
public:
    static constexpr qint64 SEEK_FAILED = -1; ///< from a read: the position cannot be reached
    static constexpr qint64 READ_FAILED = -2; ///< from a read: reading fails there

    CSourceFile();
    ~CSourceFile();
    CSourceFile(const CSourceFile&) = delete;
    CSourceFile& operator=(const CSourceFile&) = delete;

    /** A place at which a read breaks off is not tried once more by itself, as that may take long. */
    void TryBadPlacesOnce() { m_bTryOnce = true; }

    /** Takes over the descriptor of a file that was just opened; -1 stands for none. */
    void Open(int nDescriptor);

    /** The descriptor; -1 when there is none. */
    int Descriptor() const { return m_descriptor.Get(); }

    /** Reads up to nLen bytes from nPos into pBuf; returns their number, SEEK_FAILED or READ_FAILED. */
    qint64 Read(char* pBuf, int nLen, qint64 nPos);

    /** The same from the beginning, where a file stands when it was just opened: without going there. */
    qint64 ReadFirst(char* pBuf, int nLen);

    /** The same from a file of Qt, which has its reason, too. */
    static qint64 ReadAt(QFile& file, char* pBuf, int nLen, qint64 nPos);

private:
    /** A read that has failed. */
    struct STFailure
    {
        qint64 nResult = READ_FAILED;
        int nError = 0;
    };

    qint64 ReadOnce(char* pBuf, int nLen, qint64 nPos);
    qint64 ReadHere(char* pBuf, int nLen, qint64 nPos);
    QFile& File();

    CDescriptor m_descriptor;
    std::unique_ptr<QFile> m_pFile; // the same for Qt, once it was asked for
    bool m_bTryOnce = false;
    std::optional<STFailure> m_stFailure; // of the read before, with which the next one begins
};
