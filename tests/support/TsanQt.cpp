// Tells the thread sanitizer of the locks that Qt's library takes: it was built
// without the sanitizer, which therefore sees none of its synchronisation and
// reports everything that a QMutex guards as a race.
#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

template <typename Function>
static Function Original(const char* pSymbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, pSymbol));
}

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto s_pfn = Original<void (*)(QMutex*)>("_ZN6QMutex4lockEv");
    s_pfn(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int nTimeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto s_pfn = Original<bool (*)(QMutex*, int)>("_ZN6QMutex7tryLockEi");
    const bool bLocked = s_pfn(this, nTimeout);
    if (bLocked) {
        __tsan_acquire(this);
    }
    return bLocked;
}

void QMutex::unlock() noexcept
{
    static const auto s_pfn = Original<void (*)(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    s_pfn(this);
}
