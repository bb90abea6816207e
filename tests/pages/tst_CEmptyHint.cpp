#include "pages/CEmptyHint.h"

#include <QListWidget>
#include <QStandardItemModel>
#include <QTest>
#include <QTreeView>

class tst_CEmptyHint : public QObject
{
    Q_OBJECT

private slots:
    void shownWhileThereAreNoRows();
    void fillsTheViewAndLeavesItThePointer();
    void hiddenWhileTheModelIsAway();
    void namesAreNotRendered();
};

void tst_CEmptyHint::shownWhileThereAreNoRows()
{
    QListWidget list;
    list.addItem("one");
    const CEmptyHint hint("Nothing is here.", &list);
    list.show();
    QVERIFY(!hint.isVisible());
    list.clear(); // a reset
    QVERIFY(hint.isVisible());
    list.addItem("one");
    QVERIFY(!hint.isVisible());
    delete list.takeItem(0);
    QVERIFY(hint.isVisible());
    QListWidget empty;
    const CEmptyHint hintAtOnce("Nothing is here.", &empty);
    empty.show();
    QVERIFY(hintAtOnce.isVisible());
}

void tst_CEmptyHint::fillsTheViewAndLeavesItThePointer()
{
    QListWidget list;
    const CEmptyHint hint("Nothing is here.", &list);
    list.show();
    QVERIFY(hint.isVisible());
    QVERIFY(hint.wordWrap());
    for (const QSize& size : {QSize(300, 200), QSize(500, 100)}) {
        list.resize(size);
        QCOMPARE(hint.geometry(), list.viewport()->rect());
        QCOMPARE(list.childAt(list.viewport()->geometry().center()), list.viewport());
    }
}

void tst_CEmptyHint::hiddenWhileTheModelIsAway()
{
    QStandardItemModel model;
    QTreeView view;
    view.setModel(&model);
    const CEmptyHint hint("Nothing is here.", &view);
    view.show();
    QVERIFY(hint.isVisible());
    view.setModel(nullptr);
    model.appendRow(new QStandardItem("one"));
    QVERIFY(!hint.isVisible());
    view.setModel(&model);
    model.clear();
    QVERIFY(hint.isVisible());
}

void tst_CEmptyHint::namesAreNotRendered()
{
    QListWidget list;
    const CEmptyHint hint("<b>x</b>", &list);
    QCOMPARE(hint.textFormat(), Qt::PlainText);
    QCOMPARE(hint.text(), "<b>x</b>");
}

QTEST_MAIN(tst_CEmptyHint)
#include "tst_CEmptyHint.moc"
