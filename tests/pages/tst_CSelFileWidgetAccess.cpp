#include "pages/CPageBed.h"
#include "support/CModalAnswerer.h"

#include <QApplication>
#include <QMovie>

Q_DECLARE_METATYPE(QAccessible::Role)

/** The page for those who use it by keys or by ear. */
class tst_CSelFileWidgetAccess : public CPageBed
{
    Q_OBJECT

private slots:
    void readersHearEachControl_data();
    void readersHearEachControl();
    void readersHearTheDisk();
    void readersPassOverDecoration();

    void tabGoesByTheEye();
    void spaceInTheTreeEnablesCopy();
    void refreshAnswersKeys();
    void diskIsChosenByKeys_data();
    void diskIsChosenByKeys();
    void copyThatIsDisabledGivesTheFocusToTheTree();
    void refusedCopyHasTheFocusAgain();
};

void tst_CSelFileWidgetAccess::readersHearEachControl_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QAccessible::Role>("enRole");
    QTest::newRow("m_pFileTree") << "Select File to Copy" << QAccessible::Tree;
    QTest::newRow("m_pDropBtn") << "Select Destination Disk" << QAccessible::ComboBox;
    QTest::newRow("RefreshLab") << "Refresh List of Disks" << QAccessible::PushButton;
    QTest::newRow("toolBtn") << "Copy" << QAccessible::PushButton;
    QTest::newRow("m_pUSBTitleLab") << TEXT_PROMPT << QAccessible::StaticText;
    QTest::newRow("m_pCopyLab") << "No files selected" << QAccessible::Graphic;
}

void tst_CSelFileWidgetAccess::readersHearEachControl()
{
    MakePage();
    auto* pWidget = m_pPage->findChild<QWidget*>(QTest::currentDataTag());
    QTEST(NameHeard(pWidget), "strName");
    QTEST(Heard(pWidget)->role(), "enRole");
}

void tst_CSelFileWidgetAccess::readersHearTheDisk()
{
    Plug("<b>ONE");
    Plug("TWO", 1000);
    MakePage();
    for (const char* pName : {"<b>ONE", "TWO"}) {
        Choose(pName);
        QCOMPARE(Heard(DropBtn())->text(QAccessible::Description), pName);
        QCOMPARE(NameHeard(Label("m_pUSBTitleLab")), pName);
    }
    QVERIFY(NameHeard(Label("bottomLab")).endsWith("1.05GB Total"));
    QVERIFY(!NameHeard(Label("bottomLab")).contains('<'));
    QCOMPARE(NameHeard(List()), "Select Destination Disk");
    Leave("<b>ONE");
    Leave("TWO");
    QCOMPARE(Heard(DropBtn())->text(QAccessible::Description), QString());
}

void tst_CSelFileWidgetAccess::readersPassOverDecoration()
{
    MakePage();
    const QList<QLabel*> listLine = m_pPage->findChildren<QLabel*>("m_pLineLab");
    QCOMPARE(listLine.size(), 2);
    for (QLabel* pLabel : listLine + QList<QLabel*>{Label("m_pUSBPicLab")}) {
        QVERIFY(pLabel->isVisible());
        QVERIFY(Heard(pLabel)->state().invisible);
    }
    QVERIFY(!Heard(Label("m_pCopyLab"))->state().invisible);
}

void tst_CSelFileWidgetAccess::tabGoesByTheEye()
{
    MakePage({"STICK"});
    QVERIFY(Tick());
    m_pPage->setFocus();
    const QList<QWidget*> listStop{Tree(), DropBtn(), Refresh(), CompleteBox(), CopyBtn()};
    for (QWidget* pStop : listStop) {
        QCOMPARE(QApplication::focusWidget(), pStop);
        QTest::keyClick(pStop, Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget(), listStop.first());
    for (int n = listStop.size() - 1; n >= 0; --n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), listStop.at(n));
    }
}

void tst_CSelFileWidgetAccess::spaceInTheTreeEnablesCopy()
{
    MakePage({"STICK"});
    m_pPage->setFocus();
    QTest::keyClick(Tree(), Qt::Key_Space);
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(Shows(Label("m_pCopyLab"), ":/res/Label/allow.png"));
    QTest::keyClick(Tree(), Qt::Key_Space);
    QVERIFY(!CopyBtn()->isEnabled());
    QVERIFY(Shows(Label("m_pCopyLab"), ":/res/Label/allow_deft.png"));
}

void tst_CSelFileWidgetAccess::refreshAnswersKeys()
{
    MakePage();
    Refresh()->setFocus();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        const int nAsked = Asked();
        QTest::keyClick(Refresh(), key);
        QCOMPARE(Refresh()->movie()->state(), QMovie::Running);
        QTRY_COMPARE(Refresh()->movie()->state(), QMovie::NotRunning);
        QVERIFY(Asked() > nAsked);
        QVERIFY(Refresh()->hasFocus());
    }
}

void tst_CSelFileWidgetAccess::diskIsChosenByKeys_data()
{
    QTest::addColumn<QStringList>("listDisk"); // 10 MiB each, the last one 1000
    QTest::addColumn<Qt::Key>("keyOpen");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("strChosen");
    const QStringList listTwo{"ONE", "TWO"};
    QTest::newRow("Return") << listTwo << Qt::Key_Down << Qt::Key_Return << "TWO";
    QTest::newRow("Enter") << listTwo << Qt::Key_Return << Qt::Key_Enter << "TWO";
    QTest::newRow("Space") << listTwo << Qt::Key_Space << Qt::Key_Space << "TWO";
    QTest::newRow("Escape") << listTwo << Qt::Key_Space << Qt::Key_Escape << "ONE";
    QTest::newRow("empty, Return") << QStringList() << Qt::Key_Down << Qt::Key_Return << TEXT_PROMPT;
    QTest::newRow("empty, Space") << QStringList() << Qt::Key_Down << Qt::Key_Space << TEXT_PROMPT;
    QTest::newRow("empty, Escape") << QStringList() << Qt::Key_Down << Qt::Key_Escape << TEXT_PROMPT;
}

void tst_CSelFileWidgetAccess::diskIsChosenByKeys()
{
    QFETCH(QStringList, listDisk);
    QFETCH(Qt::Key, keyOpen);
    QFETCH(Qt::Key, key);
    QFETCH(QString, strChosen);
    MakePage();
    for (const QString& strName : listDisk) {
        Plug(strName, strName == listDisk.last() ? 1000 : 10);
        Arrive(strName);
    }
    DropBtn()->setFocus();
    QTest::keyClick(DropBtn(), keyOpen, keyOpen == Qt::Key_Down ? Qt::AltModifier : Qt::NoModifier);
    QVERIFY(List()->isVisible());
    QVERIFY(List()->hasFocus());
    QCOMPARE(List()->currentRow(), listDisk.isEmpty() ? -1 : 0);
    QTest::keyClick(List(), Qt::Key_Down);
    QTest::keyClick(List(), key);
    QCOMPARE(m_pPage->GetUsbName(), strChosen);
    QCOMPARE(Label("bottomLab")->text().contains(">1.05GB</span> Total"), strChosen == "TWO");
    QVERIFY(!List()->isVisible());
    QVERIFY(DropBtn()->hasFocus());
}

void tst_CSelFileWidgetAccess::copyThatIsDisabledGivesTheFocusToTheTree()
{
    MakePage({"STICK"});
    QPushButton next(m_pHost.get()); // which the focus would go to by itself
    next.show();
    QVERIFY(Tick());
    CopyBtn()->setFocus();
    Leave("STICK");
    QVERIFY(!CopyBtn()->isEnabled());
    QCOMPARE(QApplication::focusWidget(), Tree());
}

void tst_CSelFileWidgetAccess::refusedCopyHasTheFocusAgain()
{
    Plug("STICK", 1);
    MakePage();
    QVERIFY(Tick("pics"));
    CopyBtn()->setFocus();
    const CModalAnswerer answerer("OK");
    QTest::keyClick(CopyBtn(), Qt::Key_Space);
    QVERIFY(!CopyBtn()->isEnabled());
    QCOMPARE(m_pHost->focusWidget(), Tree());
    // A second press while the sizes are counted arrives at the tree and does nothing.
    QTest::keyClick(m_pHost->focusWidget(), Qt::Key_Space);
    QTRY_VERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QTRY_COMPARE(m_pHost->focusWidget(), CopyBtn());
    QVERIFY(CopyBtn()->isEnabled());
}

QTEST_MAIN(tst_CSelFileWidgetAccess)
#include "tst_CSelFileWidgetAccess.moc"
