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
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

/** What was opened below one folder, by whom, and how many had to be at it together. */
struct STOpened
{
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_strBelow;
    std::string m_strHeld;
    std::string m_strUntil;
    std::vector<std::string> m_listPath;
    std::set<std::thread::id> m_setThread;
    size_t m_nTogether = 0; // the second and later wait until so many have come
    bool m_bMissed = false;

    void Note(const char* pszPath)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_strBelow.empty() || std::strncmp(pszPath, m_strBelow.c_str(), m_strBelow.size()) != 0) {
            return;
        }
        m_listPath.emplace_back(pszPath);
        m_setThread.insert(std::this_thread::get_id());
        m_changed.notify_all();
        if (m_listPath.size() > 1) {
            WaitFor(lock, [this] { return m_listPath.size() >= m_nTogether; });
        }
        if (!m_strHeld.empty() && m_strBelow + m_strHeld == pszPath) {
            WaitFor(lock, [this] { return IsOpened(m_strUntil); });
        }
    }

    bool IsOpened(const std::string& strFolder) const
    {
        return std::count(m_listPath.begin(), m_listPath.end(), m_strBelow + strFolder) > 0;
    }

    template <typename TCondition> void WaitFor(std::unique_lock<std::mutex>& lock, TCondition fnCame)
    {
        m_bMissed = m_bMissed || !m_changed.wait_for(lock, 10s, fnCame);
    }

    /** One folder takes until another is opened. */
    void Hold(const char* pszHeld, const char* pszUntil)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_strHeld = pszHeld;
        m_strUntil = pszUntil;
    }

    void Watch(const QString& strBelow, size_t nTogether = 0)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_strBelow = strBelow.toStdString();
        m_listPath.clear();
        m_setThread.clear();
        m_strHeld.clear();
        m_nTogether = nTogether;
        m_bMissed = false;
    }
};

static STOpened s_opened;

/** Stands in front of the C library's, so that the test sees each folder that is opened. */
extern "C" DIR* opendir(const char* pszPath)
{
    using PFNOpen = DIR* (*)(const char*);
    static const PFNOpen s_pfnOpen = reinterpret_cast<PFNOpen>(dlsym(RTLD_NEXT, "opendir"));
    s_opened.Note(pszPath);
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
    void refusalsComeInTheirPlace();
    void slowOnesAreAskedTogether();
    void oneThatTakesLongerIsWaitedFor();
    void quickOnesTakeNoThread();
    void onlyAFewAreReadAhead();
    void modelOpensFoldersOnly();
    void modelListsAsManyFoldersAsThereAre();

private:
    /** Makes and keeps the nodes of so many folders, each with one entry more than the one before, up to ten.
     */
    QVector<const CDirNode*> Folders(int nCount);
    static QStringList Names(const STDirListing& stListing);

    std::unique_ptr<CTempTree> m_pTree;
    std::vector<std::unique_ptr<CDirNode>> m_listNode;
};

void tst_CListAhead::cleanup()
{
    s_opened.Watch(QString());
    m_listNode.clear();
    m_pTree.reset();
}

QVector<const CDirNode*> tst_CListAhead::Folders(int nCount)
{
    QVector<const CDirNode*> listFolder;
    for (int i = 0; i < nCount; ++i) {
        const QString strFolder = m_pTree->MkDir(QStringLiteral("all/%1").arg(i, 4, 10, QLatin1Char('0')));
        for (int j = 0; j < i % 11; ++j) {
            m_pTree->Write(QStringLiteral("all/%1/file %2").arg(i, 4, 10, QLatin1Char('0')).arg(j));
        }
        m_listNode.push_back(std::make_unique<CDirNode>(QFileInfo(strFolder), nullptr));
        listFolder.append(m_listNode.back().get());
    }
    return listFolder;
}

QStringList tst_CListAhead::Names(const STDirListing& stListing)
{
    QStringList listName;
    for (const STDirEntry& stEntry : stListing.listEntry) {
        listName.append(stEntry.fileInfo.absoluteFilePath());
    }
    return listName;
}

void tst_CListAhead::listingsComeInOrder_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("longMs");
    for (const int nCount : {1, 2, 3, 31, 32, 33, 34, 300}) {
        QTest::addRow("%d, each is long", nCount) << nCount << 0;
        QTest::addRow("%d, none is long", nCount) << nCount << 3600000;
    }
}

void tst_CListAhead::listingsComeInOrder()
{
    QFETCH(int, count);
    QFETCH(int, longMs);
    const QVector<const CDirNode*> listFolder = Folders(count);
    CListAhead listAhead(listFolder, SKIP, std::chrono::milliseconds(longMs));
    for (int i = 0; i < count; ++i) {
        const STDirListing stListing = listAhead.Next();
        QCOMPARE(Names(stListing), Names(listFolder.at(i)->List(SKIP)));
        QCOMPARE(stListing.listEntry.size(), i % 11);
        QCOMPARE(stListing.nError, 0);
    }
}

void tst_CListAhead::refusalsComeInTheirPlace()
{
    QVector<const CDirNode*> listFolder = Folders(5);
    const CDirNode gone(QFileInfo(m_pTree->Path(QStringLiteral("gone"))), nullptr);
    listFolder.insert(2, &gone);
    CListAhead listAhead(listFolder, SKIP, 0ms);
    QList<int> listError;
    for (int i = 0; i < listFolder.size(); ++i) {
        listError.append(listAhead.Next().nError);
    }
    QCOMPARE(listError, QList<int>({0, 0, ENOENT, 0, 0, 0}));
}

void tst_CListAhead::slowOnesAreAskedTogether()
{
    const QVector<const CDirNode*> listFolder = Folders(9);
    // The first tells that the disk is slow; of the others nobody returns before all have come.
    s_opened.Watch(m_pTree->Path(QStringLiteral("all")), 9);
    CListAhead listAhead(listFolder, SKIP, 0ms);
    for (int i = 0; i < listFolder.size(); ++i) {
        QCOMPARE(listAhead.Next().listEntry.size(), i % 11);
    }
    QVERIFY(!s_opened.m_bMissed);
    QCOMPARE(s_opened.m_listPath.size(), size_t(9));
}

void tst_CListAhead::oneThatTakesLongerIsWaitedFor()
{
    const QVector<const CDirNode*> listFolder = Folders(120);
    s_opened.Watch(m_pTree->Path(QStringLiteral("all")));
    // The latest that may be read ahead when the caller asks for the one that is held.
    s_opened.Hold("/0072", "/0103");
    CListAhead listAhead(listFolder, SKIP, 0ms);
    for (int i = 0; i < listFolder.size(); ++i) {
        if (i == 40 || i == 40 + 32) {
            // Leaves both to the helpers, the second in the place that the first had.
            QTRY_VERIFY([i] {
                const std::lock_guard<std::mutex> lock(s_opened.m_mutex);
                return s_opened.IsOpened("/00" + std::to_string(i));
            }());
        }
        QCOMPARE(listAhead.Next().listEntry.size(), i % 11);
    }
    QVERIFY(!s_opened.m_bMissed);
}

void tst_CListAhead::quickOnesTakeNoThread()
{
    const QVector<const CDirNode*> listFolder = Folders(50);
    s_opened.Watch(m_pTree->Path(QStringLiteral("all")));
    CListAhead listAhead(listFolder, SKIP, 1h);
    for (int i = 0; i < listFolder.size(); ++i) {
        listAhead.Next();
    }
    QCOMPARE(s_opened.m_listPath.size(), size_t(50));
    QVERIFY(s_opened.m_setThread == std::set<std::thread::id>{std::this_thread::get_id()});
}

void tst_CListAhead::onlyAFewAreReadAhead()
{
    const QVector<const CDirNode*> listFolder = Folders(300);
    s_opened.Watch(m_pTree->Path(QStringLiteral("all")));
    {
        CListAhead listAhead(listFolder, SKIP, 0ms);
        listAhead.Next();
        // The helpers go on until they may not, and then wait.
        QTRY_VERIFY([] {
            const std::lock_guard<std::mutex> lock(s_opened.m_mutex);
            return s_opened.m_listPath.size() > 20;
        }());
    }
    // They have ended by now, so nothing is opened after this look.
    QVERIFY2(s_opened.m_listPath.size() < 60, qPrintable(QString::number(s_opened.m_listPath.size())));
}

void tst_CListAhead::modelOpensFoldersOnly()
{
    m_pTree->Write(QStringLiteral("v/a/file"));
    m_pTree->MkDir(QStringLiteral("v/empty"));
    m_pTree->Write(QStringLiteral("v/file 1"));
    m_pTree->Write(QStringLiteral("v/file 2"));
    CDirModel model;
    model.Parse(m_pTree->Path(QStringLiteral("v")));
    s_opened.Watch(m_pTree->Path(QStringLiteral("v")));
    model.SlotExpanded(model.index(0, 0));
    const std::string strVolume = m_pTree->Path(QStringLiteral("v")).toStdString();
    QVERIFY(s_opened.m_listPath
            == std::vector<std::string>({strVolume, strVolume + "/a", strVolume + "/empty"}));
    // What is listed is not asked again; that a folder is empty cannot be told from that it is unlisted.
    s_opened.Watch(m_pTree->Path(QStringLiteral("v")));
    model.SlotExpanded(model.index(0, 0));
    QVERIFY(s_opened.m_listPath == std::vector<std::string>({strVolume + "/empty"}));
}

void tst_CListAhead::modelListsAsManyFoldersAsThereAre()
{
    Folders(120);
    CDirModel model;
    model.Parse(m_pTree->Path(QStringLiteral("all")));
    const QModelIndex volume = model.index(0, 0);
    model.SlotExpanded(volume);
    QCOMPARE(model.rowCount(volume), 120);
    for (int i = 0; i < 120; ++i) {
        QCOMPARE(model.rowCount(model.index(i, 0, volume)), i % 11);
    }
}

QTEST_MAIN(tst_CListAhead)
#include "tst_CListAhead.moc"
