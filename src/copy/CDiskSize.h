#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/CDiskVisitor.h"
#include "copy/CTickedItems.h"

#include <QString>
#include <QVector>

#include <functional>

/** How much everything in some items is. */
struct STDiskSize
{
    qint64 nBytes = 0; ///< of the files that the destination can hold
    qint64 nRoom = 0; ///< bytes that they take there, with folders and links
    qint64 nTooLarge = 0; ///< files that it cannot hold
};

/** Adds up what the walk over the disk comes to. */
class CDiskSize : private CDiskVisitor
{
public:
    /** Who has to know how far the walk is; called on the thread that walks. */
    struct STWatch
    {
        std::function<bool()> fnGoesOn; ///< asked before each step; false ends the walk
        std::function<void(const QString& strVolume)> fnVolume; ///< an item of that volume is next
    };

    /** The size of everything in the items, as far as the walk came; sums stay within 64 bits. */
    static STDiskSize Of(const QVector<STTickedItem>& listItem, const STDiskRules& stRules,
                         const STWatch& stWatch);

private:
    CDiskSize(const STDiskRules& stRules, const STWatch& stWatch);

    bool GoesOn() override;
    void BeginItem(const STTickedItem& stItem) override;
    bool BeginFolder(const STDiskEntry& stFolder) override;
    void EndFolder(const STDiskEntry& stFolder) override;
    void File(const STDiskEntry& stFile) override;
    void Link(const STDiskEntry& stLink, const QByteArray& baTarget) override;
    void LeftOut(const QString& strPath, const STCopyReason& stReason) override;

    const STDiskRules m_stRules;
    const STWatch& m_stWatch;
    STDiskSize m_stSize;
};
