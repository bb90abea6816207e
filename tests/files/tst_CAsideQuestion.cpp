#include "files/CAsideQuestion.h"
#include "support/CGate.h"

#include <QTest>

#include <memory>

using Question = CAsideQuestion<int>;

static const int PATIENCE_MS = 20000;
static const std::chrono::milliseconds PATIENCE(PATIENCE_MS);

class tst_CAsideQuestion : public QObject
{
    Q_OBJECT

private slots:
    void answerInTime();
    void noAnswerInTime();
    void tellsThatTheAnswerIsThere();
    void tellsNobodyWhoIsGone();
};

void tst_CAsideQuestion::answerInTime()
{
    QCOMPARE(Question::Ask(PATIENCE, [] { return 7; }).value_or(0), 7);

    const Question question([] { return 8; });
    QVERIFY(question.Wait(PATIENCE));
    QCOMPARE(question.Get().value_or(0), 8);
    QCOMPARE(question.Get().value_or(0), 8); // it stays
    QVERIFY(!CLeftBehind::Any());
}

void tst_CAsideQuestion::noAnswerInTime()
{
    const auto pGate = std::make_shared<CGate>();
    const auto fnAsk = [pGate] { return pGate->Pass(PATIENCE_MS) ? 1 : 2; };
    QVERIFY(!Question::Ask(std::chrono::milliseconds(1), fnAsk));
    QVERIFY(CLeftBehind::Any());
    pGate->Open();
    QTRY_VERIFY_WITH_TIMEOUT(!CLeftBehind::Any(), PATIENCE_MS);
}

void tst_CAsideQuestion::tellsThatTheAnswerIsThere()
{
    CGate told;
    const Question question([] { return 3; }, [&told] { told.Open(); });
    QVERIFY(told.Pass(PATIENCE_MS));
    QCOMPARE(question.Get().value_or(0), 3);
}

void tst_CAsideQuestion::tellsNobodyWhoIsGone()
{
    const auto pGate = std::make_shared<CGate>();
    const auto pTold = std::make_shared<CGate>();
    {
        const Question question([pGate] { return pGate->Pass(PATIENCE_MS) ? 1 : 2; },
                                [pTold] { pTold->Open(); });
        QVERIFY(!question.Get());
    }
    pGate->Open();
    QTRY_VERIFY_WITH_TIMEOUT(!CLeftBehind::Any(), PATIENCE_MS);
    QCOMPARE(pTold->Left(), 0);
}

QTEST_GUILESS_MAIN(tst_CAsideQuestion)
#include "tst_CAsideQuestion.moc"
