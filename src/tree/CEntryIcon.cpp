#include "tree/CEntryIcon.h"

#include <QApplication>
#include <QFileIconProvider>
#include <QStyle>
#include <QThread>

#include <array>
#include <atomic>

using IconSet = std::array<QIcon, 5>;

// Published once by the GUI thread and only read by the workers.
static std::atomic<const IconSet*> s_pIcons{nullptr};

static void ReleaseIcons() { delete s_pIcons.exchange(nullptr); }

/**
 * Qt's own style hands out only the small one of some of its pictures, though it
 * has larger ones; without them a screen of twice the resolution shows a blur.
 */
static QIcon WithLargerSize(QIcon icon, const QString& strPicture)
{
    const QSize size(32, 32);
    if (icon.actualSize(size) != size) {
        icon.addFile(QStringLiteral(":/qt-project.org/styles/commonstyle/images/%1-32.png").arg(strPicture));
    }
    return icon;
}

static const IconSet* MakeIcons()
{
    const QFileIconProvider provider;
    const QStyle* pStyle = QApplication::style();
    auto* pIcons = new IconSet;
    (*pIcons)[size_t(ENEntryKind::File)] = provider.icon(QFileIconProvider::File);
    (*pIcons)[size_t(ENEntryKind::Folder)] = provider.icon(QFileIconProvider::Folder);
    (*pIcons)[size_t(ENEntryKind::Volume)]
        = WithLargerSize(provider.icon(QFileIconProvider::Drive), QStringLiteral("harddrive"));
    (*pIcons)[size_t(ENEntryKind::FileLink)]
        = WithLargerSize(pStyle->standardIcon(QStyle::SP_FileLinkIcon), QStringLiteral("filelink"));
    (*pIcons)[size_t(ENEntryKind::FolderLink)]
        = WithLargerSize(pStyle->standardIcon(QStyle::SP_DirLinkIcon), QStringLiteral("dirlink"));
    return pIcons;
}

static const IconSet* Icons()
{
    const IconSet* pIcons = s_pIcons.load(std::memory_order_acquire);
    if (pIcons) {
        return pIcons;
    }
    const auto* pApp = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!pApp || QThread::currentThread() != pApp->thread()) {
        return nullptr;
    }
    pIcons = MakeIcons();
    s_pIcons.store(pIcons, std::memory_order_release);
    // Pixmaps must not outlive the application that they were made in.
    qAddPostRoutine(ReleaseIcons);
    return pIcons;
}

QIcon CEntryIcon::Of(ENEntryKind enKind)
{
    const IconSet* pIcons = Icons();
    return pIcons ? (*pIcons)[size_t(enKind)] : QIcon();
}
