#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/CFileIdSet.h"
#include "files/CDescriptor.h"

#include <QByteArray>
#include <QVector>

#include <functional>

class CVolumeRoot;

/** How the way along a path ended. */
enum class ENPathEnd
{
    FOUND,
    NOTHING, ///< there is no such entry
    OUTSIDE, ///< it leads out of the volume
    TOO_MANY_LINKS, ///< on the way, most likely in a circle
    FAILED, ///< Error() says why
    STOPPED ///< nobody wants to know any more
};

/** A folder of a volume, and how it is reached from the root. */
struct STVolumeFolder
{
    int nDescriptor = -1;
    QByteArray baPath = {}; ///< of the folder, no link in it below the volume
    QVector<STFileId> listChain = {}; ///< the root, the folders below it, and the folder itself
};

/**
 * Goes along a path within a volume and through the links on it, as the system that
 * the volume belongs to would: absolute links begin at the volume's root, and nothing
 * is above that. The system that runs here follows no link. One thread.
 */
class CVolumePath
{
public:
    static constexpr int MOST_LINKS = 40; ///< gone through on one way

    /** At the root, which outlives it; fnGoesOn is asked before each call that may take long. */
    CVolumePath(const CVolumeRoot& root, std::function<bool()> fnGoesOn);

    /** In a folder of that volume. */
    CVolumePath(const CVolumeRoot& root, const STVolumeFolder& stFolder, std::function<bool()> fnGoesOn);

    /** Goes to where a link of this text in this folder leads; not into another file system. */
    ENPathEnd Follow(const QByteArray& baText);

    /** Goes along a path below the root; a link at its end is not gone through. */
    ENPathEnd GoTo(const QByteArray& baBelow);

    /** The errno value that goes with FAILED and NOTHING. */
    int Error() const { return m_nError; }

    /** The folder in which the way has ended. */
    const STVolumeFolder& Folder() const { return m_stFolder; }

    /** What was found there: a name, or "." when it is the folder itself. */
    const QByteArray& Name() const { return m_baName; }

    /** Its state. */
    const STFileState& State() const { return m_stState; }

    /** Its path. */
    QByteArray Path() const;

    /**
     * Its identity behind those of the folders that it lies in. Of a way that failed what
     * it would have led into; empty when nobody can say.
     */
    QVector<STFileId> Chain() const;

private:
    ENPathEnd Go();
    ENPathEnd Meet(const QByteArray& baName, bool bLast);
    ENPathEnd PassLink(const QByteArray& baName);
    std::optional<STFileState> Open(const char* pszName);
    ENPathEnd Enter(const QByteArray& baName);
    ENPathEnd Up();
    ENPathEnd Fail(int nError);
    bool BeginText(const QByteArray& baText);
    QByteArray TakeName();
    void ToRoot();

    const CVolumeRoot& m_root;
    const std::function<bool()> m_fnGoesOn;
    CDescriptor m_open; // the folder's, unless it is the one that was given
    STVolumeFolder m_stFolder;
    QByteArray m_baRest; // still to go
    QByteArray m_baName;
    STFileState m_stState;
    int m_nLinks = 0;
    int m_nError = 0;
    bool m_bFollowLast = false;
    bool m_bOneFileSystem = false;
};

/** The text of the link pszName in an open folder; null on failure, the reason in errno. */
QByteArray ReadLinkText(int nFolder, const char* pszName);
