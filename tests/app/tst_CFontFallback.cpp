#include "app/CFontFallback.h"
#include "support/TestFiles.h"

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
        const QString strName = listLanguage.join(' ');
        QTest::newRow(strName.isEmpty() ? "(none)" : qPrintable(strName))
            << listLanguage << QString::fromLatin1(pOrder);
    };
    row({}, "JP SC TC KR");
    row({"en", "de"}, "JP SC TC KR");
    row({"ja"}, "JP SC TC KR");
    row({"zh-Hant-TW"}, "TC JP SC KR");
    row({"zh-HK-Hant"}, "TC JP SC KR");
    row({"zh-Hans-CN"}, "SC JP TC KR");
    row({"zh"}, "SC JP TC KR");
    row({"ko-KR"}, "KR JP SC TC");
    row({"yue-Hant"}, "TC JP SC KR");
    row({"de", "zh-Hant", "ja"}, "TC JP SC KR");
    row({"zh-Hans", "ko", "zh-Hant"}, "SC KR TC JP");
}

void tst_CFontFallback::families()
{
    QFETCH(QStringList, listLanguage);
    QFETCH(QString, strOrder);
    QStringList listExpected{"Lato", "Noto Sans"};
    for (const QString& strForms : strOrder.split(' ')) {
        listExpected.append("Noto Sans CJK " + strForms);
    }
    QCOMPARE(CFontFallback::Families(listLanguage), listExpected);
}

void tst_CFontFallback::eachFamilyOnce()
{
    QStringList listFamily = CFontFallback::Families({"ja", "ja-JP"});
    QCOMPARE(listFamily.size(), 6);
    QCOMPARE(listFamily.removeDuplicates(), 0);
}

void tst_CFontFallback::installFollowsThePreferences()
{
    const QString strPath = "/Library/Preferences/.GlobalPreferences.plist";
    WriteFile(strPath, R"(<plist version="1.0"><dict><key>AppleLanguages</key>
        <array><string>zh-Hant</string></array></dict></plist>)");
    QVERIFY(QFont::substitutes("Avenir").isEmpty());
    CFontFallback::Install();
    // Qt keeps the names in small letters.
    QCOMPARE(QFont::substitutes("Avenir").join(','),
             CFontFallback::Families({"zh-Hant"}).join(',').toLower());
    // A text whose size nobody sets has one that no desktop changes.
    QCOMPARE(QLabel().font().pixelSize(), 13);
    QCOMPARE(QLabel().font().family(), "Avenir");
    QVERIFY(QFile::remove(strPath));
}

QTEST_MAIN(tst_CFontFallback)
#include "tst_CFontFallback.moc"
