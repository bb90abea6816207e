#include "app/CFontFallback.h"

#include <QFile>
#include <QFont>
#include <QLabel>
#include <QtTest>

class tst_CFontFallback : public QObject
{
    Q_OBJECT

private slots:
    void families_data();
    void families();
    void eachFamilyOnce();
    void installFollowsThePreferences();
};

void tst_CFontFallback::families_data()
{
    QTest::addColumn<QStringList>("listLanguage");
    QTest::addColumn<QString>("strOrder");
    const auto row = [](const QStringList& listLanguage, const char* pOrder) {
        const QString strName = listLanguage.join(QLatin1Char(' '));
        QTest::newRow(strName.isEmpty() ? "(none)" : qPrintable(strName))
            << listLanguage << QString::fromLatin1(pOrder);
    };
    row({}, "JP SC TC KR");
    row({QStringLiteral("en"), QStringLiteral("de")}, "JP SC TC KR");
    row({QStringLiteral("ja")}, "JP SC TC KR");
    row({QStringLiteral("zh-Hant-TW")}, "TC JP SC KR");
    row({QStringLiteral("zh-HK-Hant")}, "TC JP SC KR");
    row({QStringLiteral("zh-Hans-CN")}, "SC JP TC KR");
    row({QStringLiteral("zh")}, "SC JP TC KR");
    row({QStringLiteral("ko-KR")}, "KR JP SC TC");
    row({QStringLiteral("yue-Hant")}, "TC JP SC KR");
    row({QStringLiteral("de"), QStringLiteral("zh-Hant"), QStringLiteral("ja")}, "TC JP SC KR");
    row({QStringLiteral("zh-Hans"), QStringLiteral("ko"), QStringLiteral("zh-Hant")}, "SC KR TC JP");
}

void tst_CFontFallback::families()
{
    QFETCH(QStringList, listLanguage);
    QFETCH(QString, strOrder);
    QStringList listExpected{QStringLiteral("Lato"), QStringLiteral("Noto Sans")};
    for (const QString& strForms : strOrder.split(QLatin1Char(' '))) {
        listExpected.append(QStringLiteral("Noto Sans CJK ") + strForms);
    }
    QCOMPARE(CFontFallback::Families(listLanguage), listExpected);
}

void tst_CFontFallback::eachFamilyOnce()
{
    QStringList listFamily = CFontFallback::Families({QStringLiteral("ja"), QStringLiteral("ja-JP")});
    QCOMPARE(listFamily.size(), 6);
    QCOMPARE(listFamily.removeDuplicates(), 0);
}

void tst_CFontFallback::installFollowsThePreferences()
{
    QFile file(QStringLiteral("/Library/Preferences/.GlobalPreferences.plist"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<plist version=\"1.0\"><dict><key>AppleLanguages</key><array><string>zh-Hant</string></array>"
               "</dict></plist>");
    file.close();
    QVERIFY(QFont::substitutes(QStringLiteral("Avenir")).isEmpty());
    CFontFallback::Install();
    // Qt keeps the names in small letters.
    QCOMPARE(QFont::substitutes(QStringLiteral("Avenir")).join(QLatin1Char(',')),
             CFontFallback::Families({QStringLiteral("zh-Hant")}).join(QLatin1Char(',')).toLower());
    // A text whose size nobody sets has one that no desktop changes.
    QCOMPARE(QLabel().font().pixelSize(), 13);
    QCOMPARE(QLabel().font().family(), QStringLiteral("Avenir"));
    QVERIFY(file.remove());
}

QTEST_MAIN(tst_CFontFallback)
#include "tst_CFontFallback.moc"
