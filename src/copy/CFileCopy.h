#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/CSourceFile.h"
#include "copy/STCopyOutcome.h"
#include "files/CDescriptor.h"

#include <QFileInfo>
#include <QString>

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>

class CCopyControl;

/**
 * Copies one file: opens it, moves its bytes in chunks and finishes it.
 *
 * It knows no other file and nothing of the place where its end is booked: it
 * asks the control before each chunk and returns what became of the file. One
 * object copies once, on one thread.
 */
class CFileCopy
{
public:
    /**
     * Gets the path of a target that cannot be made, with the reason in errno, EEXIST when
     * anything has that name, and changes it to one that is to be created or truncated.
     * Gives a reason instead where nothing can be made.
     */
    using OtherTarget = std::function<std::optional<STCopyReason>(QString& strTarget)>;

    /**
     * Copies source into strFolder, which exists, in chunks of nChunk bytes; control
     * outlives this. bListedAsLink says whether the source was a symbolic link when it
     * was listed, nothing when nobody knows.
     */
    CFileCopy(const QFileInfo& source, QString strFolder, qint64 nChunk, CCopyControl& control,
              std::optional<bool> bListedAsLink = std::nullopt);

    /**
     * A place at which a read breaks off is not tried once more by itself, as that may
     * take long: for files that are finished later. Before Copy.
     */
    void TryBadPlacesOnce() { m_source.TryBadPlacesOnce(); }

    /**
     * The target has to be new: nothing of its name is ever opened, but what fnOther says
     * then. Before Copy, which otherwise truncates what is there.
     */
    void WantNewTarget(OtherTarget fnOther) { m_fnOther = std::move(fnOther); }

    /** The target is open already, empty and to be written: nDescriptor, which is taken over. Before Copy. */
    void TakeTarget(int nDescriptor) { m_made.Reset(nDescriptor); }

    /** Creates strTarget, copies into it and closes it; call it once. */
    STCopyOutcome Copy(const QString& strTarget);

private:
    struct STCloseFile
    {
        void operator()(FILE* pFile) const { fclose(pFile); }
    };

    void CopyOnce();
    void BeginAnew();
    bool LookAtSource();
    bool OpenTarget();
    FILE* TargetFile();
    FILE* CreateNewTarget();
    static FILE* AsFile(int nDescriptor);
    FILE* CreateTarget();
    bool OpenSource();
    bool IsSmall() const;
    bool LookAtOpened();
    bool IsSameFile() const;
    void MoveBytes();
    std::optional<qint64> MoveChunk(qint64 nLen);
    qint64 ReadSmall(int nLen);
    qint64 ReadPiece(int nLen, qint64 nPos);
    bool Write(qint64 nLen);
    size_t WriteSome(const char* pBuf, size_t nLen);
    void Finish();
    void KeepMetadata();
    void KeepTimes();
    void CompareSource();
    void LookForStandIn();
    void Fail(ENCopyProblem enProblem, const QString& strText, int nError = 0);
    void Fail(const STCopyReason& stReason);

    CCopyControl& m_control;
    const QFileInfo m_listed; // the source as it was listed
    const QString m_strName; // as told to the control
    const QString m_strFolder;
    const qint64 m_nChunk;
    const std::optional<bool> m_bListedAsLink;
    QString m_strTarget;
    OtherTarget m_fnOther; // while the target has to be new
    CDescriptor m_made; // a target that was made already
    qint64 m_nOffset = 0; // bytes dealt with
    qint64 m_nTold = 0; // bytes that the control knows to be dealt with
    bool m_bLink = false; // the source is a symbolic link
    std::optional<STFileState> m_stFound; // the source before it was opened
    bool m_bSmall = false; // not read yet, and to be looked at after its only read
    bool m_bSettled = false; // it was read whole and was the same before and afterwards
    CSourceFile m_source;
    std::unique_ptr<FILE, STCloseFile> m_pTarget;
    std::unique_ptr<char[]> m_pBuffer;
    STFileState m_stBegin; // of the source when it was opened
    STCopyOutcome m_stOutcome;
};
