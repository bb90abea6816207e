#include "copy/CFileMetadata.h"

std::optional<STCopyReason> CFileMetadata::GiveToFile(CCopyControl& /*control*/, const QString& /*strName*/,
                                                      int /*nSource*/, int /*nTarget*/)
{
    return std::nullopt;
}

void CFileMetadata::GiveLast(CCopyControl& /*control*/, int /*nSource*/, int /*nTarget*/) { }

void CFileMetadata::GiveFolderLast(CCopyControl& /*control*/, const QString& /*strSource*/,
                                   const QString& /*strTarget*/)
{
}

void CFileMetadata::GiveToFolder(CCopyControl& /*control*/, const QString& /*strSource*/,
                                 const QString& /*strTarget*/)
{
}

void CFileMetadata::FinishFolder(CCopyWork& /*work*/, const QString& /*strSource*/,
                                 const QString& /*strTarget*/)
{
}
