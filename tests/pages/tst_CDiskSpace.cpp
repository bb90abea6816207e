#include "pages/CDiskSpace.h"

#include <QTest>

#include <limits>

class tst_CDiskSpace : public QObject
{
    Q_OBJECT

private slots:
    void gigabyteText_data();
    void gigabyteText();
};

void tst_CDiskSpace::gigabyteText_data()
{
    QTest::addColumn<qint64>("nBytes");
    QTest::addColumn<QString>("strText");
    const auto row = [](const char* pName, qint64 nBytes, const char* pText) {
        QTest::newRow(pName) << nBytes << QString(pText);
    };
    row("nothing", 0, "0.00");
    row("invalid volume", -1, "0.00");
    row("stick, total", 15931539456, "15.93");
    row("stick, free", 15900000000, "15.90");
    row("decimal, not binary", 1073741824, "1.07");
    row("one", 1000000000, "1.00");
    row("rounded up", 4999999999, "5.00");
    row("below a hundredth", 4000000, "0.00");
    row("half a hundredth up", 5500000, "0.01");
    // In double precision this one would read 0.01.
    row("single precision, down", 5000000, "0.00");
    row("single precision, terabytes", 2000398934016, "2000.40");
    row("largest", std::numeric_limits<qint64>::max(), "9223371776.00");
}

void tst_CDiskSpace::gigabyteText()
{
    QFETCH(qint64, nBytes);
    QTEST(CDiskSpace::GigabyteText(nBytes), "strText");
}

QTEST_APPLESS_MAIN(tst_CDiskSpace)
#include "tst_CDiskSpace.moc"
