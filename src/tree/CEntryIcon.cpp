#include "tree/CEntryIcon.h"

#include <QApplication>
#include <QThread>

#include <array>
#include <atomic>

using IconSet = std::array<QIcon, 5>;

// Published once by the GUI thread and only read by the workers.
static std::atomic<const IconSet*> s_pIcons{nullptr};

static void ReleaseIcons() { delete s_pIcons.exchange(nullptr); }

static const IconSet* MakeIcons()
{
    auto* pIcons = new IconSet;
    for (size_t n = 0; n < pIcons->size(); ++n) {
        (*pIcons)[n] = CEntryIcon::Make(static_cast<ENEntryKind>(n));
    }
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
