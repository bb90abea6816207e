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
    void linesReachTheLogAndTheHandlerBefore();
    void lineBreaksStayInOneLine();
    void linesComeFromAnyThread();

private:
    std::unique_ptr<CLogCapture> m_pBefore;
};

void tst_CMessageRelay::initTestCase()
{
    UseLogFile();
    m_pBefore = std::make_unique<CLogCapture>();
    CMessageRelay::Install();
}

void tst_CMessageRelay::linesReachTheLogAndTheHandlerBefore()
{
    qDebug("a diagnostic");
    QVERIFY(LogLines().contains("a diagnostic"));
    QVERIFY(m_pBefore->Has("a diagnostic"));
}

void tst_CMessageRelay::lineBreaksStayInOneLine()
{
    qDebug().noquote() << "two\nlines";
    QVERIFY(LogLines().contains("two\\nlines"));
}

void tst_CMessageRelay::linesComeFromAnyThread()
{
    std::thread worker([] { qWarning("from a worker"); });
    worker.join();
    QVERIFY(LogLines().contains("from a worker"));
}

QTEST_GUILESS_MAIN(tst_CMessageRelay)
#include "tst_CMessageRelay.moc"
