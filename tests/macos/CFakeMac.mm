#include "macos/CFakeMac.h"

#import <AppKit/AppKit.h>
#import <CoreFoundation/CoreFoundation.h>
#import <DiskArbitration/DiskArbitration.h>
#import <Foundation/NSDebug.h>
#import <IOKit/IOKitLib.h>
#include <algorithm>
#include <cstring>
#include <deque>
#include <memory>
#include <sys/mount.h>
#include <vector>

// --- What is counted --------------------------------------------------------

namespace {

struct STCounted
{
    QString strKind;
    int nReferences = 1;
};

} // namespace

static QMap<quintptr, STCounted> s_mapCounted;
static QStringList s_listProblem;
static QStringList s_listLog;

template <typename THandle> static quintptr Key(THandle handle) { return (quintptr)handle; }

template <typename THandle> static THandle Counted(const char* pKind, THandle handle)
{
    s_mapCounted.insert(Key(handle), {pKind, 1});
    return handle;
}

/** True when the handle stands for a living object of this kind; else it is a problem. */
template <typename THandle> static bool IsAlive(const char* pCall, const char* pKind, THandle handle)
{
    const auto it = s_mapCounted.constFind(Key(handle));
    if (it != s_mapCounted.cend() && it->strKind == pKind && it->nReferences > 0) {
        return true;
    }
    s_listProblem.append(QString("%1 without a living %2").arg(pCall, pKind));
    return false;
}

template <typename THandle> static bool Release(const char* pCall, THandle handle)
{
    const auto it = s_mapCounted.find(Key(handle));
    if (it == s_mapCounted.end() || it->nReferences == 0) {
        s_listProblem.append(QString("%1 of what is not held").arg(pCall));
        return false;
    }
    --it->nReferences;
    return true;
}

// --- What is left to pools --------------------------------------------------

static QMap<unsigned int, int> s_mapLeft; // by the iterator whose device it was made for, else by 0

/** What a framework makes for itself during a call, and leaves to the pool of whoever calls. */
@interface CFakeLeft : NSObject {
    unsigned int m_nOwner;
}
+ (void)leaveFor:(unsigned int)nOwner;
@end

@implementation CFakeLeft

+ (void)leaveFor:(unsigned int)nOwner
{
    CFakeLeft* const pLeft = [[CFakeLeft alloc] init];
    pLeft->m_nOwner = nOwner;
    ++s_mapLeft[nOwner];
    [pLeft autorelease];
}

- (void)dealloc
{
    --s_mapLeft[m_nOwner];
    [super dealloc];
}

@end

int CFakeMac::LeftToPools()
{
    int nLeft = 0;
    for (const int nOfOwner : qAsConst(s_mapLeft)) {
        nLeft += nOfOwner;
    }
    return nLeft;
}

// --- The run loop -----------------------------------------------------------

struct __CFRunLoop
{
};

struct __CFRunLoopSource
{
    CFRunLoopRef pLoop = nullptr;
    QStringList listMode;
};

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFRunLoopMode kCFRunLoopDefaultMode = CFSTR("kCFRunLoopDefaultMode");
const CFRunLoopMode kCFRunLoopCommonModes = CFSTR("kCFRunLoopCommonModes");

static QString Text(CFStringRef pText) { return QString::fromUtf8([(NSString*)pText UTF8String]); }

static bool Runs(const __CFRunLoopSource& source, CFRunLoopRef pLoop, ENFakeMode enMode)
{
    const bool bCommon = source.listMode.contains(Text(kCFRunLoopCommonModes));
    const bool bDefault = source.listMode.contains(Text(kCFRunLoopDefaultMode));
    return source.pLoop == pLoop && (bCommon || (bDefault && enMode == MODE_DEFAULT));
}

CFRunLoopRef CFRunLoopGetCurrent()
{
    static thread_local __CFRunLoop s_loop;
    return &s_loop;
}

void CFRunLoopAddSource(CFRunLoopRef pLoop, CFRunLoopSourceRef pSource, CFRunLoopMode mode)
{
    pSource->pLoop = pLoop;
    pSource->listMode.append(Text(mode));
}

// --- Core Foundation's objects ----------------------------------------------

void CFRelease(CFTypeRef pObject) { Release("CFRelease", pObject); }

const void* CFDictionaryGetValue(CFDictionaryRef pDictionary, const void* pKey)
{
    const auto it = s_mapCounted.constFind(Key(pDictionary));
    if (it != s_mapCounted.cend() && it->nReferences == 0) {
        s_listProblem.append("CFDictionaryGetValue of a released dictionary");
    }
    return [(NSDictionary*)pDictionary objectForKey:(id)pKey];
}

CFComparisonResult CFStringCompare(CFStringRef pFirst, CFStringRef pSecond, CFStringCompareFlags enFlags)
{
    const NSStringCompareOptions nOptions
        = enFlags == kCFCompareCaseInsensitive ? NSCaseInsensitiveSearch : 0;
    return CFComparisonResult([(NSString*)pFirst compare:(NSString*)pSecond options:nOptions]);
}

/** A dictionary that the program owns. It is never freed, so that a use after its release is noticed. */
static CFMutableDictionaryRef OwnedDictionary(const char* pKind, NSDictionary* pContent)
{
    return (CFMutableDictionaryRef)Counted(pKind, [[NSMutableDictionary alloc] initWithDictionary:pContent]);
}

// --- IOKit ------------------------------------------------------------------

struct IONotificationPort
{
    __CFRunLoopSource source;
};

namespace {

struct STNotification
{
    QByteArray baKind;
    QByteArray baClass;
    IONotificationPortRef pPort = nullptr;
    IOServiceMatchingCallback pfnCallback = nullptr;
    void* pReference = nullptr;
    io_iterator_t nIterator = 0;
    bool bArmed = false;
    std::deque<STFakeDevice> listWaiting;
};

} // namespace

static const char* const STORAGE_CLASS = "IOBlockStorageDevice";
static const char* const ARRIVAL = "IOServiceFirstMatch";
static const char* const REMOVAL = "IOServiceTerminate";
static const kern_return_t REFUSED = -1;

static std::vector<std::unique_ptr<STNotification>> s_listNotification;
static QVector<STFakeDevice> s_listPresent;
static QMap<io_object_t, STFakeDevice> s_mapDevice;
static QMap<io_object_t, io_iterator_t> s_mapIterator; // by the device that it gave
static QByteArray s_baRefusedKind;
static unsigned int s_nLastHandle = 0x1000;

IONotificationPortRef IONotificationPortCreate(mach_port_t)
{
    return Counted("port", new IONotificationPort);
}

CFRunLoopSourceRef IONotificationPortGetRunLoopSource(IONotificationPortRef pPort)
{
    return IsAlive("IONotificationPortGetRunLoopSource", "port", pPort) ? &pPort->source : nullptr;
}

CFMutableDictionaryRef IOServiceMatching(const char* pClassName)
{
    [CFakeLeft leaveFor:0];
    @autoreleasepool {
        NSString* const pClass = [NSString stringWithUTF8String:pClassName];
        return OwnedDictionary("matching",
                               [NSDictionary dictionaryWithObject:pClass forKey:@"IOProviderClass"]);
    }
}

kern_return_t IOServiceAddMatchingNotification(IONotificationPortRef pPort, const io_name_t pKind,
                                               CFDictionaryRef pMatching,
                                               IOServiceMatchingCallback pfnCallback, void* pReference,
                                               io_iterator_t* pIterator)
{
    const bool bUsable = IsAlive("IOServiceAddMatchingNotification", "port", pPort)
        && IsAlive("IOServiceAddMatchingNotification", "matching", pMatching);
    // The dictionary is taken over in every case.
    Release("IOServiceAddMatchingNotification", pMatching);
    if (!bUsable || s_baRefusedKind == pKind) {
        return REFUSED;
    }
    auto pNew = std::make_unique<STNotification>();
    pNew->baKind = pKind;
    pNew->baClass = [[(NSDictionary*)pMatching objectForKey:@"IOProviderClass"] UTF8String];
    pNew->pPort = pPort;
    pNew->pfnCallback = pfnCallback;
    pNew->pReference = pReference;
    pNew->nIterator = Counted("iterator", ++s_nLastHandle);
    if (pNew->baKind == ARRIVAL) {
        pNew->listWaiting.assign(s_listPresent.cbegin(), s_listPresent.cend());
    }
    *pIterator = pNew->nIterator;
    s_listNotification.push_back(std::move(pNew));
    return KERN_SUCCESS;
}

static STNotification* NotificationOf(io_iterator_t nIterator)
{
    for (const auto& pNotification : s_listNotification) {
        if (pNotification->nIterator == nIterator) {
            return pNotification.get();
        }
    }
    return nullptr;
}

io_object_t IOIteratorNext(io_iterator_t nIterator)
{
    STNotification* const pNotification
        = IsAlive("IOIteratorNext", "iterator", nIterator) ? NotificationOf(nIterator) : nullptr;
    if (pNotification == nullptr) {
        return 0;
    }
    if (s_mapLeft.value(nIterator) > 0) {
        s_listProblem.append("IOIteratorNext before a pool has freed what the device before it has left");
    }
    if (pNotification->listWaiting.empty()) {
        pNotification->bArmed = true;
        return 0;
    }
    const io_object_t nDevice = Counted("device", ++s_nLastHandle);
    s_mapIterator.insert(nDevice, nIterator);
    s_mapDevice.insert(nDevice, pNotification->listWaiting.front());
    pNotification->listWaiting.pop_front();
    return nDevice;
}

kern_return_t IOObjectRelease(io_object_t nObject)
{
    return Release("IOObjectRelease", nObject) ? KERN_SUCCESS : REFUSED;
}

kern_return_t IORegistryEntryGetName(io_registry_entry_t nEntry, io_name_t pName)
{
    if (!IsAlive("IORegistryEntryGetName", "device", nEntry) || s_mapDevice[nEntry].baName.isNull()) {
        return REFUSED;
    }
    [CFakeLeft leaveFor:s_mapIterator.value(nEntry)];
    std::strncpy(pName, s_mapDevice[nEntry].baName.constData(), sizeof(io_name_t));
    return KERN_SUCCESS;
}

kern_return_t IORegistryEntryGetPath(io_registry_entry_t nEntry, const io_name_t pPlane, io_string_t pPath)
{
    if (!IsAlive("IORegistryEntryGetPath", "device", nEntry) || qstrcmp(pPlane, "IOUSB") != 0
        || s_mapDevice[nEntry].baPlanePath.isEmpty()) {
        return REFUSED;
    }
    std::strncpy(pPath, s_mapDevice[nEntry].baPlanePath.constData(), sizeof(io_string_t));
    return KERN_SUCCESS;
}

static id ProtocolOf(const STFakeDevice& device)
{
    switch (device.enProperties) {
    case PROPERTIES_PROTOCOL_IS_TEXT:
        return @"USB";
    case PROPERTIES_WITHOUT_BUS:
        return [NSDictionary dictionaryWithObject:@"External" forKey:@"Physical Interconnect Location"];
    case PROPERTIES_BUS_IS_NUMBER:
        return [NSDictionary dictionaryWithObject:[NSNumber numberWithInt:1] forKey:@"Physical Interconnect"];
    default:
        return [NSDictionary dictionaryWithObject:[NSString stringWithUTF8String:device.baBus.constData()]
                                           forKey:@"Physical Interconnect"];
    }
}

kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t nEntry,
                                                CFMutableDictionaryRef* pProperties, CFAllocatorRef,
                                                IOOptionBits)
{
    if (!IsAlive("IORegistryEntryCreateCFProperties", "device", nEntry)
        || s_mapDevice[nEntry].enProperties == PROPERTIES_REFUSED) {
        return REFUSED;
    }
    @autoreleasepool {
        const bool bProtocol = s_mapDevice[nEntry].enProperties != PROPERTIES_WITHOUT_PROTOCOL;
        NSDictionary* const pContent = bProtocol
            ? [NSDictionary dictionaryWithObject:ProtocolOf(s_mapDevice[nEntry])
                                          forKey:@"Protocol Characteristics"]
            : [NSDictionary dictionary];
        *pProperties = OwnedDictionary("properties", pContent);
    }
    return KERN_SUCCESS;
}

// --- The registry above a media ---------------------------------------------

static const char* const BSD_NAME = "BSD Name";

static QMap<QByteArray, QVector<STFakeEntry>> s_mapMedia;
static QMap<io_object_t, QVector<STFakeEntry>> s_mapChain; // the entry of this handle and those above

static io_object_t NewEntry(const QVector<STFakeEntry>& listChain)
{
    if (listChain.isEmpty()) {
        return 0;
    }
    const io_object_t nEntry = Counted("device", ++s_nLastHandle);
    s_mapDevice.insert(nEntry, listChain.first().device);
    s_mapChain.insert(nEntry, listChain);
    return nEntry;
}

CFMutableDictionaryRef IOBSDNameMatching(mach_port_t, uint32_t, const char* pBsdName)
{
    @autoreleasepool {
        NSString* const pName = [NSString stringWithUTF8String:pBsdName];
        NSString* const pKey = [NSString stringWithUTF8String:BSD_NAME];
        return OwnedDictionary("matching", [NSDictionary dictionaryWithObject:pName forKey:pKey]);
    }
}

io_service_t IOServiceGetMatchingService(mach_port_t, CFDictionaryRef pMatching)
{
    [CFakeLeft leaveFor:0];
    if (!IsAlive("IOServiceGetMatchingService", "matching", pMatching)) {
        return 0;
    }
    // The dictionary is taken over in every case.
    Release("IOServiceGetMatchingService", pMatching);
    @autoreleasepool {
        NSString* const pKey = [NSString stringWithUTF8String:BSD_NAME];
        return NewEntry(s_mapMedia.value([[(NSDictionary*)pMatching objectForKey:pKey] UTF8String]));
    }
}

boolean_t IOObjectConformsTo(io_object_t nObject, const io_name_t pClassName)
{
    return IsAlive("IOObjectConformsTo", "device", nObject)
        && s_mapChain[nObject].first().baClass == pClassName;
}

kern_return_t IORegistryEntryGetParentEntry(io_registry_entry_t nEntry, const io_name_t pPlane,
                                            io_registry_entry_t* pParent)
{
    if (!IsAlive("IORegistryEntryGetParentEntry", "device", nEntry) || qstrcmp(pPlane, "IOService") != 0
        || s_mapChain[nEntry].size() < 2) {
        return REFUSED;
    }
    *pParent = NewEntry(s_mapChain[nEntry].mid(1));
    return KERN_SUCCESS;
}

void CFakeMac::SetMedia(const QByteArray& baBsdName, const QVector<STFakeEntry>& listEntry)
{
    s_mapMedia.insert(baBsdName, listEntry);
}

// --- What is mounted --------------------------------------------------------

static QVector<STFakeMount> s_listMount{{"/", "/dev/disk1s5"}};

void CFakeMac::SetMounts(const QVector<STFakeMount>& listMount) { s_listMount = listMount; }

static void Describe(const STFakeMount& mount, struct statfs* pVolume)
{
    qstrncpy(pVolume->f_mntonname, mount.baPoint.constData(), sizeof(pVolume->f_mntonname));
    qstrncpy(pVolume->f_mntfromname, mount.baDevice.constData(), sizeof(pVolume->f_mntfromname));
}

/** The volume that holds the path. */
int statfs(const char* pPath, struct statfs* pVolume)
{
    const QByteArray baPath = QByteArray(pPath) + '/';
    const STFakeMount* pBest = nullptr;
    for (const STFakeMount& mount : qAsConst(s_listMount)) {
        const bool bHolds = mount.baPoint == "/" || baPath.startsWith(mount.baPoint + '/');
        if (bHolds && (pBest == nullptr || pBest->baPoint.size() < mount.baPoint.size())) {
            pBest = &mount;
        }
    }
    if (pBest == nullptr) {
        return -1;
    }
    Describe(*pBest, pVolume);
    return 0;
}

int getfsstat(struct statfs* pVolumes, int nBytes, int nFlags)
{
    if (nFlags != MNT_NOWAIT) {
        s_listProblem.append("getfsstat waits for the disks");
    }
    const int nCount = std::min(nBytes / int(sizeof(struct statfs)), s_listMount.size());
    for (int i = 0; i < nCount; ++i) {
        Describe(s_listMount[i], &pVolumes[i]);
    }
    return s_listMount.isEmpty() ? -1 : nCount;
}

static void Wait(const char* pKind, const QVector<STFakeDevice>& listDevice)
{
    for (const auto& pNotification : s_listNotification) {
        if (pNotification->baKind == pKind && pNotification->baClass == STORAGE_CLASS) {
            pNotification->listWaiting.insert(pNotification->listWaiting.end(), listDevice.cbegin(),
                                              listDevice.cend());
        }
    }
}

void CFakeMac::Plug(const QVector<STFakeDevice>& listDevice)
{
    s_listPresent += listDevice;
    Wait(ARRIVAL, listDevice);
}

void CFakeMac::Unplug(const QVector<STFakeDevice>& listDevice) { Wait(REMOVAL, listDevice); }

void CFakeMac::Refuse(const QByteArray& baKind) { s_baRefusedKind = baKind; }

QStringList CFakeMac::Registrations()
{
    QStringList listText;
    for (const auto& pNotification : s_listNotification) {
        listText.append(QString::fromLatin1(pNotification->baKind + ' ' + pNotification->baClass));
    }
    return listText;
}

static bool DeliverDevices(ENFakeMode enMode)
{
    for (const auto& pNotification : s_listNotification) {
        if (!pNotification->bArmed || pNotification->listWaiting.empty()
            || !Runs(pNotification->pPort->source, CFRunLoopGetCurrent(), enMode)) {
            continue;
        }
        // It gives notice once, and again only after it was read to its end.
        pNotification->bArmed = false;
        pNotification->pfnCallback(pNotification->pReference, pNotification->nIterator);
        return true;
    }
    return false;
}

// --- DiskArbitration --------------------------------------------------------

struct __DADisk
{
    QByteArray baBsdName;
};

struct __DASession
{
    __CFRunLoopSource source;
    bool bScheduled = false;
    bool bAllDisks = false;
    DADiskDisappearedCallback pfnCallback = nullptr;
    void* pContext = nullptr;
    int nLost = 0;
};

static std::vector<std::unique_ptr<__DASession>> s_listSession;
static bool s_bRefuseSessions = false;

DASessionRef DASessionCreate(CFAllocatorRef)
{
    [CFakeLeft leaveFor:0];
    if (s_bRefuseSessions) {
        return nullptr;
    }
    s_listSession.push_back(std::make_unique<__DASession>());
    return Counted("session", s_listSession.back().get());
}

void DARegisterDiskDisappearedCallback(DASessionRef pSession, CFDictionaryRef pMatch,
                                       DADiskDisappearedCallback pfnCallback, void* pContext)
{
    if (!IsAlive("DARegisterDiskDisappearedCallback", "session", pSession)) {
        return;
    }
    pSession->bAllDisks = pMatch == nullptr;
    pSession->pfnCallback = pfnCallback;
    pSession->pContext = pContext;
}

void DASessionScheduleWithRunLoop(DASessionRef pSession, CFRunLoopRef pLoop, CFStringRef mode)
{
    if (!IsAlive("DASessionScheduleWithRunLoop", "session", pSession)) {
        return;
    }
    // The loop holds a reference of its own.
    ++s_mapCounted[Key(pSession)].nReferences;
    pSession->bScheduled = true;
    CFRunLoopAddSource(pLoop, &pSession->source, mode);
}

const char* DADiskGetBSDName(DADiskRef pDisk)
{
    return pDisk->baBsdName.isNull() ? nullptr : pDisk->baBsdName.constData();
}

struct __DADisk* CFakeMac::Disk(const char* pBsdName)
{
    static std::deque<__DADisk> s_listDisk;
    s_listDisk.push_back({QByteArray(pBsdName)});
    return &s_listDisk.back();
}

void CFakeMac::LoseDisk()
{
    for (const auto& pSession : s_listSession) {
        ++pSession->nLost;
    }
}

void CFakeMac::RefuseSessions() { s_bRefuseSessions = true; }

static bool DeliverDisks(ENFakeMode enMode)
{
    for (const auto& pSession : s_listSession) {
        const bool bAlive = s_mapCounted[Key(pSession.get())].nReferences > 0;
        if (!bAlive || pSession->nLost == 0 || !pSession->bAllDisks || pSession->pfnCallback == nullptr
            || !Runs(pSession->source, CFRunLoopGetCurrent(), enMode)) {
            continue;
        }
        --pSession->nLost;
        pSession->pfnCallback(CFakeMac::Disk("disk9"), pSession->pContext);
        return true;
    }
    return false;
}

void CFakeMac::RunLoop(ENFakeMode enMode)
{
    bool bAgain = true;
    while (bAgain) {
        @autoreleasepool {
            bAgain = DeliverDevices(enMode) || DeliverDisks(enMode);
        }
    }
}

// --- AppKit -----------------------------------------------------------------

NSString* const NSWorkspaceDidMountNotification = @"NSWorkspaceDidMountNotification";
NSString* const NSWorkspaceDidUnmountNotification = @"NSWorkspaceDidUnmountNotification";

static QStringList s_listOpened;
static int s_nWindowQuestions = 0;
static bool s_bScreen = false;
static double s_fScreenWidth = 0;

@implementation NSWorkspace

+ (NSWorkspace*)sharedWorkspace
{
    static NSWorkspace* const s_pShared = [[NSWorkspace alloc] init];
    return s_pShared;
}

- (NSNotificationCenter*)notificationCenter
{
    [CFakeLeft leaveFor:0];
    static NSNotificationCenter* const s_pCentre = [[NSNotificationCenter alloc] init];
    return s_pCentre;
}

- (BOOL)openFile:(NSString*)pPath
{
    [CFakeLeft leaveFor:0];
    s_listOpened.append(QString::fromUtf8([pPath UTF8String]));
    return YES;
}

@end

@implementation NSScreen

+ (NSScreen*)mainScreen
{
    [CFakeLeft leaveFor:0];
    static NSScreen* const s_pMain = [[NSScreen alloc] init];
    return s_bScreen ? s_pMain : nil;
}

- (NSRect)frame
{
    return NSMakeRect(0, 0, s_fScreenWidth, 1440);
}

@end

@implementation NSView

- (NSWindow*)window
{
    ++s_nWindowQuestions;
    return nil;
}

@end

static void Post(NSString* pName, const char* pPath)
{
    @autoreleasepool {
        NSMutableDictionary* const pInfo = [NSMutableDictionary dictionary];
        if (pPath != nullptr) {
            [pInfo setObject:[NSString stringWithUTF8String:pPath] forKey:@"NSDevicePath"];
        }
        NSWorkspace* const pWorkspace = [NSWorkspace sharedWorkspace];
        [[pWorkspace notificationCenter] postNotificationName:pName object:pWorkspace userInfo:pInfo];
    }
}

void CFakeMac::Mount(const char* pPath) { Post(NSWorkspaceDidMountNotification, pPath); }

void CFakeMac::Unmount(const char* pPath) { Post(NSWorkspaceDidUnmountNotification, pPath); }

void CFakeMac::NotifyLonelyObserver()
{
    @autoreleasepool {
        NSDictionary* const pInfo = [NSDictionary dictionaryWithObject:@"/Volumes/STICK"
                                                                forKey:@"NSDevicePath"];
        NSNotification* const pNotice = [NSNotification notificationWithName:NSWorkspaceDidMountNotification
                                                                      object:nil
                                                                    userInfo:pInfo];
        const id pObserver = [[NSClassFromString(@"USBListen") alloc] init];
        [pObserver performSelector:NSSelectorFromString(@"volumeDidMount:") withObject:pNotice];
        [pObserver performSelector:NSSelectorFromString(@"volumeDidUnmount:") withObject:pNotice];
        [pObserver release];
    }
}

void CFakeMac::SetScreen(double fWidth)
{
    s_bScreen = true;
    s_fScreenWidth = fWidth;
}

void CFakeMac::RemoveScreen() { s_bScreen = false; }

unsigned long long CFakeMac::View() { return (unsigned long long)(quintptr)[[NSView alloc] init]; }

QStringList CFakeMac::OpenedFiles() { return s_listOpened; }

int CFakeMac::WindowQuestions() { return s_nWindowQuestions; }

// --- What the program made of it --------------------------------------------

QMap<QString, int> CFakeMac::Held()
{
    QMap<QString, int> mapHeld;
    for (const STCounted& counted : qAsConst(s_mapCounted)) {
        if (counted.nReferences > 0) {
            mapHeld[counted.strKind] += counted.nReferences;
        }
    }
    for (const auto& pSession : s_listSession) {
        if (pSession->bScheduled && --mapHeld["session"] == 0) {
            mapHeld.remove("session");
        }
    }
    return mapHeld;
}

QStringList CFakeMac::Problems() { return s_listProblem; }

static void KeepLine(NSString* pMessage)
{
    const QString strLine = QString::fromUtf8([pMessage UTF8String]);
    s_listLog.append(strLine.mid(strLine.indexOf("] ") + 2).chopped(1));
}

/** In place before anything can be logged. */
static const bool s_bKeepsLines = [] {
    _NSLog_printf_handler = &KeepLine;
    return true;
}();

QStringList CFakeMac::TakeLog()
{
    QStringList listLine;
    listLine.swap(s_listLog);
    return s_bKeepsLines ? listLine : QStringList();
}

/** Frees the dictionaries that the program has released, which so far only counted as such. */
static void FreeReleased()
{
    for (auto it = s_mapCounted.begin(); it != s_mapCounted.end();) {
        const bool bDictionary = it->strKind == "properties" || it->strKind == "matching";
        if (bDictionary && it->nReferences == 0) {
            [(id)(void*)it.key() release];
            it = s_mapCounted.erase(it);
        } else {
            ++it;
        }
    }
}

int CFakeMac::Alive(const char* pClass)
{
    GSDebugAllocationActive(YES);
    FreeReleased();
    if (pClass != nullptr) {
        return GSDebugAllocationCount(NSClassFromString([NSString stringWithUTF8String:pClass]));
    }
    int nAlive = 0;
    for (Class* pEach = GSDebugAllocationClassList(); *pEach != nullptr; ++pEach) {
        nAlive += GSDebugAllocationCount(*pEach);
    }
    return nAlive;
}
