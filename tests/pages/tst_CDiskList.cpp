#include "pages/CDiskList.h"

#include <QMap>
#include <QStringList>
#include <QTest>

#include <memory>

/** Searches, arrivals and removals in every order that could go wrong. */
class tst_CDiskList : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void sequence_data();
    void sequence();
    void laterSearchReplacesTheEarlier();
    void pathOf();
    void target_data();
    void target();
    void removeIfMoved_data();
    void removeIfMoved();

private:
    void Do(const QString& strSteps);
    QString Listed() const;

    QList<QPair<QString, QString>> m_list;
    std::unique_ptr<CDiskList> m_pDisks;
    QMap<QString, STDiskSearch> m_mapSearch;
};

void tst_CDiskList::init()
{
    m_list.clear();
    m_pDisks = std::make_unique<CDiskList>(m_list);
    m_mapSearch.clear();
}

// Steps like "start 1; begin 1; arrive X@b; find Y 1; leave X; end 1": 1 is a search,
// X and Y are disks, and X lies on device b.
void tst_CDiskList::Do(const QString& strSteps)
{
    for (const QString& strStep : strSteps.split("; ", Qt::SkipEmptyParts)) {
        const QStringList listWord = strStep.split(' ');
        const STDiskSearch search = m_mapSearch.value(listWord.last());
        const QString strName = listWord.at(1).section('@', 0, 0);
        const QByteArray baDevice = listWord.at(1).section('@', 1).toUtf8();
        if (listWord.at(0) == "start") {
            m_mapSearch.insert(listWord.at(1), m_pDisks->NewSearch().value());
        } else if (listWord.at(0) == "begin") {
            m_pDisks->Begin(search);
        } else if (listWord.at(0) == "find") {
            m_pDisks->Found(search, "/Volumes/" + strName, strName, baDevice);
        } else if (listWord.at(0) == "end") {
            m_pDisks->End(search);
        } else if (listWord.at(0) == "arrive") {
            m_pDisks->Arrived("/Volumes/" + strName, strName, baDevice);
        } else if (listWord.at(0) == "leave") {
            m_pDisks->Removed("/Volumes/" + strName);
        } else {
            QFAIL(qPrintable("no such step: " + strStep));
        }
    }
}

QString tst_CDiskList::Listed() const
{
    QStringList listName;
    for (const QPair<QString, QString>& disk : m_list) {
        listName.append(disk.first == "/Volumes/" + disk.second ? disk.second : "wrong path");
    }
    return listName.join(' ');
}

void tst_CDiskList::sequence_data()
{
    QTest::addColumn<QString>("strSteps"); // "step > list after it"; without a list it stays as it was
    const auto row = [](const char* pName, const char* pSteps) { QTest::newRow(pName) << QString(pSteps); };

    row("one search", "start 1; begin 1; find X 1 > X; find Y 1 > X Y; end 1");
    row("a search lists anew, in its own order",
        "arrive X > X; arrive Y > X Y; start 1; begin 1 > ; find Y 1 > Y; find X 1 > Y X; end 1");
    row("events alone", "arrive X > X; arrive Y > X Y; leave X > Y; arrive X > Y X");
    row("arrivals list twice, one removal takes both",
        "arrive X > X; arrive Y > X Y; arrive X > X Y X; arrive X > X Y X X; leave X > Y");
    row("a search puts two arrivals right",
        "start 1; arrive X > X; arrive Y > X Y; arrive X > X Y X; begin 1; end 1 > X Y");
    row("removal of what is not listed", "arrive XY > XY; leave xy; leave X; leave XYZ; leave ");

    row("arrival before a search that does not find it", "arrive X > X; start 1; begin 1 > ; end 1");
    row("arrival before the first step", "start 1; arrive X > X; begin 1; end 1");
    row("arrival before the first step, found", "start 1; arrive X > X; begin 1; find X 1; end 1");
    row("arrival after the first step, found", "start 1; begin 1; arrive X > X; find X 1; end 1");
    row("found, then arrivals",
        "start 1; begin 1; find X 1 > X; arrive X > X X; arrive X > X X X; end 1 > X");

    row("removal before the first step", "arrive X > X; start 1; leave X > ; begin 1; find X 1; end 1");
    row("removal after the first step", "start 1; begin 1; leave X; find X 1; end 1");
    row("removal after it was found", "start 1; begin 1; find X 1 > X; leave X > ; end 1");
    row("removal before the search", "leave X; start 1; begin 1; find X 1 > X; end 1");
    row("the next search believes its eyes again",
        "start 1; leave X; begin 1; find X 1; end 1; start 2; begin 2; find X 2 > X; end 2");
    row("back before the first step", "start 1; leave X; arrive X > X; begin 1; find X 1; end 1");
    row("back after it was found", "start 1; begin 1; find X 1 > X; leave X > ; arrive X > X; end 1");
    row("come and gone again", "start 1; begin 1; arrive X > X; leave X > ; find X 1; end 1");

    row("a replaced search changes nothing", "arrive Y > Y; start 1; start 2; begin 1; find X 1; end 1");
    row("replaced in its middle",
        "start 1; begin 1; find X 1 > X; start 2; find Z 1; begin 2 > ; find Y 2 > Y; end 1; end 2");
    row("the end of a replaced search leaves duplicates",
        "start 1; start 2; begin 2; arrive X > X; arrive X > X X; end 1; end 2 > X");
    row("arrival between two searches", "start 1; arrive X > X; start 2; begin 2 > ; find X 2 > X; end 2");
    row("removal between two searches", "start 1; begin 1; leave X; start 2; begin 2; find X 2 > X; end 2");
}

void tst_CDiskList::sequence()
{
    QFETCH(QString, strSteps);
    QString strListed;
    for (const QString& strStep : strSteps.split("; ")) {
        const QStringList listPart = strStep.split(" > ");
        Do(listPart.at(0));
        strListed = listPart.value(1, strListed);
        QVERIFY2(Listed() == strListed, qPrintable(strStep + ": \"" + Listed() + '"'));
    }
}

void tst_CDiskList::laterSearchReplacesTheEarlier()
{
    const STDiskSearch first = m_pDisks->NewSearch().value();
    QVERIFY(!*first.pReplaced);
    const STDiskSearch second = m_pDisks->NewSearch().value();
    QVERIFY(*first.pReplaced);
    QVERIFY(!*second.pReplaced);
    QVERIFY(!m_pDisks->Begin(first));
    QVERIFY(!m_pDisks->End(first));
    QVERIFY(m_pDisks->Begin(second));
    QVERIFY(m_pDisks->End(second));
    m_pDisks->Close();
    QVERIFY(*second.pReplaced);
    QVERIFY(!m_pDisks->NewSearch());
}

void tst_CDiskList::pathOf()
{
    Do("arrive X; arrive Y");
    m_pDisks->Arrived("/mnt/Y", "Y", "d");
    QCOMPARE(m_pDisks->PathOf("X"), "/Volumes/X");
    QCOMPARE(m_pDisks->PathOf("Y"), "/Volumes/Y");
    QCOMPARE(m_pDisks->PathOf("x"), QString());
    QCOMPARE(m_pDisks->PathOf(""), QString());
    // The placeholder of events that know no path is none.
    m_pDisks->Removed("USB");
    QCOMPARE(m_list.size(), 3);
}

void tst_CDiskList::target_data()
{
    QTest::addColumn<QString>("strBefore"); // up to the press of Copy for X
    QTest::addColumn<QString>("strAfter"); // since
    QTest::addColumn<QByteArray>("baNow"); // the device at X's path after that
    QTest::addColumn<bool>("bGone");
    const auto row
        = [](const char* pName, const char* pBefore, const char* pAfter, const char* pNow, bool bGone) {
              QTest::newRow(pName) << QString(pBefore) << QString(pAfter) << QByteArray(pNow) << bGone;
          };
    row("found, still there", "start 1; find X@b 1", "", "b", false);
    row("found, elsewhere now", "start 1; find X@b 1", "", "root", true);
    row("found, nowhere now", "start 1; find X@b 1", "", "", true);
    row("arrived, still there", "arrive X@b", "", "b", false);
    row("arrived, elsewhere now", "arrive X@b", "", "root", true);
    row("listed without device, has one now", "arrive X", "", "b", true);
    row("arrived again on another device", "arrive X@b; arrive X@c", "", "c", false);
    row("arrived, a search remembers less", "start 1; arrive X@b; find X@root 1", "", "b", false);
    row("a later search finds it elsewhere", "arrive X@b; start 1; begin 1; find X@c 1", "", "c", false);
    row("removed", "arrive X@b", "leave X", "b", true);
    row("removed and back", "arrive X@b", "leave X; arrive X@b", "b", false);
    row("another one in its place", "arrive X@b", "leave X; arrive X@c", "c", true);
    row("removed before the press and back", "arrive X@b; leave X; arrive X@b", "", "b", false);
    row("another disk removed", "arrive X@b; arrive Y@c", "leave Y", "b", false);
    row("forgotten by a search", "arrive X@b", "start 1; begin 1; end 1", "b", false);
    row("not listed, so not chosen", "arrive Y@b", "leave X; leave ", "", false);
}

void tst_CDiskList::target()
{
    QFETCH(QString, strBefore);
    QFETCH(QString, strAfter);
    QFETCH(QByteArray, baNow);
    Do(strBefore);
    const STCopyTarget target = m_pDisks->Target("X", baNow);
    QCOMPARE(target.strPath, strBefore.contains("X") ? "/Volumes/X" : "");
    QCOMPARE(target.strName, "X");
    m_pDisks->Removed(""); // such a path is nobody's
    Do(strAfter);
    QTEST(m_pDisks->IsGone(target, baNow), "bGone");
}

void tst_CDiskList::removeIfMoved_data()
{
    QTest::addColumn<QByteArray>("baNow");
    QTest::addColumn<QString>("strListed");
    QTest::newRow("where it was") << QByteArray("b") << "X Y X";
    QTest::newRow("elsewhere") << QByteArray("c") << "Y";
    QTest::newRow("nowhere") << QByteArray() << "Y";
}

void tst_CDiskList::removeIfMoved()
{
    QFETCH(QByteArray, baNow);
    QFETCH(QString, strListed);
    Do("start 1; begin 1; arrive X@b; arrive Y@b; arrive X@b");
    QCOMPARE(m_pDisks->RemoveIfMoved("/Volumes/X", baNow), strListed == "Y");
    QCOMPARE(Listed(), strListed);
    // For a search that had begun before it has gone like any other disk.
    Do("find X@b 1; end 1");
    QCOMPARE(Listed(), strListed == "Y" ? "Y" : "X Y");
    // Of what never came this way no device is known.
    m_list += QPair<QString, QString>("/Volumes/Z", "Z");
    QVERIFY(!m_pDisks->RemoveIfMoved("/Volumes/Z", "b"));
    QVERIFY(!m_pDisks->IsGone(m_pDisks->Target("Z", "b"), "b"));
    QVERIFY(m_pDisks->IsGone(m_pDisks->Target("Z", "b"), "c"));
}

QTEST_APPLESS_MAIN(tst_CDiskList)
#include "tst_CDiskList.moc"
