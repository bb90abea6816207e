#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CListAhead.h"

#include <QTest>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <dirent.h>
#include <dlfcn.h>
#include <future>
#include <memory>
#include <mutex>
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
        m_listPath.push_back(strPath.substr(m_strBelow.size()));
        m_setThread.insert(std::this_thread::get_id());
        m_changed.notify_all();
        if (m_listPath.size() > 1) {
            WaitFor(lock, [this] { return m_listPath.size() >= m_nTogether; });
        }
        if (m_listPath.back() == m_strHeld) {
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
    bool IsMissed() const { return m_bMissed; }

    bool IsOnlyBy(std::thread::id id) const { return m_setThread == std::set<std::thread::id>{id}; }

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

static const std::initializer_list<QLatin1String> SKIP = {QLatin1String("dev"), QLatin1String("home")};

class tst_CListAhead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init() { m_pTree = std::make_unique<CTempTree>(); }
    void cleanup();

    void listingsComeInOrder_data();
    void listingsComeInOrder();
    void slowOnesAreAskedTogether();
    void oneThatTakesLongerIsWaitedFor();
    void quickOnesTakeNoThread();
    void onlyAFewAreReadAhead();
    void modelOpensFoldersOnly();
    void modelListsAsManyFoldersAsThereAre();

private:
    /** Makes and keeps the nodes of so many folders below "all", with one entry more each, up to ten. */
    QVector<const CDirNode*> Folders(int nCount);

    std::unique_ptr<CTempTree> m_pTree;
    std::vector<std::unique_ptr<CDirNode>> m_listNode;
};

void tst_CListAhead::cleanup()
{
    s_watch.Begin(QString());
    m_listNode.clear();
    m_pTree.reset();
}

QVector<const CDirNode*> tst_CListAhead::Folders(int nCount)
{
    QVector<const CDirNode*> listFolder;
    for (int i = 0; i < nCount; ++i) {
        const QString strFolder = QString("all/%1").arg(i, 4, 10, QLatin1Char('0'));
        m_pTree->MkDir(strFolder);
        m_pTree->FillNumbered(strFolder + "/file %1", 1, i % 11);
        m_listNode.push_back(std::make_unique<CDirNode>(QFileInfo(m_pTree->Path(strFolder)), nullptr));
        listFolder.append(m_listNode.back().get());
    }
    return listFolder;
}

void tst_CListAhead::listingsComeInOrder_data()
{
    QTest::addColumn<int>("nCount");
    QTest::addColumn<int>("nLongMs");
    for (const int nCount : {1, 2, 3, 31, 32, 33, 34, 300}) {
        QTest::addRow("%d, each is long", nCount) << nCount << 0;
        QTest::addRow("%d, none is long", nCount) << nCount << 3600000;
    }
}

void tst_CListAhead::listingsComeInOrder()
{
    QFETCH(int, nCount);
    QFETCH(int, nLongMs);
    QVector<const CDirNode*> listFolder = Folders(nCount - 1);
    const CDirNode gone(QFileInfo(m_pTree->Path("gone")), nullptr);
    listFolder.insert(nCount / 2, &gone);
    CListAhead listAhead(listFolder, SKIP, std::chrono::milliseconds(nLongMs));
    for (const CDirNode* pNode : qAsConst(listFolder)) {
        const STDirListing stListing = listAhead.Next();
        const STDirListing stExpected = pNode->List(SKIP);
        QCOMPARE(stListing.nError, pNode == &gone ? ENOENT : 0);
        QCOMPARE(stListing.listEntry.size(), stExpected.listEntry.size());
        for (int i = 0; i < stListing.listEntry.size(); ++i) {
            QCOMPARE(stListing.listEntry.at(i).fileInfo, stExpected.listEntry.at(i).fileInfo);
        }
    }
}

void tst_CListAhead::slowOnesAreAskedTogether()
{
    const QVector<const CDirNode*> listFolder = Folders(9);
    // The first tells that the disk is slow; of the others nobody returns before all have come.
    s_watch.Begin(m_pTree->Path("all"), 9);
    CListAhead listAhead(listFolder, SKIP, 0ms);
    for (int i = 0; i < listFolder.size(); ++i) {
        QCOMPARE(listAhead.Next().listEntry.size(), i % 11);
    }
    QVERIFY(!s_watch.IsMissed());
    QCOMPARE(s_watch.Opened().size(), size_t(9));
}

void tst_CListAhead::oneThatTakesLongerIsWaitedFor()
{
    const QVector<const CDirNode*> listFolder = Folders(120);
    s_watch.Begin(m_pTree->Path("all"));
    s_watch.Hold("/0072");
    CListAhead listAhead(listFolder, SKIP, 0ms);
    for (int i = 0; i < listFolder.size(); ++i) {
        std::future<void> released;
        if (i == 40 || i == 40 + 32) {
            // Leaves both to the helpers, the second in the place that the first had.
            QTRY_VERIFY(Has(s_watch.Opened(), "/00" + std::to_string(i)));
        }
        if (i == 40 + 32) {
            // Nobody sees that the caller waits: time is given to one that does not.
            released = std::async(std::launch::async, [] {
                std::this_thread::sleep_for(50ms);
                s_watch.Hold({});
            });
        }
        QCOMPARE(listAhead.Next().listEntry.size(), i % 11);
    }
    QVERIFY(!s_watch.IsMissed());
}

void tst_CListAhead::quickOnesTakeNoThread()
{
    const QVector<const CDirNode*> listFolder = Folders(50);
    s_watch.Begin(m_pTree->Path("all"));
    CListAhead listAhead(listFolder, SKIP, 1h);
    for (int i = 0; i < listFolder.size(); ++i) {
        listAhead.Next();
    }
    QCOMPARE(s_watch.Opened().size(), size_t(50));
    QVERIFY(s_watch.IsOnlyBy(std::this_thread::get_id()));
}

void tst_CListAhead::onlyAFewAreReadAhead()
{
    const QVector<const CDirNode*> listFolder = Folders(300);
    s_watch.Begin(m_pTree->Path("all"));
    {
        CListAhead listAhead(listFolder, SKIP, 0ms);
        listAhead.Next();
        // The helpers go on until they may not, and then wait.
        QTRY_VERIFY(s_watch.Opened().size() > 20);
    }
    // They have ended by now, so nothing is opened after this look.
    const size_t nOpened = s_watch.Opened().size();
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
