#include "files/CFileNameCodec.h"
#include "files/CLeftBehind.h"
#include "support/CTempTree.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CListAhead.h"

#include <QTest>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <dirent.h>
#include <dlfcn.h>
#include <future>
#include <memory>
#include <mutex>
#include <pthread.h>
#include <set>
#include <string>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

using Paths = std::vector<std::string>;

static bool Has(const Paths& listPath, const std::string& strPath)
{
    return std::find(listPath.begin(), listPath.end(), strPath) != listPath.end();
}

/** Watches which folders are opened below one folder and by whom, and holds some of them up. */
class CWatch
{
public:
    /** Watches from now on. With nTogether the second and later wait until so many have been opened. */
    void Begin(const QString& strBelow, size_t nTogether = 0)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_strBelow = strBelow.toStdString();
        m_listPath.clear();
        m_setThread.clear();
        m_strHeld.clear();
        m_nTogether = nTogether;
        m_bMissed = false;
        m_changed.notify_all();
    }

    /** Opening one folder takes until it is released, by an empty name. */
    void Hold(const std::string& strHeld)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_strHeld = strHeld;
        m_changed.notify_all();
    }

    void Note(const std::string& strPath)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_strBelow.empty() || strPath.rfind(m_strBelow, 0) != 0) {
            return;
        }
        const std::string strOpened = strPath.substr(m_strBelow.size());
        m_listPath.push_back(strOpened);
        m_setThread.insert(std::this_thread::get_id());
        m_changed.notify_all();
        if (m_listPath.size() > 1) {
            WaitFor(lock, [this] { return m_listPath.size() >= m_nTogether; });
        }
        if (strOpened == m_strHeld) {
            WaitFor(lock, [this] { return m_strHeld.empty(); });
        }
    }

    /** What was opened, in order, seen from the folder. */
    Paths Opened() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_listPath;
    }

    /** True when somebody waited in vain. */
    bool IsMissed() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_bMissed;
    }

    /** The threads that opened folders. */
    std::set<std::thread::id> Threads() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_setThread;
    }

private:
    template <typename TCondition> void WaitFor(std::unique_lock<std::mutex>& lock, TCondition fnCame)
    {
        m_bMissed = m_bMissed || !m_changed.wait_for(lock, 10s, fnCame);
    }

    mutable std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    std::string m_strBelow;
    std::string m_strHeld;
    Paths m_listPath;
    std::set<std::thread::id> m_setThread;
    size_t m_nTogether = 0;
    bool m_bMissed = false;
};

static CWatch s_watch;

/** Stands in front of the C library's, so that the test sees each folder that is opened. */
extern "C" DIR* opendir(const char* pszPath)
{
    using PFNOpen = DIR* (*)(const char*);
    static const PFNOpen s_pfnOpen = reinterpret_cast<PFNOpen>(dlsym(RTLD_NEXT, "opendir"));
    s_watch.Note(pszPath);
    return s_pfnOpen(pszPath);
}

static std::atomic<bool> s_bNoThreads{false};

/** Stands in front of the C library's, too: the system may give no thread. */
extern "C" int pthread_create(pthread_t* pThread, const pthread_attr_t* pAttr, void* (*fnRun)(void*),
                              void* pArgument)
{
    using PFNCreate = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const PFNCreate s_pfnCreate = reinterpret_cast<PFNCreate>(dlsym(RTLD_NEXT, "pthread_create"));
    return s_bNoThreads ? EAGAIN : s_pfnCreate(pThread, pAttr, fnRun, pArgument);
}

static const std::initializer_list<QLatin1String> SKIP = {QLatin1String("dev"), QLatin1String("home")};

/** Takes the listings of so many folders, by their places; each has to come once. */
static QVector<STDirListing> TakeAll(CListAhead& listAhead, int nCount)
{
    QVector<STDirListing> listListing(nCount);
    std::set<int> setCame;
    while (!listAhead.IsDone()) {
        for (STListedFolder& stFolder : listAhead.Take(10s)) {
            if (!setCame.insert(stFolder.nFolder).second) {
                qFatal("a listing has come twice");
            }
            listListing[stFolder.nFolder] = std::move(stFolder.stListing);
        }
    }
    return listListing;
}

/** Whether each of the folders that Folders() makes has as many entries as it was given. */
static bool IsAllThere(const QVector<STDirListing>& listListing)
{
    int nFolder = -1;
    return std::all_of(listListing.begin(), listListing.end(), [&nFolder](const STDirListing& stListing) {
        ++nFolder;
        return stListing.listEntry.size() == nFolder % 11;
    });
}

class tst_CListAhead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init() { m_pTree = std::make_unique<CTempTree>(); }
    void cleanup();

    void eachListingComesOnce_data();
    void eachListingComesOnce();
    void slowOnesAreAskedTogether();
    void oneThatTakesLongerIsWaitedFor();
    void oneThatHangsHoldsNobody();
    void whoIsDestroyedWaitsForNobody();
    void goesOnLater();
    void withoutThreadsTheCallerLists();
    void quickOnesTakeOneThread();
    void onlyAFewAreReadAhead();
    void modelOpensFoldersOnly();
    void modelListsAsManyFoldersAsThereAre();

private:
    /** Makes so many folders below "all", with one entry more each, up to ten. */
    QVector<STFolderToList> Folders(int nCount);

    std::unique_ptr<CTempTree> m_pTree;
};

void tst_CListAhead::cleanup()
{
    s_bNoThreads = false;
    s_watch.Begin(QString());
    QTRY_VERIFY(!CLeftBehind::Any());
    m_pTree.reset();
}

QVector<STFolderToList> tst_CListAhead::Folders(int nCount)
{
    QVector<STFolderToList> listFolder;
    for (int i = 0; i < nCount; ++i) {
        const QString strFolder = QString("all/%1").arg(i, 4, 10, QLatin1Char('0'));
        m_pTree->MkDir(strFolder);
        m_pTree->FillNumbered(strFolder + "/file %1", 1, i % 11);
        listFolder.append({m_pTree->Path(strFolder), {}});
    }
    return listFolder;
}

void tst_CListAhead::eachListingComesOnce_data()
{
    QTest::addColumn<int>("nCount");
    QTest::addColumn<int>("nLongMs");
    for (const int nCount : {1, 2, 3, 31, 32, 33, 34, 300}) {
        QTest::addRow("%d, each is long", nCount) << nCount << 0;
        QTest::addRow("%d, none is long", nCount) << nCount << 3600000;
    }
}

void tst_CListAhead::eachListingComesOnce()
{
    QFETCH(int, nCount);
    QFETCH(int, nLongMs);
    QVector<STFolderToList> listFolder = Folders(nCount - 1);
    const int nGone = nCount / 2;
    listFolder.insert(nGone, {m_pTree->Path("gone"), {}});
    CListAhead listAhead(listFolder, SKIP, std::chrono::milliseconds(nLongMs));
    const QVector<STDirListing> listListing = TakeAll(listAhead, nCount);
    QVERIFY(listAhead.Take(1h).empty());
    for (int n = 0; n < nCount; ++n) {
        const STDirListing& stListing = listListing.at(n);
        const STDirListing stExpected = CDirListing::List(listFolder.at(n), SKIP);
        QCOMPARE(stListing.nError, n == nGone ? ENOENT : 0);
        QCOMPARE(stListing.listEntry.size(), stExpected.listEntry.size());
        for (int i = 0; i < stListing.listEntry.size(); ++i) {
            QCOMPARE(stListing.listEntry.at(i).fileInfo, stExpected.listEntry.at(i).fileInfo);
        }
    }
}

void tst_CListAhead::slowOnesAreAskedTogether()
{
    const QVector<STFolderToList> listFolder = Folders(9);
    // The first tells that the disk is slow; of the others nobody returns before all have come.
    s_watch.Begin(m_pTree->Path("all"), 9);
    CListAhead listAhead(listFolder, SKIP, 0ms);
    QVERIFY(IsAllThere(TakeAll(listAhead, listFolder.size())));
    QVERIFY(!s_watch.IsMissed());
    QCOMPARE(s_watch.Opened().size(), size_t(9));
}

void tst_CListAhead::oneThatTakesLongerIsWaitedFor()
{
    const QVector<STFolderToList> listFolder = Folders(120);
    s_watch.Begin(m_pTree->Path("all"));
    s_watch.Hold("/0072");
    CListAhead listAhead(listFolder, SKIP, 0ms);
    // Nobody sees that the caller waits: time is given to one that does not.
    const std::future<void> released = std::async(std::launch::async, [] {
        std::this_thread::sleep_for(50ms);
        s_watch.Hold({});
    });
    QVERIFY(IsAllThere(TakeAll(listAhead, listFolder.size())));
    QVERIFY(!s_watch.IsMissed());
}

void tst_CListAhead::oneThatHangsHoldsNobody()
{
    // The first is that of the one thread that there is by then.
    const QVector<STFolderToList> listFolder = Folders(120);
    s_watch.Begin(m_pTree->Path("all"));
    s_watch.Hold("/0000");
    CListAhead listAhead(listFolder, SKIP);
    std::vector<int> listCame;
    while (listCame.size() < 119) {
        for (const STListedFolder& stFolder : listAhead.Take(10s)) {
            listCame.push_back(stFolder.nFolder);
        }
    }
    QVERIFY(std::find(listCame.begin(), listCame.end(), 0) == listCame.end());
    QVERIFY(listAhead.Take(0ms).empty());
    QVERIFY(!listAhead.IsDone());
    QVERIFY(listAhead.Overdue(1h).empty());
    QCOMPARE(listAhead.Overdue(0ms), std::vector<int>{0});
    s_watch.Hold({});
    QCOMPARE(listAhead.Take(10s).size(), size_t(1));
    QVERIFY(listAhead.IsDone());
    QVERIFY(listAhead.Overdue(0ms).empty());
}

void tst_CListAhead::whoIsDestroyedWaitsForNobody()
{
    const QVector<STFolderToList> listFolder = Folders(20);
    s_watch.Begin(m_pTree->Path("all"));
    s_watch.Hold("/0000");
    {
        CListAhead listAhead(listFolder, SKIP);
        QTRY_VERIFY(Has(s_watch.Opened(), "/0000"));
        QVERIFY(!CLeftBehind::Any());
    }
    QVERIFY(CLeftBehind::Any());
    s_watch.Hold({});
    QTRY_VERIFY(!CLeftBehind::Any());
    // It has gone on with no other folder.
    QCOMPARE(s_watch.Opened().size(), size_t(1));
}

void tst_CListAhead::goesOnLater()
{
    const QVector<STFolderToList> listFolder = Folders(2);
    s_watch.Begin(m_pTree->Path("all"));
    s_watch.Hold("/0001");
    CListAhead listAhead(listFolder, SKIP);
    QTRY_VERIFY(Has(s_watch.Opened(), "/0001"));
    // What is there already is told at once.
    std::atomic<int> nTold{0};
    listAhead.GoOnLater([&nTold] { ++nTold; });
    QCOMPARE(nTold.load(), 1);
    QVERIFY(CLeftBehind::Any());
    QCOMPARE(listAhead.Take(0ms).size(), size_t(1));
    s_watch.Hold({});
    QTRY_COMPARE(nTold.load(), 2);
    QVERIFY(!CLeftBehind::Any());
    QCOMPARE(listAhead.Take(0ms).at(0).stListing.listEntry.size(), 1);
}

void tst_CListAhead::withoutThreadsTheCallerLists()
{
    const QVector<STFolderToList> listFolder = Folders(40);
    s_watch.Begin(m_pTree->Path("all"));
    s_bNoThreads = true;
    CListAhead listAhead(listFolder, SKIP, 0ms);
    QVERIFY(IsAllThere(TakeAll(listAhead, listFolder.size())));
    QCOMPARE(s_watch.Threads(), std::set<std::thread::id>{std::this_thread::get_id()});
}

void tst_CListAhead::quickOnesTakeOneThread()
{
    const QVector<STFolderToList> listFolder = Folders(50);
    s_watch.Begin(m_pTree->Path("all"));
    CListAhead listAhead(listFolder, SKIP, 1h);
    TakeAll(listAhead, listFolder.size());
    QCOMPARE(s_watch.Opened().size(), size_t(50));
    // Not that of the caller, who must not be held up by a disk.
    const std::set<std::thread::id> setThread = s_watch.Threads();
    QCOMPARE(setThread.size(), size_t(1));
    QVERIFY(*setThread.begin() != std::this_thread::get_id());
}

void tst_CListAhead::onlyAFewAreReadAhead()
{
    const QVector<STFolderToList> listFolder = Folders(300);
    s_watch.Begin(m_pTree->Path("all"));
    CListAhead listAhead(listFolder, SKIP, 0ms);
    const size_t nTaken = listAhead.Take(10s).size();
    // The helpers go on until they may not, and then wait.
    QTRY_VERIFY(s_watch.Opened().size() > nTaken + 20);
    QTRY_VERIFY(listAhead.Overdue(0ms).empty());
    const size_t nOpened = s_watch.Opened().size() - nTaken;
    QVERIFY2(nOpened < 60, qPrintable(QString::number(nOpened)));
}

void tst_CListAhead::modelOpensFoldersOnly()
{
    m_pTree->Fill({"v/a/file", "v/empty/", "v/file 1", "v/file 2"});
    CDirModel model;
    model.Parse(m_pTree->Path("v"));
    s_watch.Begin(m_pTree->Path("v"));
    model.SlotExpanded(model.index(0, 0));
    QVERIFY(s_watch.Opened() == Paths({"", "/a", "/empty"}));
    // What is listed is not asked again; that a folder is empty cannot be told from that it is unlisted.
    s_watch.Begin(m_pTree->Path("v"));
    model.SlotExpanded(model.index(0, 0));
    QVERIFY(s_watch.Opened() == Paths({"/empty"}));
}

void tst_CListAhead::modelListsAsManyFoldersAsThereAre()
{
    Folders(120);
    CDirModel model;
    model.Parse(m_pTree->Path("all"));
    const QModelIndex volume = model.index(0, 0);
    model.SlotExpanded(volume);
    QCOMPARE(model.rowCount(volume), 120);
    for (int i = 0; i < 120; ++i) {
        QCOMPARE(model.rowCount(model.index(i, 0, volume)), i % 11);
    }
}

QTEST_MAIN(tst_CListAhead)
#include "tst_CListAhead.moc"
