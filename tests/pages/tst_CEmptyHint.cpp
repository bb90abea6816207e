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
    void shownAgainAfterAReset();
    void fillsTheView();
    void leavesThePointerToTheView();
    void hiddenWhileTheModelIsAway();
    void namesAreNotRendered();
};

static const QString TEXT = QStringLiteral("Nothing is here.");

void tst_CEmptyHint::shownWhileThereAreNoRows()
{
    QListWidget list;
    const CEmptyHint hint(TEXT, &list);
    list.show();
    QVERIFY(hint.isVisible());
    list.addItem(QStringLiteral("one"));
    QVERIFY(!hint.isVisible());
    delete list.takeItem(0);
    QVERIFY(hint.isVisible());
}

void tst_CEmptyHint::shownAgainAfterAReset()
{
    QListWidget list;
    list.addItem(QStringLiteral("one"));
    const CEmptyHint hint(TEXT, &list);
    list.show();
    QVERIFY(!hint.isVisible());
    list.clear();
    QVERIFY(hint.isVisible());
}

void tst_CEmptyHint::fillsTheView()
{
    QListWidget list;
    const CEmptyHint hint(TEXT, &list);
    list.show();
    for (const QSize& size : {QSize(300, 200), QSize(500, 100)}) {
        list.resize(size);
        QCOMPARE(hint.geometry(), list.viewport()->rect());
    }
    QVERIFY(hint.wordWrap());
}

void tst_CEmptyHint::leavesThePointerToTheView()
{
    QListWidget list;
    list.resize(300, 200);
    const CEmptyHint hint(TEXT, &list);
    list.show();
    QVERIFY(hint.isVisible());
    QCOMPARE(list.childAt(list.viewport()->geometry().center()), list.viewport());
}

void tst_CEmptyHint::hiddenWhileTheModelIsAway()
{
    QStandardItemModel model;
    QTreeView view;
    view.setModel(&model);
    const CEmptyHint hint(TEXT, &view);
    view.show();
    QVERIFY(hint.isVisible());
    view.setModel(nullptr);
    model.appendRow(new QStandardItem(QStringLiteral("one")));
    QVERIFY(!hint.isVisible());
    view.setModel(&model);
    model.clear();
    QVERIFY(hint.isVisible());
}

void tst_CEmptyHint::namesAreNotRendered()
{
    QListWidget list;
    const CEmptyHint hint(QStringLiteral("<b>x</b>"), &list);
    QCOMPARE(hint.textFormat(), Qt::PlainText);
    QCOMPARE(hint.text(), QStringLiteral("<b>x</b>"));
}

QTEST_MAIN(tst_CEmptyHint)
#include "tst_CEmptyHint.moc"
