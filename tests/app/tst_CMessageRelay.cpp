#include "app/CMessageRelay.h"
#include "support/CLogCapture.h"
#include "support/LogFile.h"

#include <QTest>

#include <memory>
#include <thread>

class tst_CMessageRelay : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void LinesReachTheLogAndTheHandlerBefore();
    void LineBreaksStayInOneLine();
    void LinesComeFromAnyThread();

private:
    std::unique_ptr<CLogCapture> m_pBefore;
};

void tst_CMessageRelay::initTestCase()
{
    UseLogFile();
    m_pBefore = std::make_unique<CLogCapture>();
    CMessageRelay::Install();
}

void tst_CMessageRelay::LinesReachTheLogAndTheHandlerBefore()
{
    qDebug("a diagnostic");
    QVERIFY(LogLines().contains(QStringLiteral("a diagnostic")));
    QVERIFY(m_pBefore->Has(QStringLiteral("a diagnostic")));
}

void tst_CMessageRelay::LineBreaksStayInOneLine()
{
    qDebug().noquote() << "two\nlines";
    QVERIFY(LogLines().contains(QStringLiteral("two\\nlines")));
}

void tst_CMessageRelay::LinesComeFromAnyThread()
{
    std::thread worker([] { qWarning("from a worker"); });
    worker.join();
    QVERIFY(LogLines().contains(QStringLiteral("from a worker")));
}

QTEST_GUILESS_MAIN(tst_CMessageRelay)
#include "tst_CMessageRelay.moc"
