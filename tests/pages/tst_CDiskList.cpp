#include "pages/CDiskList.h"

#include <QMap>
#include <QStringList>
#include <QTest>

#include <memory>

/** Searches, arrivals and removals in every order that has gone wrong or could. */
class tst_CDiskList : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void sequence_data();
    void sequence();
    void removalOfAnUnknownPath_data();
    void removalOfAnUnknownPath();
    void laterSearchReplacesTheEarlier();
    void noSearchAfterTheEnd();
    void pathOf();
    void target_data();
    void target();
    void targetNeverListed();
    void nothingChosenIsNeverGone();
    void removeIfMoved_data();
    void removeIfMoved();

private:
    void Do(const QString& strStep);
    void DoAll(const QString& strSteps);
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

// "start 1", "begin 1", "1 finds X", "end 1", "X comes", "X goes": 1 is a search
// and X a disk, "X@b" one that lies on device b.
void tst_CDiskList::Do(const QString& strStep)
{
    const QStringList listWord = strStep.split(' ');
    const QString strWho = listWord.at(0);
    const QString strLast = listWord.last();
    if (strWho == "start") {
        m_mapSearch.insert(strLast, m_pDisks->NewSearch().value());
    } else if (strWho == "begin") {
        m_pDisks->Begin(m_mapSearch.value(strLast));
    } else if (strWho == "end") {
        m_pDisks->End(m_mapSearch.value(strLast));
    } else if (listWord.at(1) == "finds") {
        const QStringList listDisk = strLast.split('@');
        m_pDisks->Found(m_mapSearch.value(strWho), "/Volumes/" + listDisk.at(0), listDisk.at(0),
                        listDisk.value(1).toUtf8());
    } else if (strLast == "comes") {
        const QStringList listDisk = strWho.split('@');
        m_pDisks->Arrived("/Volumes/" + listDisk.at(0), listDisk.at(0), listDisk.value(1).toUtf8());
    } else if (strLast == "goes") {
        m_pDisks->Removed("/Volumes/" + strWho);
    } else {
        qFatal("no such step: %s", qPrintable(strStep));
    }
}

void tst_CDiskList::DoAll(const QString& strSteps)
{
    for (const QString& strStep : strSteps.split("; ", Qt::SkipEmptyParts)) {
        Do(strStep);
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

    row("one search", "start 1; begin 1; 1 finds X > X; 1 finds Y > X Y; end 1");
    row("a search lists anew, in its own order",
        "X comes > X; Y comes > X Y; start 1; begin 1 > ; 1 finds Y > Y; 1 finds X > Y X; end 1");
    row("events alone", "X comes > X; Y comes > X Y; X goes > Y; X comes > Y X");
    row("arrivals list twice, one removal takes both",
        "X comes > X; Y comes > X Y; X comes > X Y X; X comes > X Y X X; X goes > Y");
    row("a search puts two arrivals right",
        "start 1; X comes > X; Y comes > X Y; X comes > X Y X; begin 1; end 1 > X Y");

    row("arrival before a search that does not find it", "X comes > X; start 1; begin 1 > ; end 1");
    row("arrival before the first step", "start 1; X comes > X; begin 1; end 1");
    row("arrival before the first step, found", "start 1; X comes > X; begin 1; 1 finds X; end 1");
    row("arrival after the first step, found", "start 1; begin 1; X comes > X; 1 finds X; end 1");
    row("found, then arrivals", "start 1; begin 1; 1 finds X > X; X comes > X X; X comes > X X X; end 1 > X");

    row("removal before the first step", "X comes > X; start 1; X goes > ; begin 1; 1 finds X; end 1");
    row("removal after the first step", "start 1; begin 1; X goes; 1 finds X; end 1");
    row("removal after it was found", "start 1; begin 1; 1 finds X > X; X goes > ; end 1");
    row("removal before the search", "X goes; start 1; begin 1; 1 finds X > X; end 1");
    row("the next search believes its eyes again",
        "start 1; X goes; begin 1; 1 finds X; end 1; start 2; begin 2; 2 finds X > X; end 2");
    row("back before the first step", "start 1; X goes; X comes > X; begin 1; 1 finds X; end 1");
    row("back after it was found", "start 1; begin 1; 1 finds X > X; X goes > ; X comes > X; end 1");
    row("come and gone again", "start 1; begin 1; X comes > X; X goes > ; 1 finds X; end 1");

    row("a replaced search changes nothing", "Y comes > Y; start 1; start 2; begin 1; 1 finds X; end 1");
    row("replaced in its middle",
        "start 1; begin 1; 1 finds X > X; start 2; 1 finds Z; begin 2 > ; 2 finds Y > Y; end 1; end 2");
    row("the end of a replaced search leaves duplicates",
        "start 1; start 2; begin 2; X comes > X; X comes > X X; end 1; end 2 > X");
    row("arrival between two searches", "start 1; X comes > X; start 2; begin 2 > ; 2 finds X > X; end 2");
    row("removal between two searches", "start 1; begin 1; X goes; start 2; begin 2; 2 finds X > X; end 2");
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

void tst_CDiskList::removalOfAnUnknownPath_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::newRow("placeholder") << "USB";
    QTest::newRow("other case") << "/Volumes/x";
    QTest::newRow("name only") << "X";
    QTest::newRow("beginning only") << "/Volumes/";
    QTest::newRow("longer") << "/Volumes/X1";
    QTest::newRow("empty") << "";
}

void tst_CDiskList::removalOfAnUnknownPath()
{
    QFETCH(QString, strPath);
    DoAll("X comes");
    m_pDisks->Removed(strPath);
    QCOMPARE(Listed(), "X");
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
}

void tst_CDiskList::noSearchAfterTheEnd()
{
    const STDiskSearch search = m_pDisks->NewSearch().value();
    m_pDisks->Close();
    QVERIFY(*search.pReplaced);
    QVERIFY(!m_pDisks->NewSearch());
}

void tst_CDiskList::pathOf()
{
    DoAll("X comes; Y comes");
    m_pDisks->Arrived("/mnt/Y", "Y", "d");
    QCOMPARE(m_pDisks->PathOf("X"), "/Volumes/X");
    QCOMPARE(m_pDisks->PathOf("Y"), "/Volumes/Y");
    QCOMPARE(m_pDisks->PathOf("x"), QString());
    QCOMPARE(m_pDisks->PathOf(""), QString());
}

void tst_CDiskList::target_data()
{
    QTest::addColumn<QString>("strBefore"); // up to the press of Copy for X
    QTest::addColumn<QString>("strAfter"); // since
    QTest::addColumn<QByteArray>("baNow"); // the device at X's path
    QTest::addColumn<bool>("bGone");
    const auto row
        = [](const char* pName, const char* pBefore, const char* pAfter, const char* pNow, bool bGone) {
              QTest::newRow(pName) << QString(pBefore) << QString(pAfter) << QByteArray(pNow) << bGone;
          };
    row("found, still there", "start 1; 1 finds X@b; end 1", "", "b", false);
    row("found, elsewhere now", "start 1; 1 finds X@b; end 1", "", "root", true);
    row("found, nowhere now", "start 1; 1 finds X@b; end 1", "", "", true);
    row("arrived, still there", "X@b comes", "", "b", false);
    row("arrived, elsewhere now", "X@b comes", "", "root", true);
    row("listed without device, has one now", "X comes", "", "b", true);
    row("arrived again on another device", "X@b comes; X@c comes", "", "c", false);
    row("arrived, a search remembers less", "start 1; X@b comes; 1 finds X@root; end 1", "", "b", false);
    row("a later search finds it elsewhere", "X@b comes; start 1; begin 1; 1 finds X@c", "", "c", false);
    row("removed", "X@b comes", "X goes", "b", true);
    row("removed and back", "X@b comes", "X goes; X@b comes", "b", false);
    row("another one in its place", "X@b comes", "X goes; X@c comes", "c", true);
    row("removed before the press and back", "X@b comes; X goes; X@b comes", "", "b", false);
    row("another disk removed", "X@b comes; Y@c comes", "Y goes", "b", false);
    row("forgotten by a search", "X@b comes", "start 1; begin 1; end 1", "b", false);
}

void tst_CDiskList::target()
{
    QFETCH(QString, strBefore);
    QFETCH(QString, strAfter);
    QFETCH(QByteArray, baNow);
    DoAll(strBefore);
    const STCopyTarget target = m_pDisks->Target("X", baNow);
    QCOMPARE(target.strPath, "/Volumes/X");
    QCOMPARE(target.strName, "X");
    DoAll(strAfter);
    QTEST(m_pDisks->IsGone(target, baNow), "bGone");
}

// Nobody has told the device, so it can only be compared with what it was at the press of Copy.
void tst_CDiskList::targetNeverListed()
{
    m_list += QPair<QString, QString>("/Volumes/X", "X");
    const STCopyTarget target = m_pDisks->Target("X", "b");
    QVERIFY(!m_pDisks->IsGone(target, "b"));
    QVERIFY(m_pDisks->IsGone(target, "root"));
    QVERIFY(!m_pDisks->RemoveIfMoved("/Volumes/X", "root"));
    QCOMPARE(Listed(), "X");
}

void tst_CDiskList::nothingChosenIsNeverGone()
{
    DoAll("X@b comes");
    const STCopyTarget target = m_pDisks->Target("Select Destination Disk:", "");
    QCOMPARE(target.strPath, QString());
    m_pDisks->Removed("");
    QVERIFY(!m_pDisks->IsGone(target, ""));
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
    DoAll("start 1; begin 1; X@b comes; Y@b comes; X@b comes");
    QCOMPARE(m_pDisks->RemoveIfMoved("/Volumes/X", baNow), strListed == "Y");
    QCOMPARE(Listed(), strListed);
    // For a search that had begun before it has gone like any other disk.
    DoAll("1 finds X@b; end 1");
    QCOMPARE(Listed(), strListed == "Y" ? "Y" : "X Y");
}

QTEST_APPLESS_MAIN(tst_CDiskList)
#include "tst_CDiskList.moc"
