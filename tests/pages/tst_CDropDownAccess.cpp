#include "pages/CDropDownAccess.h"
#include "support/Widgets.h"

#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class tst_CDropDownAccess : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void isAComboBox_data();
    void isAComboBox();
    void valueIsTheDescription();
    void openListIsItsChild();
    void pressing();
    void otherButtonsStayButtons();

private:
    std::unique_ptr<QWidget> m_pWindow;
    QPushButton* m_pButton = nullptr;
    QListWidget* m_pList = nullptr;
};

void tst_CDropDownAccess::init()
{
    m_pWindow = std::make_unique<QWidget>();
    m_pButton = new QPushButton(m_pWindow.get());
    m_pButton->setAccessibleName("Disk");
    m_pList = new QListWidget(m_pButton);
    m_pList->setWindowFlags(Qt::Popup);
    m_pList->addItems({"one", "two"});
    m_pWindow->show();
}

void tst_CDropDownAccess::cleanup() { m_pWindow.reset(); }

void tst_CDropDownAccess::isAComboBox_data()
{
    QTest::addColumn<bool>("bRead");
    QTest::newRow("before a reader comes") << false;
    QTest::newRow("after a reader has come") << true;
}

void tst_CDropDownAccess::isAComboBox()
{
    QFETCH(bool, bRead);
    if (bRead) {
        QVERIFY(Heard(m_pButton));
    }
    CDropDownAccess::Install(m_pButton);
    QCOMPARE(Heard(m_pButton)->role(), QAccessible::ComboBox);
    QCOMPARE(Heard(m_pButton)->text(QAccessible::Name), "Disk");
    QVERIFY(Heard(m_pButton)->state().hasPopup);
    QVERIFY(Heard(m_pButton)->state().focusable);
}

void tst_CDropDownAccess::valueIsTheDescription()
{
    CDropDownAccess::Install(m_pButton);
    m_pButton->setAccessibleDescription("STICK");
    QCOMPARE(Heard(m_pButton)->text(QAccessible::Description), "STICK");
    QCOMPARE(Heard(m_pButton)->text(QAccessible::Value), "STICK");
}

void tst_CDropDownAccess::openListIsItsChild()
{
    CDropDownAccess::Install(m_pButton);
    QAccessibleInterface* pList = Heard(m_pList);
    QCOMPARE(Heard(m_pButton)->childCount(), 0);
    QVERIFY(!Heard(m_pButton)->child(0));
    QCOMPARE(Heard(m_pButton)->indexOfChild(pList), -1);
    QVERIFY(Heard(m_pButton)->state().expandable && Heard(m_pButton)->state().collapsed
            && !Heard(m_pButton)->state().expanded);

    m_pList->setGeometry(200, 200, 100, 100);
    m_pList->show();
    QCOMPARE(Heard(m_pButton)->childCount(), 1);
    QCOMPARE(Heard(m_pButton)->child(0), pList);
    QVERIFY(!Heard(m_pButton)->child(1));
    QCOMPARE(Heard(m_pButton)->indexOfChild(pList), 0);
    QCOMPARE(Heard(m_pButton)->indexOfChild(Heard(m_pButton)), -1);
    QCOMPARE(Heard(m_pButton)->indexOfChild(nullptr), -1);
    QCOMPARE(pList->parent(), Heard(m_pButton));
    QVERIFY(Heard(m_pButton)->state().expanded && !Heard(m_pButton)->state().collapsed);
    const QPoint pt = m_pList->geometry().center();
    QCOMPARE(Heard(m_pButton)->childAt(pt.x(), pt.y()), pList);
    QVERIFY(!Heard(m_pButton)->childAt(pt.x() + 500, pt.y()));
}

void tst_CDropDownAccess::pressing()
{
    CDropDownAccess::Install(m_pButton);
    QSignalSpy spy(m_pButton, &QPushButton::clicked);
    const QString strPress = QAccessibleActionInterface::pressAction();
    QVERIFY(Heard(m_pButton)->actionInterface()->actionNames().contains(strPress));
    Heard(m_pButton)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QVERIFY(spy.isEmpty());
    Heard(m_pButton)->actionInterface()->doAction(strPress);
    QCOMPARE(spy.count(), 1);
    m_pButton->setEnabled(false);
    QVERIFY(!Heard(m_pButton)->actionInterface()->actionNames().contains(strPress));
    Heard(m_pButton)->actionInterface()->doAction(strPress);
    QCOMPARE(spy.count(), 1);
}

void tst_CDropDownAccess::otherButtonsStayButtons()
{
    CDropDownAccess::Install(m_pButton);
    QPushButton other("Copy");
    QCOMPARE(Heard(&other)->role(), QAccessible::PushButton);
}

QTEST_MAIN(tst_CDropDownAccess)
#include "tst_CDropDownAccess.moc"
