#include "CFailingCalls.h"
#include "copy/CDiskWalk.h"
#include "copy/CGetFileSizeThread.h"
#include "files/CFileNameCodec.h"
#include "files/CLeftBehind.h"
#include "support/CGate.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "support/CWalkRecorder.h"

#include <QtTest>

#include <atomic>
#include <cerrno>
#include <memory>

using ENCall = CFailingCalls::ENCall;

Q_DECLARE_METATYPE(ENCall)

static const int GATE_MS = 60000;
static const int SLOW_MS = 50; // for which a disk does not answer

/** The walk over a disk that refuses calls or does not answer them. */
class tst_WalkFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void cleanup();

    void refusedCall_data();
    void refusedCall();
    void stopWhileAFolderIsBegun();
    void countPastARefusedCall();
    void countThatHangsIsLeftBehind_data();
    void countThatHangsIsLeftBehind();
    void countIsStoppedAtOnce();
    void countThatGoesOnShowsProgress();
    void listingIsStoppedAtOnce();
    void listingThatGoesOnShowsProgress();

private:
    void Fill(const QStringList& listEntry);
    void Hang(ENCall enCall, const QString& strEnd);

    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CNodeTree> m_pNodes;
    std::shared_ptr<CGate> m_pGate; // of the call that hangs
    std::shared_ptr<CGate> m_pHangs; // open when it has been made
};

void tst_WalkFaults::init()
{
    m_pTree = std::make_unique<CTempTree>();
    m_pNodes = std::make_unique<CNodeTree>();
    m_pNodes->Root()->m_bComplete = true;
    m_pGate = std::make_shared<CGate>();
    m_pHangs = std::make_shared<CGate>();
}

void tst_WalkFaults::cleanup()
{
    m_pGate->Open();
    QTRY_VERIFY(!CLeftBehind::Any());
    CFailingCalls::Reset();
}

void tst_WalkFaults::Fill(const QStringList& listEntry)
{
    for (const QString& strEntry : listEntry) {
        const QStringList listPart = strEntry.split(" -> ");
        if (listPart.size() > 1) {
            m_pTree->Link(listPart.at(0), listPart.at(1));
        } else {
            m_pTree->Write(strEntry, "12345");
        }
    }
}

/** The first such call does not return before cleanup. */
void tst_WalkFaults::Hang(ENCall enCall, const QString& strEnd)
{
    CFailingCalls::Watch(enCall, strEnd, [pGate = m_pGate, pHangs = m_pHangs] {
        pHangs->Open();
        pGate->Pass(GATE_MS);
    });
}

void tst_WalkFaults::refusedCall_data()
{
    QTest::addColumn<ENCall>("enCall");
    QTest::addColumn<QString>("strEnd");
    QTest::addColumn<QString>("strMore");
    QTest::addColumn<QStringList>("listLost");
    QTest::addColumn<QStringList>("listInstead");

    const QString strError = ", Input/output error";
    const QString strLook = ": it cannot be looked at" + strError;
    const QString strList = ": its contents cannot be listed" + strError;
    const QString strToEnd = ": its contents cannot be listed to the end" + strError;
    const auto fnRow
        = [](const char* pszRow, ENCall enCall, const QString& strEnd, const QStringList& listLost,
             const QStringList& listInstead, const QString& strMore = "T/k") {
              QTest::newRow(pszRow) << enCall << strEnd << strMore << listLost << listInstead;
          };
    fnRow("file is looked at", ENCall::STAT, "/T/f", {"T/f"}, {"left out /T/f" + strLook});
    fnRow("folder is looked at", ENCall::STAT, "/T/a", {"T/a/", "T/a/g"}, {"left out /T/a" + strLook});
    fnRow("item is looked at", ENCall::STAT, "/T", {"T/", "T/a/", "T/a/g", "T/f", "T/k", "T/l/", "T/l/h"},
          {"left out /T" + strLook});
    fnRow("folder is opened", ENCall::OPEN_FOLDER, "/T/a", {"T/a/g"}, {"left out /T/a" + strList});
    fnRow("folder is listed", ENCall::LIST, "/T/a", {"T/a/g"}, {"left out /T/a" + strToEnd});
    fnRow("link is read", ENCall::READ_LINK, "/T/l", {"T/l/", "T/l/h"}, {"left out /T/l" + strLook});
    fnRow("target is looked at", ENCall::STAT, "/x", {"T/l/", "T/l/h"}, {"left out /T/l" + strLook});
    fnRow("target is opened", ENCall::OPEN_FOLDER, "/x", {"T/l/h"}, {"left out /x" + strList});
    fnRow("folder above the target", ENCall::OPEN_FOLDER, "..", {"T/l/", "T/l/h"},
          {"left out /T/l" + strLook});
    fnRow("folder on the way, in the item", ENCall::OPEN_FOLDER, "/T/a", {"T/a/g"},
          {"T/k -> a/g", "left out /T/a" + strList}, "T/k -> a/g");
    fnRow("folder on the way, in the item and out of it", ENCall::OPEN_FOLDER, "/T/a", {"T/a/g"},
          {"left out /T/a" + strList, "left out /T/k" + strLook}, "T/k -> a/../../x/h");
}

void tst_WalkFaults::refusedCall()
{
    QFETCH(ENCall, enCall);
    QFETCH(QString, strEnd);
    QFETCH(QString, strMore);
    QFETCH(QStringList, listLost);
    QFETCH(QStringList, listInstead);
    Fill({"T/f", "T/a/g", "x/h", "T/l -> ../x", strMore});
    QStringList listExpected = {"T/", "T/a/", "T/a/g", "T/f", "T/l/", "T/l/h"};
    if (strMore == "T/k") {
        listExpected.append(strMore);
    }
    for (const QString& strLost : qAsConst(listLost)) {
        QVERIFY(listExpected.removeOne(strLost));
    }
    listExpected += listInstead;
    listExpected.sort();
    CWalkRecorder recorder(m_pTree->Path());
    CFailingCalls::Fail(enCall, strEnd, EIO);
    CDiskWalk({{m_pTree->Path("T"), m_pTree->Path()}}, recorder).Walk();
    CFailingCalls::Reset();
    QCOMPARE(recorder.Entries(), listExpected);
    QCOMPARE(recorder.m_listLine.filter("/ ends").size(),
             recorder.m_listLine.filter(QRegularExpression("/$")).size());
}

void tst_WalkFaults::stopWhileAFolderIsBegun()
{
    Fill({"T/a/g"});
    CWalkRecorder recorder(m_pTree->Path());
    recorder.m_fnEntry = [&recorder](const QString& strLine) {
        if (strLine == "T/a/") {
            recorder.m_nMostSteps = recorder.m_nSteps;
        }
    };
    CFailingCalls::Watch(ENCall::OPEN_FOLDER, "/T/a", [] {});
    CDiskWalk({{m_pTree->Path("T"), m_pTree->Path()}}, recorder).Walk();
    QCOMPARE(recorder.m_listLine, (QStringList{"T/", "T/a/"}));
    QCOMPARE(CFailingCalls::Calls(), 0);
}

void tst_WalkFaults::countPastARefusedCall()
{
    Fill({"T/f", "T/a/g", "T/b/h"});
    m_pNodes->Add(m_pTree->Path());
    CGetFileSizeThread worker;
    worker.SetRootNode(m_pNodes->Root());
    const QSignalSpy spy(&worker, &CGetFileSizeThread::SignalGetSizeFinish);
    CFailingCalls::Fail(ENCall::LIST, "/T/a", EIO);
    worker.run();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toLongLong(), qint64(10));
}

void tst_WalkFaults::countThatHangsIsLeftBehind_data()
{
    QTest::addColumn<ENCall>("enCall");
    QTest::addColumn<QString>("strEnd");
    QTest::newRow("file is looked at") << ENCall::STAT << "/T/f";
    QTest::newRow("folder is opened") << ENCall::OPEN_FOLDER << "/T/a";
    QTest::newRow("folder is listed") << ENCall::LIST << "/T/a";
    QTest::newRow("link is read") << ENCall::READ_LINK << "/T/l";
    QTest::newRow("item is looked at") << ENCall::STAT << "/T";
}

void tst_WalkFaults::countThatHangsIsLeftBehind()
{
    QFETCH(ENCall, enCall);
    QFETCH(QString, strEnd);
    Fill({"T/f", "T/a/g", "T/l -> a", "f"});
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    m_pNodes->Add(m_pTree->Path("T"), Qt::Checked, pEntry);
    Hang(enCall, strEnd);
    CGetFileSizeThread worker;
    worker.SetRootNode(m_pNodes->Root());
    const QSignalSpy spy(&worker, &CGetFileSizeThread::SignalGetSizeFinish);
    worker.start();
    QVERIFY(m_pHangs->Pass(GATE_MS));
    QTRY_VERIFY(worker.SinceProgressMs() > SLOW_MS);
    QVERIFY(worker.isRunning());
    // The nodes belong to the GUI again as soon as the worker has ended.
    worker.requestInterruption();
    QVERIFY(worker.wait(GATE_MS));
    m_pNodes->Clear();
    QVERIFY(CLeftBehind::Any());
    m_pGate->Open();
    QTRY_VERIFY(!CLeftBehind::Any());
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 0);
}

void tst_WalkFaults::countIsStoppedAtOnce()
{
    Fill({"T/f"});
    m_pTree->FillNumbered("T/%1", 1, 20000);
    m_pNodes->Add(m_pTree->Path());
    CGetFileSizeThread worker;
    worker.SetRootNode(m_pNodes->Root());
    // The stop comes in the middle of the walk, which nothing holds up.
    CFailingCalls::Watch(
        ENCall::STAT, "7", [&worker] { worker.requestInterruption(); }, 1);
    const QSignalSpy spy(&worker, &CGetFileSizeThread::SignalGetSizeFinish);
    worker.start();
    QVERIFY(worker.wait(GATE_MS));
    QVERIFY(!CLeftBehind::Any());
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 0);
}

void tst_WalkFaults::countThatGoesOnShowsProgress()
{
    Fill({"T/f", "T/a/g"});
    m_pNodes->Add(m_pTree->Path());
    CGetFileSizeThread worker;
    worker.SetRootNode(m_pNodes->Root());
    int nAnswers = 0;
    qint64 nWaited = 0;
    CFailingCalls::WatchAll(ENCall::STAT, "", [&] {
        nAnswers += worker.SinceProgressMs() < nWaited ? 1 : 0;
        do {
            QThread::yieldCurrentThread();
            nWaited = worker.SinceProgressMs();
        } while (nWaited < SLOW_MS);
    });
    worker.run();
    // The time since the last answer is less than a disk took before it has answered.
    QVERIFY(nAnswers > 0);
    QCOMPARE(worker.CurrentEntry(), QFileInfo(m_pTree->Path()).fileName());
}

void tst_WalkFaults::listingIsStoppedAtOnce()
{
    m_pTree->FillNumbered("T/%1.txt", 1, 2000);
    m_pNodes->Root()->m_bComplete = false;
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    m_pNodes->Add(m_pTree->Path("T"), Qt::Checked, pEntry);
    CGetFileSizeThread worker;
    worker.SetRootNode(m_pNodes->Root());
    const QSignalSpy spy(&worker, &CGetFileSizeThread::SignalGetSizeFinish);
    // The stop comes while a disk does not answer, which it does when the worker has ended.
    std::atomic<int> nLooks{0};
    CFailingCalls::WatchAll(ENCall::STAT, ".txt", [&] {
        if (++nLooks == 10) {
            worker.requestInterruption();
            m_pGate->Pass(GATE_MS);
        }
    });
    worker.start();
    QVERIFY(worker.wait(GATE_MS));
    QVERIFY(CLeftBehind::Any());
    m_pGate->Open();
    QTRY_VERIFY(!CLeftBehind::Any());
    QCOMPARE(nLooks.load(), 10);
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 0);
}

void tst_WalkFaults::listingThatGoesOnShowsProgress()
{
    m_pTree->FillNumbered("T/%1.txt", 1, 600);
    m_pNodes->Root()->m_bComplete = false;
    CDirNode* pEntry = m_pNodes->Add(m_pTree->Path(), Qt::PartiallyChecked);
    m_pNodes->Add(m_pTree->Path("T"), Qt::Checked, pEntry);
    CGetFileSizeThread worker;
    worker.SetRootNode(m_pNodes->Root());
    QVector<qint64> listSinceMs;
    CFailingCalls::WatchAll(ENCall::STAT, ".txt", [&] {
        while (listSinceMs.isEmpty() && worker.SinceProgressMs() < 10 * SLOW_MS) {
            QThread::yieldCurrentThread();
        }
        listSinceMs.append(worker.SinceProgressMs());
    });
    worker.run();
    QCOMPARE(listSinceMs.size(), 600);
    QVERIFY(listSinceMs.first() >= 10 * SLOW_MS);
    // That has been told after so many files.
    QVERIFY(listSinceMs.at(300) < listSinceMs.first());
}

QTEST_GUILESS_MAIN(tst_WalkFaults)
#include "tst_WalkFaults.moc"
