#include "tree/CEntryIcon.h"

#include <QApplication>
#include <QFileIconProvider>
#include <QStyle>

QIcon CEntryIcon::Make(ENEntryKind enKind)
{
    const QFileIconProvider provider;
    switch (enKind) {
    case ENEntryKind::FILE:
        return provider.icon(QFileIconProvider::File);
    case ENEntryKind::FOLDER:
        return provider.icon(QFileIconProvider::Folder);
    case ENEntryKind::VOLUME:
        return provider.icon(QFileIconProvider::Drive);
    case ENEntryKind::FILE_LINK:
        return QApplication::style()->standardIcon(QStyle::SP_FileLinkIcon);
    case ENEntryKind::FOLDER_LINK:
        return QApplication::style()->standardIcon(QStyle::SP_DirLinkIcon);
    }
    return QIcon();
}
