#include "copy/CVolumePath.h"
#include "copy/CVolumeRoot.h"
#include "support/CTempTree.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <climits>
#include <fcntl.h>
#include <memory>

Q_DECLARE_METATYPE(ENPathEnd)

class tst_CVolumePath : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void rootOfAVolume();
    void rootThatCannotBeOpened();
    void linkText();
    void follow_data();
    void follow();
    void goTo_data();
    void goTo();
    void fortyLinksAndNoMore();
    void chainIsOfTheFoldersThemselves();
    void beginsInAFolder();
    void stopped();

private:
    QByteArray Below(const CVolumePath& path) const { return path.Path().mid(m_pRoot->Path().size()); }

    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CVolumeRoot> m_pRoot;
};

static bool GoesOn() { return true; }

void tst_CVolumePath::init()
{
    m_pTree = std::make_unique<CTempTree>();
    m_pTree->Fill({"V/a/b/file", "V/file", "V/Volumes/inner/x", "V/tmp/", "outside"});
    m_pTree->Link("V/up", "..");
    m_pTree->Link("V/toA", "/a");
    m_pTree->Link("V/a/toB", "b");
    m_pTree->Link("V/circle", "circle");
    m_pRoot = std::make_unique<CVolumeRoot>(m_pTree->Path("V"));
}

void tst_CVolumePath::rootOfAVolume()
{
    QCOMPARE(m_pRoot->Error(), 0);
    QCOMPARE(m_pRoot->Name(), QByteArray("V"));
    const CVolumeRoot withEnd(m_pTree->Path("V") + "//");
    QCOMPARE(withEnd.Name(), QByteArray("V"));
    QCOMPARE(withEnd.Path(), m_pRoot->Path());
    QVERIFY(STFileId::Of(withEnd.State()) == STFileId::Of(m_pRoot->State()));
    const CVolumeRoot system("/");
    QCOMPARE(system.Path(), QByteArray("/"));
    QCOMPARE(system.Name(), QByteArray());
}

void tst_CVolumePath::rootThatCannotBeOpened()
{
    QCOMPARE(CVolumeRoot(m_pTree->Path("gone")).Error(), ENOENT);
    QCOMPARE(CVolumeRoot(m_pTree->Path("outside")).Error(), ENOTDIR);
}

void tst_CVolumePath::linkText()
{
    const QByteArray baLong(PATH_MAX - 1, 'x');
    m_pTree->Link("V/long", QFile::decodeName(baLong));
    QCOMPARE(ReadLinkText(m_pRoot->Descriptor(), "toA"), QByteArray("/a"));
    QCOMPARE(ReadLinkText(m_pRoot->Descriptor(), "long"), baLong);
    QVERIFY(ReadLinkText(m_pRoot->Descriptor(), "file").isNull());
    QCOMPARE(errno, EINVAL);
}

void tst_CVolumePath::follow_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<ENPathEnd>("enEnd");
    QTest::addColumn<QByteArray>("baFound");
    const auto fnFound = [](const char* pszText, const char* pszFound) {
        QTest::newRow(pszText) << QByteArray(pszText) << ENPathEnd::FOUND << QByteArray(pszFound);
    };
    const auto fnNot = [](const char* pszText, ENPathEnd enEnd) {
        QTest::newRow(pszText) << QByteArray(pszText) << enEnd << QByteArray();
    };
    fnFound("a", "/a");
    fnFound("a/", "/a");
    fnFound("a/.", "/a");
    fnFound("./a//b/../b/file", "/a/b/file");
    fnFound("/a/b", "/a/b");
    fnFound("//a", "/a");
    fnFound(".", "");
    fnFound("/", "");
    fnFound("../../a", "/a");
    fnFound("up/a", "/a");
    fnFound("toA/toB/file", "/a/b/file");
    fnFound("toA", "/a");
    fnFound("toA/..", "");
    fnFound("/Volumes/V", "");
    fnFound("/Volumes/V/a", "/a");
    fnFound("/Volumes/v/a", "/a");
    fnFound("/Volumes", "/Volumes");
    fnFound("Volumes/inner/x", "/Volumes/inner/x");
    fnNot("/Volumes/inner/x", ENPathEnd::OUTSIDE);
    fnNot("/Volumes/V2/a", ENPathEnd::OUTSIDE);
    fnNot("gone", ENPathEnd::NOTHING);
    fnNot("", ENPathEnd::NOTHING);
    fnNot("file/", ENPathEnd::NOTHING);
    fnNot("file/x", ENPathEnd::NOTHING);
    fnNot("../outside", ENPathEnd::NOTHING);
    fnNot("circle", ENPathEnd::TOO_MANY_LINKS);
    fnNot("circle/x", ENPathEnd::TOO_MANY_LINKS);
    QTest::newRow("name that is too long") << QByteArray(300, 'n') << ENPathEnd::FAILED << QByteArray();
}

void tst_CVolumePath::follow()
{
    QFETCH(QByteArray, baText);
    QFETCH(ENPathEnd, enEnd);
    QFETCH(QByteArray, baFound);
    CVolumePath path(*m_pRoot, GoesOn);
    QCOMPARE(path.Follow(baText), enEnd);
    if (enEnd != ENPathEnd::FOUND) {
        return;
    }
    QCOMPARE(Below(path), baFound);
    const auto stNamed = CCopyPlatform::GetEntryState(path.Folder().nDescriptor, path.Name().constData());
    const auto stPath = CCopyPlatform::GetEntryState(QFile::decodeName(path.Path()));
    QVERIFY(stNamed && stPath);
    QVERIFY(STFileId::Of(*stNamed) == STFileId::Of(path.State()));
    QVERIFY(STFileId::Of(*stPath) == STFileId::Of(path.State()));
    QVERIFY(path.Chain().constLast() == STFileId::Of(path.State()));
    QVERIFY(path.Chain().constFirst() == STFileId::Of(m_pRoot->State()));
}

void tst_CVolumePath::goTo_data()
{
    QTest::addColumn<QByteArray>("baBelow");
    QTest::addColumn<QByteArray>("baFound");
    QTest::addColumn<bool>("bLink");
    QTest::newRow("volume") << QByteArray() << QByteArray() << false;
    QTest::newRow("folder") << QByteArray("/a/b") << QByteArray("/a/b") << false;
    QTest::newRow("link at the end") << QByteArray("/a/toB") << QByteArray("/a/toB") << true;
    QTest::newRow("link on the way") << QByteArray("/toA/b/file") << QByteArray("/a/b/file") << false;
    QTest::newRow("links on the way and at the end")
        << QByteArray("/up/toA/toB") << QByteArray("/a/toB") << true;
}

void tst_CVolumePath::goTo()
{
    QFETCH(QByteArray, baBelow);
    CVolumePath path(*m_pRoot, GoesOn);
    QCOMPARE(path.GoTo(baBelow), ENPathEnd::FOUND);
    QTEST(Below(path), "baFound");
    QTEST(path.State().enKind == ENFileKind::LINK, "bLink");
}

void tst_CVolumePath::fortyLinksAndNoMore()
{
    m_pTree->Link("V/l1", "file");
    for (int nLink = 2; nLink <= CVolumePath::MOST_LINKS + 1; ++nLink) {
        m_pTree->Link("V/l" + QString::number(nLink), "l" + QString::number(nLink - 1));
    }
    CVolumePath most(*m_pRoot, GoesOn);
    QCOMPARE(most.Follow("l" + QByteArray::number(CVolumePath::MOST_LINKS)), ENPathEnd::FOUND);
    CVolumePath more(*m_pRoot, GoesOn);
    QCOMPARE(more.Follow("l" + QByteArray::number(CVolumePath::MOST_LINKS + 1)), ENPathEnd::TOO_MANY_LINKS);
}

void tst_CVolumePath::chainIsOfTheFoldersThemselves()
{
    CVolumePath path(*m_pRoot, GoesOn);
    QCOMPARE(path.Follow("up/toA/../toA/toB/file"), ENPathEnd::FOUND);
    QVector<STFileId> listExpected;
    for (const char* pszEntry : {"V", "V/a", "V/a/b", "V/a/b/file"}) {
        listExpected.append(STFileId::Of(*CCopyPlatform::GetEntryState(m_pTree->Path(pszEntry))));
    }
    QCOMPARE(path.Chain().size(), listExpected.size());
    QVERIFY(path.Chain() == listExpected);
}

void tst_CVolumePath::beginsInAFolder()
{
    CVolumePath folder(*m_pRoot, GoesOn);
    QCOMPARE(folder.Follow("a/"), ENPathEnd::FOUND);
    CVolumePath path(*m_pRoot, folder.Folder(), GoesOn);
    QCOMPARE(path.Follow("../a/toB"), ENPathEnd::FOUND);
    QCOMPARE(Below(path), QByteArray("/a/b"));
    QCOMPARE(path.Chain().size(), 3);
    CVolumePath above(*m_pRoot, folder.Folder(), GoesOn);
    QCOMPARE(above.Follow(".."), ENPathEnd::FOUND);
    QCOMPARE(Below(above), QByteArray());
    QCOMPARE(above.Chain().size(), 1);
}

void tst_CVolumePath::stopped()
{
    int nLooks = 0;
    CVolumePath path(*m_pRoot, [&nLooks] { return ++nLooks < 3; });
    QCOMPARE(path.Follow("a/b/file"), ENPathEnd::STOPPED);
    QCOMPARE(nLooks, 3);
}

QTEST_GUILESS_MAIN(tst_CVolumePath)
#include "tst_CVolumePath.moc"
