#include "app/CStartUp.h"

#include <QFile>
#include <QTest>

#include <climits>

class tst_CStartUp : public QObject
{
    Q_OBJECT

private slots:
    void chooseScale_data();
    void chooseScale();
    void styleSheetText_data();
    void styleSheetText();
    void styleSheetIsInTheBundle();
    void centredPosition_data();
    void centredPosition();
};

void tst_CStartUp::chooseScale_data()
{
    QTest::addColumn<int>("nWidth");
    QTest::addColumn<bool>("bAttribute");
    QTest::addColumn<QByteArray>("baFactor");

    QTest::newRow("no screen") << 0 << false << QByteArray();
    QTest::newRow("a usual screen") << 1440 << false << QByteArray();
    QTest::newRow("last without scaling") << 2500 << false << QByteArray();
    QTest::newRow("first of 1.5") << 2501 << true << QByteArray("1.5");
    QTest::newRow("within 1.5") << 2880 << true << QByteArray("1.5");
    QTest::newRow("last of 1.5") << 3499 << true << QByteArray("1.5");
    QTest::newRow("the gap") << 3500 << false << QByteArray();
    QTest::newRow("first of 2") << 3501 << false << QByteArray("2");
    QTest::newRow("far in 2") << 7680 << false << QByteArray("2");
    QTest::newRow("nonsense from the platform") << -1 << false << QByteArray();
    QTest::newRow("the least number") << INT_MIN << false << QByteArray();
    QTest::newRow("the greatest number") << INT_MAX << false << QByteArray("2");
}

void tst_CStartUp::chooseScale()
{
    QFETCH(int, nWidth);
    const STScale scale = CStartUp::ChooseScale(nWidth);
    QTEST(scale.bHighDpiAttribute, "bAttribute");
    QTEST(scale.baFactor, "baFactor");
}

void tst_CStartUp::styleSheetText_data()
{
    QTest::addColumn<QByteArray>("baContent");
    QTest::addColumn<QString>("strText");

    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("plain") << QByteArray("QLabel{}") << "QLabel{}";
    QTest::newRow("cut at a zero byte") << QByteArray("QLabel{}\0QFrame{}", 17) << "QLabel{}";
    QTest::newRow("zero byte first") << QByteArray("\0QFrame{}", 9) << QString();
    QTest::newRow("Latin-1") << QByteArray("/*\xe9*/") << QString("/*%1*/").arg(QChar(0xe9));
}

void tst_CStartUp::styleSheetText()
{
    QFETCH(QByteArray, baContent);
    QTEST(CStartUp::StyleSheetText(baContent), "strText");
}

void tst_CStartUp::styleSheetIsInTheBundle()
{
    QFile file(":/res/TarnwickMacPE.qss");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray baContent = file.readAll();
    QCOMPARE(CStartUp::StyleSheetText(baContent).size(), baContent.size());
    QVERIFY(baContent.contains("QPushButton#toolBtn"));
}

void tst_CStartUp::centredPosition_data()
{
    QTest::addColumn<QSize>("sizeDesktop");
    QTest::addColumn<QPoint>("ptExpected");

    QTest::newRow("larger desktop") << QSize(1920, 1080) << QPoint(400, 195);
    QTest::newRow("odd remainder is cut") << QSize(1921, 1081) << QPoint(400, 195);
    QTest::newRow("smaller desktop, towards zero") << QSize(1023, 599) << QPoint(-48, -45);
    QTest::newRow("no width") << QSize(0, 1080) << QPoint(7, 9);
    QTest::newRow("no height") << QSize(1920, 0) << QPoint(7, 9);
    QTest::newRow("no desktop") << QSize() << QPoint(7, 9);
}

void tst_CStartUp::centredPosition()
{
    QFETCH(QSize, sizeDesktop);
    QTEST(CStartUp::CentredPosition(sizeDesktop, QSize(1120, 690), QPoint(7, 9)), "ptExpected");
}

QTEST_GUILESS_MAIN(tst_CStartUp)
#include "tst_CStartUp.moc"
