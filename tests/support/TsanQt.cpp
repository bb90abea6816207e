// Tells the thread sanitizer of the hand-overs between threads that Qt makes:
// Debian's Qt is built without the sanitizer, which therefore sees none of its
// synchronisation and reports everything that is handed over as a race.
//
// Each function here stands in front of Qt's own of that name. Locks are told
// apart; all other hand-overs share one mark: what was done before a signal was
// emitted, a call was queued or a task ended comes before what is done in a slot
// that is delivered, or after a wait has returned, later.
#include <QCoreApplication>
#include <QEvent>
#include <QFutureInterface>
#include <QMutex>
#include <QObject>
#include <QRunnable>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>
#include <QVariant>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

extern "C" {
void AnnotateIgnoreReadsBegin(const char* pszFile, int nLine);
void AnnotateIgnoreReadsEnd(const char* pszFile, int nLine);
void AnnotateIgnoreWritesBegin(const char* pszFile, int nLine);
void AnnotateIgnoreWritesEnd(const char* pszFile, int nLine);
}

// While one lives, what its thread reads, writes and allocates is not watched:
// Qt makes the event that carries a queued call, and frees it on another thread.
class CQtInside
{
public:
    CQtInside()
    {
        AnnotateIgnoreReadsBegin(__FILE__, __LINE__);
        AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
    }
    ~CQtInside()
    {
        AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
        AnnotateIgnoreReadsEnd(__FILE__, __LINE__);
    }
    CQtInside(const CQtInside&) = delete;
    CQtInside& operator=(const CQtInside&) = delete;
};

static char s_cHandOver;

static void HandOver() { __tsan_release(&s_cHandOver); }

static void TakeOver() { __tsan_acquire(&s_cHandOver); }

template <typename Function> static Function Original(const char* pSymbol)
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

void QMetaObject::activate(QObject* pSender, const QMetaObject* pMeta, int nSignal, void** ppArguments)
{
    static const auto s_pfn = Original<void (*)(QObject*, const QMetaObject*, int, void**)>(
        "_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    HandOver();
    if (QThread::currentThread() == QCoreApplication::instance()->thread()) {
        s_pfn(pSender, pMeta, nSignal, ppArguments);
        return;
    }
    const CQtInside inside;
    s_pfn(pSender, pMeta, nSignal, ppArguments);
}

bool QMetaObject::invokeMethodImpl(QObject* pObject, QtPrivate::QSlotObjectBase* pSlot,
                                   Qt::ConnectionType enType, void* pResult)
{
    static const auto s_pfn = Original<bool (*)(QObject*, QtPrivate::QSlotObjectBase*, Qt::ConnectionType,
                                                void*)>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    HandOver();
    const CQtInside inside;
    return s_pfn(pObject, pSlot, enType, pResult);
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static const auto s_pfn
        = Original<bool (*)(QThread*, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool bEnded = s_pfn(this, deadline);
    TakeOver();
    return bEnded;
}

bool QThread::wait(unsigned long nMs)
{
    static const auto s_pfn = Original<bool (*)(QThread*, unsigned long)>("_ZN7QThread4waitEm");
    const bool bEnded = s_pfn(this, nMs);
    TakeOver();
    return bEnded;
}

bool QThread::isRunning() const
{
    static const auto s_pfn = Original<bool (*)(const QThread*)>("_ZNK7QThread9isRunningEv");
    const bool bRunning = s_pfn(this);
    TakeOver();
    return bRunning;
}

bool QThread::isFinished() const
{
    static const auto s_pfn = Original<bool (*)(const QThread*)>("_ZNK7QThread10isFinishedEv");
    const bool bFinished = s_pfn(this);
    TakeOver();
    return bFinished;
}

void QThread::start(Priority enPriority)
{
    static const auto s_pfn = Original<void (*)(QThread*, Priority)>("_ZN7QThread5startENS_8PriorityE");
    // Runs on the thread itself, right after its run has returned.
    if (!property("handsOver").toBool()) {
        setProperty("handsOver", true);
        connect(this, &QThread::finished, this, &HandOver, Qt::DirectConnection);
    }
    s_pfn(this, enPriority);
}

/** A task of a pool that takes over what was handed over when it was queued. */
class CTakenTask : public QRunnable
{
public:
    explicit CTakenTask(QRunnable* pTask)
        : m_pTask(pTask)
    {
    }
    void run() override
    {
        TakeOver();
        const bool bDelete = m_pTask->autoDelete();
        m_pTask->run();
        if (bDelete) {
            delete m_pTask;
        }
    }

private:
    QRunnable* m_pTask;
};

void QThreadPool::start(QRunnable* pTask, int nPriority)
{
    static const auto s_pfn
        = Original<void (*)(QThreadPool*, QRunnable*, int)>("_ZN11QThreadPool5startEP9QRunnablei");
    auto* pTaken = new CTakenTask(pTask);
    HandOver();
    s_pfn(this, pTaken, nPriority);
}

void QFutureInterfaceBase::reportFinished()
{
    static const auto s_pfn
        = Original<void (*)(QFutureInterfaceBase*)>("_ZN20QFutureInterfaceBase14reportFinishedEv");
    HandOver();
    s_pfn(this);
}

void QFutureInterfaceBase::waitForFinished()
{
    static const auto s_pfn
        = Original<void (*)(QFutureInterfaceBase*)>("_ZN20QFutureInterfaceBase15waitForFinishedEv");
    s_pfn(this);
    TakeOver();
}

void QSemaphore::release(int nCount)
{
    static const auto s_pfn = Original<void (*)(QSemaphore*, int)>("_ZN10QSemaphore7releaseEi");
    HandOver();
    s_pfn(this, nCount);
}

void QSemaphore::acquire(int nCount)
{
    static const auto s_pfn = Original<void (*)(QSemaphore*, int)>("_ZN10QSemaphore7acquireEi");
    s_pfn(this, nCount);
    TakeOver();
}

/** Sees each event of the main thread, queued calls among them, right before it is delivered. */
class CDeliveryWatch : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject*, QEvent*) override
    {
        TakeOver();
        return false;
    }
};

static void WatchDeliveries()
{
    QCoreApplication* pApplication = QCoreApplication::instance();
    pApplication->installEventFilter(new CDeliveryWatch(pApplication));
}

Q_COREAPP_STARTUP_FUNCTION(WatchDeliveries)
