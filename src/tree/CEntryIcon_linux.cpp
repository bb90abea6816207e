#include "tree/CEntryIcon.h"

// A function that the initialiser can be called from: it must not stand in a namespace or a class.
static void RegisterPictures() { Q_INIT_RESOURCE(tree_icons); }

static QString PictureName(ENEntryKind enKind)
{
    switch (enKind) {
    case ENEntryKind::FILE:
        return QStringLiteral("file");
    case ENEntryKind::FOLDER:
        return QStringLiteral("folder");
    case ENEntryKind::VOLUME:
        return QStringLiteral("drive");
    case ENEntryKind::FILE_LINK:
        return QStringLiteral("file_link");
    case ENEntryKind::FOLDER_LINK:
        return QStringLiteral("folder_link");
    }
    return QString();
}

// A rescue system has no icon theme, and the pictures that Qt brings along look
// like those of another program beside the window's own.
QIcon CEntryIcon::Make(ENEntryKind enKind)
{
    RegisterPictures();
    QIcon icon;
    for (const int nSide : {16, 24, 32}) {
        icon.addFile(
            QStringLiteral(":/tree/icons/%1_%2.png").arg(PictureName(enKind), QString::number(nSide)));
    }
    return icon;
}
