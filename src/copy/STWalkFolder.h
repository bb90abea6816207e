#pragma once

#include "copy/CDiskVisitor.h"
#include "copy/CFileIdSet.h"
#include "files/CDescriptor.h"
#include "files/CFolderReader.h"

#include <QVector>

#include <cstring>
#include <memory>

/** A folder that was gone into. */
struct STWalkFolder
{
    STDiskEntry stEntry = {}; ///< as it was begun
    STFileId stId = {};
    QVector<STFileId> listChain = {}; ///< of an item or a followed link: itself behind the folders around it
    std::unique_ptr<CFolderReader> pReader = {};
    CDescriptor reopened = CDescriptor();
    QByteArray baWaiting = {}; ///< names of the folders in it, each with its zero
    int nNext = 0; ///< where the next of them begins

    int Descriptor() const { return pReader ? pReader->Descriptor() : reopened.Get(); }

    void Close()
    {
        pReader.reset();
        reopened.Reset();
    }

    /** What the paths of its entries begin with. */
    QByteArray Prefix() const { return stEntry.baPath.endsWith('/') ? stEntry.baPath : stEntry.baPath + '/'; }

    /** The first of the folders that wait in it. */
    QVector<STExpectedFile> Waiting(int nMost) const
    {
        QVector<STExpectedFile> listFolder;
        const QByteArray baPrefix = Prefix();
        for (int nAt = nNext; nAt < baWaiting.size() && listFolder.count() < nMost;) {
            const QByteArray baName = baWaiting.constData() + nAt;
            listFolder.append({baPrefix + baName, -1, true});
            nAt += baName.size() + 1;
        }
        return listFolder;
    }

    void Wait(const char* pszName) { baWaiting.append(pszName, int(std::strlen(pszName)) + 1); }
};
