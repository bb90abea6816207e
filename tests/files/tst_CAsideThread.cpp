#include "files/CAsideThread.h"
#include "files/CLeftBehind.h"
#include "support/CGate.h"

#include <QTest>

#include <thread>

static const int PATIENCE_MS = 20000;

static bool Never() { return false; }

class tst_CAsideThread : public QObject
{
    Q_OBJECT

private slots:
    void answersOneAfterTheOther();
    void givesUp();
    void oneThatIsBusyIsLeftBehind();
};

void tst_CAsideThread::answersOneAfterTheOther()
{
    CAsideThread thread;
    std::thread::id idFirst;
    for (int n = 0; n < 1000; ++n) {
        std::thread::id id;
        const auto answer = thread.Ask<int>(
            [n, &id] {
                id = std::this_thread::get_id();
                return n;
            },
            Never);
        QCOMPARE(answer.value_or(-1), n);
        QVERIFY(id != std::this_thread::get_id());
        QVERIFY(n == 0 || id == idFirst);
        idFirst = id;
    }
    QVERIFY(!CLeftBehind::Any());
}

void tst_CAsideThread::givesUp()
{
    const auto pGate = std::make_shared<CGate>();
    CAsideThread thread;
    int nAsked = 0;
    const auto fnGiveUp = [&nAsked] { return ++nAsked == 3; };
    QVERIFY(!thread.Ask<bool>([pGate] { return pGate->Pass(PATIENCE_MS); }, fnGiveUp));
    QCOMPARE(nAsked, 3);
    // It is still with the first question.
    QVERIFY(!thread.Ask<int>([] { return 1; }, Never));
    QVERIFY(!CLeftBehind::Any());
    pGate->Open();
    QTRY_COMPARE_WITH_TIMEOUT(thread.Ask<int>([] { return 1; }, Never).value_or(0), 1, PATIENCE_MS);
}

void tst_CAsideThread::oneThatIsBusyIsLeftBehind()
{
    const auto pGate = std::make_shared<CGate>();
    {
        CAsideThread thread;
        QVERIFY(!thread.Ask<bool>([pGate] { return pGate->Pass(PATIENCE_MS); }, [] { return true; }));
    }
    QVERIFY(CLeftBehind::Any());
    pGate->Open();
    QTRY_VERIFY_WITH_TIMEOUT(!CLeftBehind::Any(), PATIENCE_MS);
}

QTEST_GUILESS_MAIN(tst_CAsideThread)
#include "tst_CAsideThread.moc"
