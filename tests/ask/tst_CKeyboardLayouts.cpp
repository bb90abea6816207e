#include "ask/CKeyboardLayouts.h"

#include <QLibrary>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {

// As xkbcommon's documentation has it.
struct STRuleNames
{
    const char* pRules = nullptr;
    const char* pModel = nullptr;
    const char* pLayout = nullptr;
    const char* pVariant = nullptr;
    const char* pOptions = nullptr;
};

}

class tst_CKeyboardLayouts : public QObject
{
    Q_OBJECT

private slots:
    void eachIsKnownToTheSystem();
    void eachIsThereOnce();
    void languagesOfTheWindowHaveOne_data();
    void languagesOfTheWindowHaveOne();
};

void tst_CKeyboardLayouts::eachIsKnownToTheSystem()
{
    // What the toolkit asks for the letters of keys.
    QLibrary library("xkbcommon", 0);
    QVERIFY2(library.load(), qPrintable(library.errorString()));
    const auto fnContext = reinterpret_cast<void* (*)(int)>(library.resolve("xkb_context_new"));
    const auto fnKeymap = reinterpret_cast<void* (*)(void*, const STRuleNames*, int)>(
        library.resolve("xkb_keymap_new_from_names"));
    const auto fnDrop = reinterpret_cast<void (*)(void*)>(library.resolve("xkb_keymap_unref"));
    const auto fnEnd = reinterpret_cast<void (*)(void*)>(library.resolve("xkb_context_unref"));
    QVERIFY(fnContext && fnKeymap && fnDrop && fnEnd);
    const std::unique_ptr<void, void (*)(void*)> ptrContext(fnContext(0), fnEnd);
    QVERIFY(ptrContext);
    const auto fnIsKnown = [&](const QByteArray& baCode) {
        const STRuleNames stNames{"evdev", nullptr, baCode.constData()};
        void* pKeymap = fnKeymap(ptrContext.get(), &stNames, 0);
        fnDrop(pKeymap);
        return pKeymap != nullptr;
    };
    QVERIFY(!fnIsKnown("nowhere") && !fnIsKnown("de(nowhere)"));
    for (const STKeyboardLayout& stLayout : CKeyboardLayouts::All()) {
        QVERIFY2(fnIsKnown(stLayout.strCode.toUtf8()), qPrintable(stLayout.strCode));
        QVERIFY(CKeyboardLayouts::IsName(stLayout.strCode));
    }
}

void tst_CKeyboardLayouts::eachIsThereOnce()
{
    QStringList listCode;
    QStringList listName;
    for (const STKeyboardLayout& stLayout : CKeyboardLayouts::All()) {
        listCode.append(stLayout.strCode);
        listName.append(stLayout.strName);
    }
    QVERIFY(listCode.size() > 20);
    QCOMPARE(listCode.removeDuplicates(), 0);
    QCOMPARE(listName.removeDuplicates(), 0);
}

void tst_CKeyboardLayouts::languagesOfTheWindowHaveOne_data()
{
    QTest::addColumn<QString>("strCode");
    for (const char* pCode : {"us", "gb", "de", "fr", "es", "it", "nl", "pt", "br", "jp", "cn", "tw"}) {
        QTest::newRow(pCode) << QString(pCode);
    }
}

void tst_CKeyboardLayouts::languagesOfTheWindowHaveOne()
{
    QFETCH(QString, strCode);
    const auto& listLayout = CKeyboardLayouts::All();
    QVERIFY(std::any_of(listLayout.begin(), listLayout.end(),
                        [&](const STKeyboardLayout& stLayout) { return stLayout.strCode == strCode; }));
}

QTEST_GUILESS_MAIN(tst_CKeyboardLayouts)
#include "tst_CKeyboardLayouts.moc"
