#include "tree/CEntryIcon.h"

#include <QApplication>
#include <QFileIconProvider>
#include <QStyle>

QIcon CEntryIcon::Make(ENEntryKind enKind)
{
    const QFileIconProvider provider;
    switch (enKind) {
    case ENEntryKind::File:
        return provider.icon(QFileIconProvider::File);
    case ENEntryKind::Folder:
        return provider.icon(QFileIconProvider::Folder);
    case ENEntryKind::Volume:
        return provider.icon(QFileIconProvider::Drive);
    case ENEntryKind::FileLink:
        return QApplication::style()->standardIcon(QStyle::SP_FileLinkIcon);
    case ENEntryKind::FolderLink:
        return QApplication::style()->standardIcon(QStyle::SP_DirLinkIcon);
    }
    return QIcon();
}
