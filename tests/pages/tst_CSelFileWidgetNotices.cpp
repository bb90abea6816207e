#include "copy/CCopyText.h"
#include "log/CLogTarnwick.h"
#include "pages/CNoticeLine.h"
#include "pages/CPageBed.h"
#include "support/CModalAnswerer.h"

#include <QApplication>
#include <QDir>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <functional>
#include <thread>

static const char UNLISTED[] = "Only opened folders of a fully ticked volume are copied.";

/** What the page says beside its Copy button, and when it stops saying so. */
class tst_CSelFileWidgetNotices : public CPageBed
{
    Q_OBJECT

private slots:
    void lastCopy_data();
    void lastCopy();
    void lastCopyStandsUntilTheNextPress();
    void listOfTheLastCopyOpens();
    void linkIsReachedBeforeCopy();

    void tickedVolumeWithFoldersThatWereNotOpened();
    void openedFolderThatLeavesSomethingOut();
    void linkThatLeadsBack();

    void otherDestination_data();
    void otherDestination();
    void copyThatKeepsItsDiskSaysNothing();

    void spaceIsReadAnewWhenThePageComesBack();
    void refusedForWantOfSpaceTellsHowMuch_data();
    void refusedForWantOfSpaceTellsHowMuch();
    void noticeMovesNothing();

    void logThatIsKeptElsewhere();
    void logThatIsKeptNowhere();

private:
    QString Notice() const { return m_pPage->findChild<CNoticeLine*>()->Text(); }
    QPushButton* Link() const { return m_pPage->findChild<QPushButton*>("m_pNoticeLink"); }
    void Open(const QString& strName) const;
};

static STCopyAccount Account(const std::function<void(STCopyAccount&)>& fnChange)
{
    STCopyAccount stAccount;
    stAccount.nFiles = 4;
    stAccount.nBytes = 3000;
    stAccount.enFlush = ENCopyFlush::DONE;
    fnChange(stAccount);
    return stAccount;
}

static STCopyAccount NotWhole()
{
    return Account([](STCopyAccount& stAccount) {
        STCopyItem stItem;
        stItem.strPath = "/Volumes/Macintosh HD/docs/b.txt";
        stItem.enProblem = ENCopyProblem::SOURCE_READ;
        stAccount.nProblems = 2;
        stAccount.listItem = {stItem, stItem};
    });
}

void tst_CSelFileWidgetNotices::lastCopy_data()
{
    QTest::addColumn<STCopyAccount>("stAccount");
    QTest::addColumn<bool>("bSaid");
    QTest::addColumn<bool>("bList");
    QTest::newRow("whole") << Account([](STCopyAccount&) {}) << false << false;
    QTest::newRow("none yet") << STCopyAccount() << false << false;
    QTest::newRow("items missing") << NotWhole() << true << true;
    QTest::newRow("stopped") << Account([](STCopyAccount& st) { st.bStopped = true; }) << true << false;
    QTest::newRow("not confirmed") << Account([](STCopyAccount& st) { st.enFlush = ENCopyFlush::FAILED; })
                                   << true << false;
    QTest::newRow("list not saved") << Account([](STCopyAccount& st) {
        st.bStopped = true;
        st.bReportMissing = true;
    }) << true << false;
    QTest::newRow("disk gone") << Account([](STCopyAccount& st) { st.bGone = true; }) << true << false;
}

void tst_CSelFileWidgetNotices::lastCopy()
{
    QFETCH(STCopyAccount, stAccount);
    QFETCH(bool, bSaid);
    MakePage({"STICK"});
    m_pPage->ShowLastCopy(stAccount, "<b>%1</b>");
    const QString strMissing = stAccount.bReportMissing ? ' ' + CCopyText::ReportMissing() : QString();
    QCOMPARE(Notice(), bSaid ? "<b>%1</b>: " + CCopyText::Summary(stAccount) + strMissing : QString());
    QTEST(Link()->isVisible(), "bList");
    // The next copy was whole.
    m_pPage->ShowLastCopy(Account([](STCopyAccount&) {}), "STICK");
    QCOMPARE(Notice(), QString());
    QVERIFY(!Link()->isVisible());
}

void tst_CSelFileWidgetNotices::lastCopyStandsUntilTheNextPress()
{
    MakePage({"STICK"});
    m_pPage->ShowLastCopy(NotWhole(), "STICK");
    const QString strNotice = "STICK: 2 of 6 items were not copied whole.";
    QCOMPARE(Notice(), strNotice);
    QVERIFY(Tick());
    m_pPage->OnRefreshUSB();
    Choose("STICK");
    QCOMPARE(Notice(), strNotice);
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QCOMPARE(Notice(), QString());
    QTRY_VERIFY(SizeThread()->isFinished());
}

void tst_CSelFileWidgetNotices::listOfTheLastCopyOpens()
{
    MakePage({"STICK"});
    m_pPage->ShowLastCopy(NotWhole(), "STICK");
    QWidget* pDialog = nullptr;
    int nRows = 0;
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([&] {
        pDialog = QApplication::activeModalWidget();
        nRows = pDialog->findChild<QListWidget*>()->count();
    });
    QTest::mouseClick(Link(), Qt::LeftButton);
    QVERIFY(pDialog);
    QCOMPARE(nRows, 2);
}

void tst_CSelFileWidgetNotices::linkIsReachedBeforeCopy()
{
    MakePage({"STICK"});
    QVERIFY(Tick());
    m_pPage->ShowLastCopy(NotWhole(), "STICK");
    Refresh()->setFocus();
    QTest::keyClick(Refresh(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), Link());
    QTest::keyClick(Link(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), CompleteBox());
    QTest::keyClick(CompleteBox(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), CopyBtn());
    QTest::keyClick(CopyBtn(), Qt::Key_Backtab);
    QTest::keyClick(CompleteBox(), Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), Link());
}

// ---------------------------------------------------------------- the tree

/** The row of that name below another one; invalid when there is none. */
static QModelIndex Row(const QString& strName, const QModelIndex& parent)
{
    const CDirModel* pModel = CDirModel::GetInstence();
    for (int n = 0; n < pModel->rowCount(parent); ++n) {
        const QModelIndex index = pModel->index(n, 0, parent);
        if (index.data().toString() == strName) {
            return index;
        }
    }
    return QModelIndex();
}

/** Opens the volume and a folder that stands directly in it. */
void tst_CSelFileWidgetNotices::Open(const QString& strName) const
{
    const QModelIndex volume = CDirModel::GetInstence()->index(0, 0);
    Tree()->expand(volume);
    Tree()->expand(Row(strName, volume));
}

void tst_CSelFileWidgetNotices::tickedVolumeWithFoldersThatWereNotOpened()
{
    WriteFile(m_pSource->Path("docs/sub/c.txt"));
    WriteFile(m_pSource->Path("docs/sub/deep/d.txt"));
    MakePage({"STICK"});
    Tree()->ToggleTick(CDirModel::GetInstence()->index(0, 0));
    QCOMPARE(Notice(), QString(UNLISTED));
    Tree()->ToggleTick(CDirModel::GetInstence()->index(0, 0));
    QCOMPARE(Notice(), QString());
}

void tst_CSelFileWidgetNotices::openedFolderThatLeavesSomethingOut()
{
    WriteFile(m_pSource->Path("docs/devices/c.txt"));
    WriteFile(m_pSource->Path("docs/homework.txt"));
    MakePage({"STICK"});
    Open("docs");
    QCOMPARE(Notice(), "Entries left out of docs because of their names: 2");
    Open("pics");
    QCOMPARE(Notice(), QString());
}

void tst_CSelFileWidgetNotices::linkThatLeadsBack()
{
    QVERIFY(QFile::link(m_pSource->Path("docs"), m_pSource->Path("docs/loop")));
    MakePage({"STICK"});
    Open("docs");
    QCOMPARE(Notice(), QString());
    const QModelIndex index = Row("loop", Row("docs", CDirModel::GetInstence()->index(0, 0)));
    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, Tree()->visualRect(index).center());
    QCOMPARE(Notice(), "loop: It is a link to a folder that it lies in.");
}

// ---------------------------------------------------------------- destinations

void tst_CSelFileWidgetNotices::otherDestination_data()
{
    QTest::addColumn<QString>("strChosen");
    QTest::addColumn<QString>("strEvent"); // "+" arrives, "-" leaves
    QTest::addColumn<QString>("strNotice");
    QTest::newRow("another one arrives, the first stays") << "first"
                                                          << "+"
                                                          << "";
    QTest::newRow("another one arrives, the second was chosen") << "second"
                                                                << "+"
                                                                << "first";
    QTest::newRow("the first one leaves, which was shown") << "first"
                                                           << "-first"
                                                           << "second";
    QTest::newRow("the second one leaves, which was chosen") << "second"
                                                             << "-second"
                                                             << "first";
    QTest::newRow("the second one leaves, the first was shown") << "first"
                                                                << "-second"
                                                                << "";
    QTest::newRow("a search") << "second"
                              << "search"
                              << "first";
}

void tst_CSelFileWidgetNotices::otherDestination()
{
    QFETCH(QString, strChosen);
    QFETCH(QString, strEvent);
    QFETCH(QString, strNotice);
    MakePage({"ONE", "TWO"});
    const QMap<QString, QString> mapName{{"first", Listed().at(0)}, {"second", Listed().at(1)}};
    QCOMPARE(Notice(), QString());
    if (strChosen != "first") {
        Choose(mapName[strChosen]);
    }
    QCOMPARE(Notice(), QString());
    if (strEvent == "+") {
        Plug("THREE");
        Arrive("THREE");
    } else if (strEvent == "search") {
        m_pPage->SlotRefreshUSB();
    } else {
        Leave(mapName[strEvent.mid(1)]);
    }
    const QString strExpected
        = strNotice.isEmpty() ? QString() : "The destination is now " + mapName[strNotice];
    QCOMPARE(Notice(), strExpected);
    m_pPage->OnRefreshUSB();
    QCOMPARE(Notice(), strExpected);
    // Who chooses a disk knows of it.
    Choose(Listed().last());
    QCOMPARE(Notice(), QString());
}

void tst_CSelFileWidgetNotices::copyThatKeepsItsDiskSaysNothing()
{
    MakePage({"ONE", "TWO"});
    const QString strSecond = Listed().at(1);
    Choose(strSecond);
    QVERIFY(Tick());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    m_pPage->OnRefreshUSB(); // chooses the first one
    QCOMPARE(Notice(), "The destination is now " + Listed().at(0));
    QTRY_COMPARE(spyCopy.count(), 1);
    QCOMPARE(m_pPage->GetUsbName(), strSecond);
    QCOMPARE(Notice(), QString());
}

void tst_CSelFileWidgetNotices::spaceIsReadAnewWhenThePageComesBack()
{
    Plug("STICK", 100);
    MakePage();
    QVERIFY(Label("bottomLab")->text().contains(">0.10GB</span> Available"));
    m_pPage->hide();
    WriteFile(Stick("STICK").Path("copy"), QByteArray(50 * 1024 * 1024, 'x'));
    m_pPage->show();
    QVERIFY(Label("bottomLab")->text().contains(">0.05GB</span> Available"));
}

void tst_CSelFileWidgetNotices::refusedForWantOfSpaceTellsHowMuch_data()
{
    QTest::addColumn<bool>("bGone");
    QTest::newRow("too large") << false;
    QTest::newRow("the disk has gone") << true;
}

void tst_CSelFileWidgetNotices::refusedForWantOfSpaceTellsHowMuch()
{
    QFETCH(bool, bGone);
    MakePage({"STICK"});
    QVERIFY(Tick("pics"));
    const QString strFree
        = CCopyText::Bytes(QStorageInfo("/Volumes/STICK").bytesAvailable() - 8 * 1024 * 1024);
    WriteFile(Stick("STICK").Path("used"), QByteArray(8 * 1024 * 1024, 'x'));
    QString strDetail = "no detail";
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([&strDetail] {
        const auto* pDetail = QApplication::activeModalWidget()->findChild<QLabel*>("label_detail");
        strDetail = pDetail->isVisible() ? pDetail->text() : QString();
    });
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    if (bGone) {
        Stick("STICK").Pull(); // while it counts
    }
    QTRY_VERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QCOMPARE(strDetail, bGone ? QString() : QString("3.15 MB are needed, %1 are free.").arg(strFree));
}

void tst_CSelFileWidgetNotices::noticeMovesNothing()
{
    MakePage({"STICK"});
    const QRect rectCopy = PlaceIn(m_pPage, CopyBtn());
    const QRect rectBar = PlaceIn(m_pPage, m_pPage->findChild<QWidget*>("m_pBottomWidget"));
    m_pPage->ShowLastCopy(NotWhole(), QString(300, 'W'));
    QCoreApplication::sendPostedEvents();
    m_pPage->grab();
    QCOMPARE(PlaceIn(m_pPage, CopyBtn()), rectCopy);
    QCOMPARE(PlaceIn(m_pPage, m_pPage->findChild<QWidget*>("m_pBottomWidget")), rectBar);
    QVERIFY(PlaceIn(m_pPage, Link()).right() < rectCopy.left());
    QVERIFY(Notice().contains("2 of 6 items were not copied whole."));
}

// ---------------------------------------------------------------- the log

void tst_CSelFileWidgetNotices::logThatIsKeptElsewhere()
{
    const QString strLog = QCoreApplication::applicationDirPath() + "/Log";
    const QString strElsewhere = QDir::tempPath() + "/Tarnwick Log";
    MakePage();
    QCOMPARE(Notice(), QString());
    // While the program runs, and by a line of another thread.
    QVERIFY(QDir(strLog).removeRecursively());
    WriteFile(strLog, "no folder");
    std::thread([] { g_TarnwickLog.LogExt("line"); }).join();
    QTRY_COMPARE(Notice(), "The log is kept in " + strElsewhere);
    // What is more serious stands before it.
    m_pPage->ShowLastCopy(NotWhole(), "STICK");
    QVERIFY(Notice().startsWith("STICK: 2 of 6"));
    QVERIFY(Notice().endsWith(strElsewhere));
    // And when it was so before there was a window.
    m_pHost.reset();
    CPageTree::Clear();
    MakePage();
    QCOMPARE(Notice(), "The log is kept in " + strElsewhere);
    QVERIFY(QFile::remove(strLog));
    QVERIFY(QDir(strElsewhere).removeRecursively());
}

void tst_CSelFileWidgetNotices::logThatIsKeptNowhere()
{
    const QString strLog = QCoreApplication::applicationDirPath() + "/Log";
    const QTemporaryDir temp;
    const QByteArray baTemp = QFile::encodeName(temp.path());
    QVERIFY(CVolume::Mount("temp", baTemp));
    QVERIFY(CVolume::MakeReadOnly(baTemp));
    const QByteArray baBefore = qgetenv("TMPDIR");
    qputenv("TMPDIR", baTemp);
    QVERIFY(QDir(strLog).removeRecursively());
    WriteFile(strLog, "no folder");
    MakePage();
    qputenv("TMPDIR", baBefore);
    QTRY_COMPARE(Notice(), QString("The log cannot be written."));
    QVERIFY(CVolume::Unmount(baTemp));
    QVERIFY(QFile::remove(strLog));
}

QTEST_MAIN(tst_CSelFileWidgetNotices)
#include "tst_CSelFileWidgetNotices.moc"
