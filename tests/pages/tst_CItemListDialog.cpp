#include "copy/CCopyText.h"
#include "pages/CElidedLabel.h"
#include "pages/CItemListDialog.h"
#include "pages/CItemRowDelegate.h"
#include "support/CModalAnswerer.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPushButton>

#include <cerrno>

static const QString PATH = "/Volumes/HD/<b>a & b</b>\n%1.txt";

/** The list of a copy's items, from accounts that no copy made. */
class tst_CItemListDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qApp->setStyleSheet(ProgramSheet()); }
    void rowSaysPathReasonAndAmount();
    void namesAreText();
    void detailsAreText();
    void longDetailsAreShortened();
    void noteIsNoWarning();
    void footer_data();
    void footer();
    void keysWalkTheList();
    void keyCloses_data();
    void keyCloses();
    void tabGoesRound();
    void thousandRowsAreThereAtOnce();
    void buttonCloses_data();
    void buttonCloses();
};

static STCopyItem Item(const QString& strPath = PATH)
{
    STCopyItem stItem;
    stItem.strPath = strPath;
    stItem.enProblem = ENCopyProblem::TARGET_WRITE;
    stItem.nError = ENOSPC;
    stItem.nCopied = 1200000;
    stItem.nExpected = 3400000;
    return stItem;
}

static STCopyAccount Account(int nItems)
{
    STCopyAccount stAccount;
    stAccount.nProblems = nItems;
    for (int n = 0; n < qMin<int>(nItems, STCopyAccount::LISTED_ITEMS); ++n) {
        stAccount.listItem.append(Item(QString("/Volumes/HD/file %1").arg(n)));
    }
    return stAccount;
}

static QListWidget* List(const CItemListDialog& dialog)
{
    return dialog.findChild<QListWidget*>("m_pItemList");
}

void tst_CItemListDialog::rowSaysPathReasonAndAmount()
{
    STCopyAccount stAccount;
    stAccount.listItem.append(Item());
    const CItemListDialog dialog(stAccount);
    QCOMPARE(List(dialog)->count(), 1);
    const QListWidgetItem* pItem = List(dialog)->item(0);
    QCOMPARE(pItem->text(), PATH);
    QCOMPARE(pItem->data(CItemRowDelegate::REASON_ROLE).toString(), CCopyText::Reason(Item()));
    QCOMPARE(pItem->data(CItemRowDelegate::AMOUNT_ROLE).toString(), CCopyText::Amount(Item()));
    const QString strHeard = Heard(List(dialog))->child(0)->text(QAccessible::Name);
    QCOMPARE(strHeard, PATH + " – " + CCopyText::Reason(Item()) + " – " + CCopyText::Amount(Item()));
    QVERIFY(pItem->toolTip().contains(PATH.toHtmlEscaped()));
    QVERIFY(pItem->toolTip().contains(CCopyText::Reason(Item()).toHtmlEscaped()));
    QVERIFY(!NameHeard(const_cast<CItemListDialog*>(&dialog)).isEmpty());
}

// What the row paints is what a path without marks and line breaks would give.
void tst_CItemListDialog::namesAreText()
{
    const auto fnPainted = [](const QString& strPath) {
        STCopyAccount stAccount;
        stAccount.listItem.append(Item(strPath));
        CItemListDialog dialog(stAccount);
        dialog.show();
        return List(dialog)->grab().toImage();
    };
    QCOMPARE(fnPainted("two\nlines"), fnPainted("two lines"));
    // Qt would take what stands behind it for another text to choose from.
    QCOMPARE(fnPainted(QString("two%1texts").arg(QChar(0x9c))), fnPainted("two texts"));
    QVERIFY(fnPainted("<b>bold</b>") != fnPainted("bold"));
    QVERIFY(fnPainted("a") != fnPainted("b"));
    // A long one is shortened in the middle: both its ends are seen.
    const QString strMiddle(300, 'm');
    QVERIFY(fnPainted("a" + strMiddle + "z") != fnPainted("a" + strMiddle + "y"));
    QCOMPARE(fnPainted("a" + strMiddle + "z"), fnPainted("a" + strMiddle + strMiddle + "z"));
}

static STCopyItem Detailed(ENCopyProblem enProblem, const QString& strDetail)
{
    STCopyItem stItem = Item("/Volumes/HD/file");
    stItem.enProblem = enProblem;
    stItem.nError = 0;
    stItem.strDetail = strDetail;
    return stItem;
}

static QImage PaintedList(const STCopyItem& stItem)
{
    STCopyAccount stAccount;
    stAccount.listItem.append(stItem);
    CItemListDialog dialog(stAccount);
    dialog.show();
    return List(dialog)->grab().toImage();
}

void tst_CItemListDialog::detailsAreText()
{
    const auto fnPainted = [](const QString& strDetail) {
        return PaintedList(Detailed(ENCopyProblem::NAME_CHANGED, strDetail));
    };
    QCOMPARE(fnPainted("two\nlines"), fnPainted("two lines"));
    QVERIFY(fnPainted("<b>bold</b>") != fnPainted("bold"));
    QVERIFY(fnPainted("%1") != fnPainted(QString()));
    STCopyAccount stAccount;
    stAccount.listItem.append(Detailed(ENCopyProblem::LINK_LOST, PATH));
    const CItemListDialog dialog(stAccount);
    const QListWidgetItem* pItem = List(dialog)->item(0);
    QVERIFY(pItem->toolTip().contains(PATH.toHtmlEscaped()));
    QVERIFY(!pItem->toolTip().contains("<b>"));
    QVERIFY(pItem->data(CItemRowDelegate::REASON_ROLE).toString().contains(PATH));
}

// The amount behind them stays where it is; the tool tip has all of them.
void tst_CItemListDialog::longDetailsAreShortened()
{
    const QString strLong = QString("1234567890-2345678901, ").repeated(20);
    const auto fnPainted
        = [](const QString& strDetail) { return PaintedList(Detailed(ENCopyProblem::DAMAGED, strDetail)); };
    QCOMPARE(fnPainted(strLong), fnPainted(strLong + strLong));
    STCopyItem stOther = Detailed(ENCopyProblem::DAMAGED, strLong);
    stOther.nCopied += 1000000;
    QVERIFY(fnPainted(strLong) != PaintedList(stOther));
    STCopyAccount stAccount;
    stAccount.listItem.append(stOther);
    QVERIFY(List(CItemListDialog(stAccount))->item(0)->toolTip().contains(strLong));
}

void tst_CItemListDialog::noteIsNoWarning()
{
    const auto fnPainted = [](bool bNote) {
        STCopyAccount stAccount;
        stAccount.listItem.append(Item());
        stAccount.listItem[0].bNote = bNote;
        stAccount.listItem[0].nExpected = -1;
        stAccount.listItem[0].nCopied = 0;
        CItemListDialog dialog(stAccount);
        dialog.show();
        return List(dialog)->grab().toImage();
    };
    QVERIFY(fnPainted(true) != fnPainted(false));
}

void tst_CItemListDialog::footer_data()
{
    QTest::addColumn<int>("nItems");
    QTest::addColumn<QString>("strReport");
    QTest::addColumn<bool>("bMissing");
    QTest::addColumn<QString>("strFooter");
    const QString strReport = "/Volumes/STICK %1/Tarnwick.txt";
    const QString strNone;
    QTest::newRow("all, no report") << 3 << strNone << false << strNone;
    QTest::newRow("all, report") << 3 << strReport << false << "This list is also in " + strReport;
    QTest::newRow("all, report missing") << 3 << strNone << true << CCopyText::ReportMissing();
    QTest::newRow("all, report not complete") << 3 << strReport << true << CCopyText::ReportMissing();
    QTest::newRow("bound") << 1000 << strNone << false << strNone;
    QTest::newRow("more, report") << 1001 << strReport << false << "and 1 more, see " + strReport;
    QTest::newRow("more, no report") << 2500 << strNone << false << "and 1,500 more";
    QTest::newRow("more, report not complete") << 2500 << strReport << true << "and 1,500 more";
}

void tst_CItemListDialog::footer()
{
    QFETCH(int, nItems);
    QFETCH(QString, strReport);
    QFETCH(bool, bMissing);
    QFETCH(QString, strFooter);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    STCopyAccount stAccount = Account(nItems);
    stAccount.strReport = strReport;
    stAccount.bReportMissing = bMissing;
    CItemListDialog dialog(stAccount);
    dialog.show();
    const auto* pFooter = dialog.findChild<CElidedLabel*>("m_pFooterLab");
    QCOMPARE(pFooter->text(), strFooter);
    QCOMPARE(pFooter->isVisible(), !strFooter.isEmpty());
}

void tst_CItemListDialog::keysWalkTheList()
{
    CItemListDialog dialog(Account(100));
    QVERIFY(ShowActive(&dialog));
    QListWidget* pList = List(dialog);
    QVERIFY(pList->hasFocus());
    QCOMPARE(pList->currentRow(), 0);
    QTest::keyClick(pList, Qt::Key_Down);
    QCOMPARE(pList->currentRow(), 1);
    QTest::keyClick(pList, Qt::Key_PageDown);
    QVERIFY(pList->currentRow() > 3);
    QTest::keyClick(pList, Qt::Key_End);
    QCOMPARE(pList->currentRow(), 99);
    QTest::keyClick(pList, Qt::Key_PageUp);
    QVERIFY(pList->currentRow() < 97);
    QVERIFY(dialog.isVisible());
}

void tst_CItemListDialog::keyCloses_data()
{
    QTest::addColumn<Qt::Key>("enKey");
    QTest::addColumn<bool>("bCloses");
    QTest::newRow("return") << Qt::Key_Return << true;
    QTest::newRow("enter") << Qt::Key_Enter << true;
    QTest::newRow("escape, as in the other dialogs") << Qt::Key_Escape << false;
    QTest::newRow("space in the list") << Qt::Key_Space << false;
}

void tst_CItemListDialog::keyCloses()
{
    QFETCH(Qt::Key, enKey);
    CItemListDialog dialog(Account(3));
    QVERIFY(ShowActive(&dialog));
    QTest::keyClick(QApplication::focusWidget(), enKey);
    QTEST(!dialog.isVisible(), "bCloses");
}

void tst_CItemListDialog::tabGoesRound()
{
    CItemListDialog dialog(Account(3));
    QVERIFY(ShowActive(&dialog));
    QStringList listName;
    for (int n = 0; n < 3; ++n) {
        listName.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(listName, QStringList({"m_pItemList", "toolBtn", "btnClose"}));
    QVERIFY(List(dialog)->hasFocus());
}

void tst_CItemListDialog::thousandRowsAreThereAtOnce()
{
    STCopyAccount stAccount = Account(1000);
    QElapsedTimer timer;
    timer.start();
    CItemListDialog dialog(stAccount);
    dialog.show();
    QVERIFY(!dialog.grab().isNull());
    const qint64 nMs = timer.elapsed();
    QCOMPARE(List(dialog)->count(), 1000);
    // Some 30 ms; rows that were measured or painted one by one would take far longer.
    QVERIFY2(nMs < 2000, qPrintable(QString::number(nMs)));
}

void tst_CItemListDialog::buttonCloses_data()
{
    QTest::addColumn<QString>("strButton");
    QTest::newRow("Close") << "Close";
    QTest::newRow("title") << CModalAnswerer::TitleButton();
}

void tst_CItemListDialog::buttonCloses()
{
    QFETCH(QString, strButton);
    CItemListDialog dialog(Account(3));
    const CModalAnswerer answerer(strButton);
    dialog.exec();
    QVERIFY(answerer.Answered());
    QVERIFY(!dialog.isVisible());
}

QTEST_MAIN(tst_CItemListDialog)
#include "tst_CItemListDialog.moc"
