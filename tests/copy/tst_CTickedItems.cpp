#include "copy/CTickedItems.h"
#include "support/CNodeTree.h"

#include <QtTest>

#include <memory>

class tst_CTickedItems : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void topmostTickedNodes();
    void nothingTicked();
    void rootsOwnStateSaysNothing();
    void volumesEachOnce();
    void endsBeforeAnyNode_data();
    void endsBeforeAnyNode();

private:
    QStringList Paths(const QVector<STTickedItem>& listItem) const;
    void Fill();

    std::unique_ptr<CNodeTree> m_pNodes;
};

void tst_CTickedItems::init() { m_pNodes = std::make_unique<CNodeTree>(); }

/** "path in volume" of each item. */
QStringList tst_CTickedItems::Paths(const QVector<STTickedItem>& listItem) const
{
    QStringList listPath;
    for (const STTickedItem& stItem : listItem) {
        listPath.append(stItem.strPath + " in " + stItem.strVolume);
    }
    return listPath;
}

/** A volume with ticks at three depths, one that is ticked, one that is not. */
void tst_CTickedItems::Fill()
{
    CDirNode* pSome = m_pNodes->Add("/Volumes/Some", Qt::PartiallyChecked);
    CDirNode* pFolder = m_pNodes->Add("/Volumes/Some/folder", Qt::PartiallyChecked, pSome);
    m_pNodes->Add("/Volumes/Some/folder/unticked", Qt::Unchecked, pFolder);
    CDirNode* pTicked = m_pNodes->Add("/Volumes/Some/folder/ticked", Qt::Checked, pFolder);
    m_pNodes->Add("/Volumes/Some/folder/ticked/below", Qt::Checked, pTicked);
    m_pNodes->Add("/Volumes/Some/file", Qt::Checked, pSome);
    CDirNode* pNot = m_pNodes->Add("/Volumes/Not", Qt::Unchecked);
    m_pNodes->Add("/Volumes/Not/stale", Qt::Checked, pNot);
    CDirNode* pAll = m_pNodes->Add("/Volumes/All");
    m_pNodes->Add("/Volumes/All/below", Qt::Checked, pAll);
    m_pNodes->Add("/Volumes/Unlisted", Qt::PartiallyChecked);
}

static const QStringList ITEMS = {"/Volumes/Some/folder/ticked in /Volumes/Some",
                                  "/Volumes/Some/file in /Volumes/Some", "/Volumes/All in /Volumes/All"};

void tst_CTickedItems::topmostTickedNodes()
{
    Fill();
    QCOMPARE(Paths(CTickedItems::Of(*m_pNodes->Root(), [] { return false; })), ITEMS);
}

void tst_CTickedItems::nothingTicked()
{
    QCOMPARE(CTickedItems::Of(*m_pNodes->Root(), [] { return false; }).size(), 0);
    m_pNodes->Add("/Volumes/Not", Qt::Unchecked);
    QCOMPARE(CTickedItems::Of(*m_pNodes->Root(), [] { return false; }).size(), 0);
}

void tst_CTickedItems::rootsOwnStateSaysNothing()
{
    Fill();
    for (const Qt::CheckState enState : {Qt::Unchecked, Qt::PartiallyChecked, Qt::Checked}) {
        m_pNodes->Root()->m_chkState = enState;
        QCOMPARE(Paths(CTickedItems::Of(*m_pNodes->Root(), [] { return false; })), ITEMS);
    }
}

void tst_CTickedItems::volumesEachOnce()
{
    Fill();
    const QVector<STTickedItem> listItem = CTickedItems::Of(*m_pNodes->Root(), [] { return false; });
    QCOMPARE(CTickedItems::Volumes(listItem), (QStringList{"/Volumes/Some", "/Volumes/All"}));
    QCOMPARE(CTickedItems::Volumes({}), QStringList());
}

void tst_CTickedItems::endsBeforeAnyNode_data()
{
    QTest::addColumn<int>("nLooks");
    QTest::addColumn<QStringList>("listItem");
    QTest::newRow("at once") << 0 << QStringList{};
    QTest::newRow("before the first node") << 1 << QStringList{};
    QTest::newRow("in a folder") << 4 << QStringList{};
    QTest::newRow("behind an item") << 5 << QStringList(ITEMS.mid(0, 1));
    QTest::newRow("on the way up") << 6 << QStringList(ITEMS.mid(0, 2));
    QTest::newRow("before the last") << 8 << ITEMS;
}

void tst_CTickedItems::endsBeforeAnyNode()
{
    QFETCH(int, nLooks);
    Fill();
    int nAfterStop = 0;
    const auto fnStopped = [&] {
        if (nLooks-- > 0) {
            return false;
        }
        ++nAfterStop;
        m_pNodes->Clear(); // as whoever owns them may do from here on
        return true;
    };
    QTEST(Paths(CTickedItems::Of(*m_pNodes->Root(), fnStopped)), "listItem");
    QCOMPARE(nAfterStop, 1);
}

QTEST_GUILESS_MAIN(tst_CTickedItems)
#include "tst_CTickedItems.moc"
