#include "CFailingCalls.h"
#include "files/CLeftBehind.h"
#include "pages/CPageBed.h"
#include "support/CGate.h"
#include "tree/CFileRowAccess.h"
#include "tree/CFileTreeAccess.h"
#include "tree/TreeRows.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QToolTip>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <memory>
#include <thread>

using namespace std::chrono_literals;

using ENCall = CFailingCalls::ENCall;
Q_DECLARE_METATYPE(ENCall)

/** A disk that does not answer a call for paths with that end, until it is let go: the first or each. */
class CHungDisk
{
public:
    CHungDisk(ENCall enCall, const QString& strEnd, bool bEach = false)
    {
        const auto fnWait = [this] {
            m_gate.Pass(60000);
            m_gate.Open(); // for the next one
        };
        bEach ? CFailingCalls::WatchAll(enCall, strEnd, fnWait)
              : CFailingCalls::Watch(enCall, strEnd, fnWait);
    }

    ~CHungDisk()
    {
        LetGo();
        // Nobody may be in the call any more when it is the C library's again.
        QTRY_VERIFY_WITH_TIMEOUT(!CLeftBehind::Any(), 20000);
        CFailingCalls::Reset();
    }

    CHungDisk(const CHungDisk&) = delete;
    CHungDisk& operator=(const CHungDisk&) = delete;

    void LetGo() { m_gate.Open(); }

private:
    CGate m_gate;
};

static const QString LOCKED = "This folder may not be read, nothing of it is copied.";
static const QString SILENT = "The disk does not answer. What is in this folder appears as soon as it does.";
// Ahead of the bounds that hold, for a machine that has much else to do.
static const int MARGIN_MS = 2500;

/** The source tree in its window, over disks that refuse or do not answer. */
class tst_TreeFaults : public CPageBed
{
    Q_OBJECT

private slots:
    void folderThatIsRefused_data();
    void folderThatIsRefused();
    void folderThatIsReadInPart();
    void folderThatLeadsBack();
    void windowAsksNoDisk_data();
    void windowAsksNoDisk();
    void folderThatHangs_data();
    void folderThatHangs();
    void volumeThatHangsAtTheStart_data();
    void volumeThatHangsAtTheStart();
    void kindOfAVolumeThatHangs();
    void manyVolumesThatHang();
    void lateFolderBringsWhatIsInIt();
    void hungFolderIsNotAskedTwice();
    void slowFolderIsAwaitedBeforeACount();
    void lateRowsStayOutOfACount();
    void lateRowsStayOutOfACopy();
    void lateRowsOfARemovedFolder();

private:
    QModelIndex At(const QString& strPath) const
    {
        const CDirModel* pModel = CDirModel::GetInstence();
        const QModelIndexList listVolume
            = pModel->match(pModel->index(0, 0), Qt::DisplayRole, m_pSource->Path(), 1, Qt::MatchExactly);
        return RowBelow(listVolume.value(0), strPath);
    }

    CDirNode* Node(const QString& strPath) const
    {
        return CDirModel::GetInstence()->nodeFromIndex(At(strPath));
    }
    QStringList Names(const QString& strPath) const
    {
        return RowNames(*CDirModel::GetInstence(), At(strPath));
    }

    /** What a tool tip says of a row beside its path. */
    QString Tip(const QString& strPath) const;
    /** What a screen reader hears of it beside its name. */
    QString Heard(const QString& strPath) const;
    /** The icon of a row as it stands in the window. */
    QImage Icon(const QString& strPath) const;
    /** Opens a folder; the milliseconds that the window was held for. */
    qint64 Open(const QString& strPath) const;
    /** Lists what is in a folder and waits so little that what does not answer is late at once. */
    void ListLate(const QString& strPath, std::chrono::milliseconds wait = 0ms) const
    {
        CDirModel::GetInstence()->LoadGrandChild(At(strPath), wait);
    }
};

QString tst_TreeFaults::Tip(const QString& strPath) const
{
    const QRect rect = Tree()->visualRect(At(strPath));
    const QPoint pos = rect.center();
    QHelpEvent event(QEvent::ToolTip, pos, Tree()->viewport()->mapToGlobal(pos));
    QApplication::sendEvent(Tree()->viewport(), &event);
    QString strTip = QToolTip::text();
    QToolTip::hideText();
    const QString strPart = "</p><p>";
    return strTip.contains(strPart) ? strTip.section(strPart, 1).remove("</p>") : QString();
}

QString tst_TreeFaults::Heard(const QString& strPath) const
{
    const CFileRowAccess* pRow = CFileTreeAccess::Of(Tree())->Row(At(strPath));
    return pRow ? pRow->text(QAccessible::Description) : QString();
}

QImage tst_TreeFaults::Icon(const QString& strPath) const
{
    const QRect rect = Tree()->visualRect(At(strPath));
    return Tree()->viewport()->grab(QRect(rect.left() + 16, rect.top(), 24, rect.height())).toImage();
}

qint64 tst_TreeFaults::Open(const QString& strPath) const
{
    QElapsedTimer time;
    time.start();
    Tree()->expand(At(strPath));
    return time.elapsed();
}

void tst_TreeFaults::folderThatIsRefused_data()
{
    QTest::addColumn<int>("nError");
    QTest::addColumn<QString>("strText");
    QTest::newRow("access") << EACCES << LOCKED;
    QTest::newRow("permission") << EPERM << LOCKED;
    QTest::newRow("the disk's error") << EIO << "This folder cannot be read: The disk reports an error.";
    QTest::newRow("in the cloud")
        << EDEADLK << "This folder cannot be read: Its contents are only in iCloud, not on this Mac.";
    QTest::newRow("gone") << ENOENT << "This folder cannot be read: It is not there any more.";
    QTest::newRow("another") << ENOMEM
                             << "This folder cannot be read: " + qt_error_string(ENOMEM).toHtmlEscaped();
}

void tst_TreeFaults::folderThatIsRefused()
{
    QFETCH(int, nError);
    QFETCH(QString, strText);
    WriteFile(m_pSource->Path("top/inner/file"));
    WriteFile(m_pSource->Path("top/other/file"));
    MakePage();
    Open(".");
    CFailingCalls::Fail(ENCall::OPEN_FOLDER, "top/inner", nError);
    Open("top");
    CFailingCalls::Reset();
    QCOMPARE(Tip("top/inner"), strText);
    QCOMPARE(Heard("top/inner"), strText + '\n' + m_pSource->Path("top/inner"));
    QVERIFY(Icon("top/inner") != Icon("top/other"));
    QCOMPARE(Tip("top/other"), QString());
    QCOMPARE(Heard("top/other"), m_pSource->Path("top/other"));
    QCOMPARE(Icon("top/other"), Icon("docs"));
    // What is listed after all looks like any other.
    Tree()->collapse(At("top"));
    Open("top");
    QCOMPARE(Names("top/inner"), QStringList("file"));
    QCOMPARE(Tip("top/inner"), QString());
    QCOMPARE(Icon("top/inner"), Icon("top/other"));
}

void tst_TreeFaults::folderThatIsReadInPart()
{
    for (const char* pszFile : {"top/inner/1", "top/inner/2", "top/inner/3", "top/other/file"}) {
        WriteFile(m_pSource->Path(pszFile));
    }
    MakePage();
    Open(".");
    // "." and ".." are read as well.
    CFailingCalls::Fail(ENCall::LIST, "top/inner", EIO, 4);
    Open("top");
    CFailingCalls::Reset();
    QCOMPARE(Names("top/inner").size(), 2);
    QCOMPARE(Tip("top/inner"), "Only a part of this folder can be read: The disk reports an error.");
    QVERIFY(Icon("top/inner") != Icon("top/other"));
}

void tst_TreeFaults::folderThatLeadsBack()
{
    QDir().mkpath(m_pSource->Path("top"));
    QVERIFY(QFile::link(".", m_pSource->Path("top/back")));
    MakePage();
    Open(".");
    Open("top");
    QCOMPARE(Tip("top/back"), "This link leads back to a folder that it lies in.");
}

void tst_TreeFaults::windowAsksNoDisk_data()
{
    QTest::addColumn<ENCall>("enCall");
    QTest::addColumn<QString>("strEnd");
    QTest::addColumn<bool>("bAsked"); // by another thread
    QTest::newRow("opening a folder") << ENCall::OPEN_FOLDER << "top" << true;
    QTest::newRow("opening a folder in it") << ENCall::OPEN_FOLDER << "top/inner" << true;
    QTest::newRow("reading it") << ENCall::LIST << "top/inner" << true;
    QTest::newRow("looking at it") << ENCall::STAT << "top/inner" << true;
    QTest::newRow("looking at a file") << ENCall::STAT << "top/photo.jpg" << false;
    QTest::newRow("opening a file") << ENCall::OPEN << "top/photo.jpg" << false;
}

void tst_TreeFaults::windowAsksNoDisk()
{
    QFETCH(ENCall, enCall);
    QFETCH(QString, strEnd);
    for (const char* pszFile : {"top/inner/file", "top/photo.jpg"}) {
        WriteFile(m_pSource->Path(pszFile));
    }
    MakePage();
    std::atomic<int> nByWindow{0};
    CFailingCalls::WatchAll(
        enCall, strEnd, [&nByWindow] { nByWindow += QThread::currentThread() == qApp->thread() ? 1 : 0; });
    Open(".");
    Open("top");
    CPageTree::Tick(m_pSource->Path("top"));
    Tree()->grab();
    for (const char* pszRow : {"top", "top/inner", "top/photo.jpg"}) {
        Tip(pszRow);
        Heard(pszRow);
    }
    QCOMPARE(nByWindow.load(), 0);
    QTEST(CFailingCalls::Calls() > 0, "bAsked");
    CFailingCalls::Reset();
}

void tst_TreeFaults::folderThatHangs_data()
{
    QTest::addColumn<ENCall>("enCall");
    QTest::newRow("when it is opened") << ENCall::OPEN_FOLDER;
    QTest::newRow("when it is read") << ENCall::LIST;
    QTest::newRow("when it is looked at") << ENCall::STAT;
}

void tst_TreeFaults::folderThatHangs()
{
    QFETCH(ENCall, enCall);
    for (const char* pszFolder : {"top/alive", "top/dead", "top/living"}) {
        WriteFile(m_pSource->Path(QString(pszFolder) + "/file"));
    }
    MakePage();
    Open(".");
    CPageTree::Tick(m_pSource->Path("top"));
    CHungDisk disk(enCall, "top/dead");
    const qint64 nHeld = Open("top");
    QVERIFY2(nHeld >= 4900 && nHeld < 5000 + MARGIN_MS, qPrintable(QString::number(nHeld)));
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(Tip("top/dead"), SILENT);
    QCOMPARE(Heard("top/dead"), SILENT + '\n' + m_pSource->Path("top/dead"));
    QVERIFY(Icon("top/dead") != Icon("top/alive"));
    QCOMPARE(Names("top/alive"), QStringList("file"));
    QCOMPARE(Names("top/living"), QStringList("file"));
    QCOMPARE(Tip("top/living"), QString());
    QVERIFY(CLeftBehind::Any());
    // The next folder is opened at once, and so is this one.
    QVERIFY(Open("docs") < MARGIN_MS);
    Tree()->collapse(At("top"));
    QVERIFY(Open("top") < MARGIN_MS);
    disk.LetGo();
    QTRY_COMPARE(Names("top/dead"), QStringList("file"));
    QCOMPARE(Node("top/dead/file")->m_chkState, int(Qt::Checked));
    QCOMPARE(Tip("top/dead"), QString());
    QCOMPARE(Icon("top/dead"), Icon("top/alive"));
    QTRY_VERIFY(!CLeftBehind::Any());
}

void tst_TreeFaults::volumeThatHangsAtTheStart_data()
{
    QTest::addColumn<ENCall>("enCall");
    QTest::newRow("when it is opened") << ENCall::OPEN_FOLDER;
    QTest::newRow("when it is read") << ENCall::LIST;
}

void tst_TreeFaults::volumeThatHangsAtTheStart()
{
    QFETCH(ENCall, enCall);
    CVolume second("Data", "/dev/nvme0n1p2", 5);
    WriteFile(second.Path("folder/file"));
    CHungDisk disk(enCall, "Macintosh HD");
    QElapsedTimer time;
    time.start();
    MakePage();
    QVERIFY2(time.elapsed() < 1500 + MARGIN_MS, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(CPageTree::Roots().size(), 2);
    QCOMPARE(Tip("."), SILENT);
    QCOMPARE(Names("."), QStringList());
    QVERIFY(CPageTree::Tick(second.Path("folder/file")));
    QVERIFY(CPageTree::Tick(m_pSource->Path()));
    QVERIFY(Tree()->HasUnlistedFolder());
    disk.LetGo();
    QTRY_COMPARE(Names("."), QStringList({"docs", "pics"}));
    QCOMPARE(Tip("."), QString());
    QCOMPARE(Node("docs")->m_chkState, int(Qt::Checked));
    // It can be opened as any other.
    QVERIFY(Open(".") < MARGIN_MS);
    QCOMPARE(Names("docs"), QStringList({"a.txt", "b.txt"}));
}

void tst_TreeFaults::kindOfAVolumeThatHangs()
{
    CHungDisk disk(ENCall::STAT, "Macintosh HD", true);
    QElapsedTimer time;
    time.start();
    CFileTreeView view;
    view.Parse({m_pSource->Path()});
    QVERIFY2(time.elapsed() < 1500 + MARGIN_MS, qPrintable(QString::number(time.elapsed())));
    QVERIFY(Node(".")->m_bDir);
    QCOMPARE(Names("."), QStringList({"docs", "pics"}));
}

void tst_TreeFaults::manyVolumesThatHang()
{
    // All are asked at the same time: the wait is one, not one for each.
    QStringList listPath;
    for (int n = 1; n <= 8; ++n) {
        listPath.append(m_pSource->Path("pics/%1/dead").arg(n));
        WriteFile(listPath.last() + "/file");
    }
    CHungDisk disk(ENCall::OPEN_FOLDER, "dead", true);
    QElapsedTimer time;
    time.start();
    CFileTreeView view;
    view.Parse(listPath);
    QVERIFY2(time.elapsed() < 1500 + MARGIN_MS, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(CFailingCalls::Calls(), 8);
    const CDirModel* pModel = CDirModel::GetInstence();
    for (int n = 0; n < 8; ++n) {
        QCOMPARE(pModel->rowCount(pModel->index(n, 0)), 0);
    }
    view.show();
    disk.LetGo();
    for (int n = 0; n < 8; ++n) {
        QTRY_COMPARE(pModel->rowCount(pModel->index(n, 0)), 1);
    }
}

void tst_TreeFaults::lateFolderBringsWhatIsInIt()
{
    WriteFile(m_pSource->Path("top/inner/file"));
    MakePage();
    CHungDisk disk(ENCall::OPEN_FOLDER, "top");
    ListLate("top");
    QVERIFY(Names("top").isEmpty());
    disk.LetGo();
    // Two levels, as in time: what can be opened has its arrow.
    QTRY_COMPARE(Names("top"), QStringList("inner"));
    QTRY_COMPARE(Names("top/inner"), QStringList("file"));
}

void tst_TreeFaults::hungFolderIsNotAskedTwice()
{
    WriteFile(m_pSource->Path("top/dead/file"));
    MakePage();
    Open(".");
    CHungDisk disk(ENCall::OPEN_FOLDER, "top/dead");
    for (int n = 0; n < 5; ++n) {
        ListLate("top");
    }
    QTRY_COMPARE(CFailingCalls::Calls(), 1);
    // Nobody waits for it any more, and still it is told in the end that it does not answer.
    QTRY_COMPARE_WITH_TIMEOUT(Node("top/dead")->m_enListed, ENListed::OVERDUE, 20000);
    disk.LetGo();
    QTRY_COMPARE(Names("top/dead"), QStringList("file"));
    QCOMPARE(CFailingCalls::Calls(), 1);
}

void tst_TreeFaults::slowFolderIsAwaitedBeforeACount()
{
    WriteFile(m_pSource->Path("top/slow/file"));
    MakePage();
    Open(".");
    CPageTree::Tick(m_pSource->Path());
    CHungDisk disk(ENCall::OPEN_FOLDER, "top/slow");
    ListLate("top");
    QVERIFY(Names("top/slow").isEmpty());
    std::thread helper([&disk] {
        std::this_thread::sleep_for(100ms);
        disk.LetGo();
    });
    Tree()->LendNodes(true);
    helper.join();
    // Of a volume that is ticked as a whole the worker lists nothing: who does not wait loses it.
    QCOMPARE(CDirModel::GetInstence()->GetRootNode()->CountUnlisted(), 0);
    Tree()->LendNodes(false);
    QCOMPARE(Names("top/slow"), QStringList("file"));
    QCOMPARE(Node("top/slow/file")->m_chkState, int(Qt::Checked));
}

void tst_TreeFaults::lateRowsStayOutOfACount()
{
    for (const char* pszFile : {"top/dead/file", "top/other/file"}) {
        WriteFile(m_pSource->Path(pszFile));
    }
    MakePage();
    Open(".");
    CPageTree::Tick(m_pSource->Path("top"));
    CHungDisk disk(ENCall::OPEN_FOLDER, "top/dead");
    ListLate("top", 1000ms);
    CDirNode* pDead = Node("top/dead");
    QCOMPARE(pDead->m_enListed, ENListed::OVERDUE);
    QTRY_COMPARE(Names("top/other"), QStringList("file"));
    Tree()->LendNodes(true);
    disk.LetGo();
    QTRY_VERIFY(!CLeftBehind::Any());
    QVERIFY(!QTest::qWaitFor([&] { return !pDead->m_listChild.isEmpty(); }, 50));
    // The worker lists it itself; nothing comes twice.
    pDead->LoadChild();
    Tree()->LendNodes(false);
    QVERIFY(!QTest::qWaitFor([&] { return Names("top/dead") != QStringList("file"); }, 50));
}

void tst_TreeFaults::lateRowsStayOutOfACopy()
{
    WriteFile(m_pSource->Path("top/dead/file"));
    MakePage();
    Open(".");
    CHungDisk disk(ENCall::OPEN_FOLDER, "top/dead");
    ListLate("top");
    m_pPage->hide();
    disk.LetGo();
    QTRY_VERIFY(!CLeftBehind::Any());
    QVERIFY(!QTest::qWaitFor([&] { return !Node("top/dead")->m_listChild.isEmpty(); }, 50));
    m_pPage->show();
    QTRY_COMPARE(Names("top/dead"), QStringList("file"));
}

void tst_TreeFaults::lateRowsOfARemovedFolder()
{
    WriteFile(m_pSource->Path("top/dead/file"));
    MakePage();
    Open(".");
    CHungDisk disk(ENCall::OPEN_FOLDER, "top/dead");
    ListLate("top");
    QTRY_COMPARE(CFailingCalls::Calls(), 1);
    CDirModel::GetInstence()->ClearGrandChild(At("."));
    QVERIFY(Names("top").isEmpty());
    QVERIFY(CLeftBehind::Any());
    disk.LetGo();
    QTRY_VERIFY(!CLeftBehind::Any());
    QVERIFY(!QTest::qWaitFor([&] { return !Names("top").isEmpty(); }, 50));
    Tree()->collapse(At("."));
    Open(".");
    Open("top");
    QCOMPARE(Names("top/dead"), QStringList("file"));
}

QTEST_MAIN(tst_TreeFaults)
#include "tst_TreeFaults.moc"
