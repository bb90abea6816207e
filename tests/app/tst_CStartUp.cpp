#include "app/CStartUp.h"

#include <QFile>
#include <QTest>

class tst_CStartUp : public QObject
{
    Q_OBJECT

private slots:
    void ChooseScale_data();
    void ChooseScale();
    void StyleSheetText_data();
    void StyleSheetText();
    void StyleSheetIsInTheBundle();
    void CentredPosition_data();
    void CentredPosition();
};

void tst_CStartUp::ChooseScale_data()
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
}

void tst_CStartUp::ChooseScale()
{
    QFETCH(int, nWidth);
    const STScale scale = CStartUp::ChooseScale(nWidth);
    QTEST(scale.bHighDpiAttribute, "bAttribute");
    QTEST(scale.baFactor, "baFactor");
}

void tst_CStartUp::StyleSheetText_data()
{
    QTest::addColumn<QByteArray>("baContent");
    QTest::addColumn<QString>("strText");

    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("plain") << QByteArray("QLabel{}") << QStringLiteral("QLabel{}");
    QTest::newRow("cut at a zero byte") << QByteArray("QLabel{}\0QFrame{}", 17) << QStringLiteral("QLabel{}");
    QTest::newRow("zero byte first") << QByteArray("\0QFrame{}", 9) << QString();
    QTest::newRow("Latin-1") << QByteArray("/*\xe9*/") << QStringLiteral("/*%1*/").arg(QChar(0xe9));
}

void tst_CStartUp::StyleSheetText()
{
    QFETCH(QByteArray, baContent);
    QTEST(CStartUp::StyleSheetText(baContent), "strText");
}

void tst_CStartUp::StyleSheetIsInTheBundle()
{
    QFile file(QStringLiteral(":/res/TarnwickMacPE.qss"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray baContent = file.readAll();
    QCOMPARE(CStartUp::StyleSheetText(baContent).size(), baContent.size());
    QVERIFY(baContent.contains("QPushButton#toolBtn"));
}

void tst_CStartUp::CentredPosition_data()
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

void tst_CStartUp::CentredPosition()
{
    QFETCH(QSize, sizeDesktop);
    QTEST(CStartUp::CentredPosition(sizeDesktop, QSize(1120, 690), QPoint(7, 9)), "ptExpected");
}

QTEST_GUILESS_MAIN(tst_CStartUp)
#include "tst_CStartUp.moc"
