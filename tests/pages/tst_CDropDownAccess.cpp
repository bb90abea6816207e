#include "pages/CDropDownAccess.h"

#include <QAccessible>
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
    QAccessibleInterface* Box() const { return QAccessible::queryAccessibleInterface(m_pButton); }

    std::unique_ptr<QWidget> m_pWindow;
    QPushButton* m_pButton = nullptr;
    QListWidget* m_pList = nullptr;
};

void tst_CDropDownAccess::init()
{
    m_pWindow = std::make_unique<QWidget>();
    m_pButton = new QPushButton(m_pWindow.get());
    m_pButton->setAccessibleName(QStringLiteral("Disk"));
    m_pList = new QListWidget(m_pButton);
    m_pList->setWindowFlags(Qt::Popup);
    m_pList->addItems({QStringLiteral("one"), QStringLiteral("two")});
    m_pWindow->show();
}

void tst_CDropDownAccess::cleanup() { m_pWindow.reset(); }

void tst_CDropDownAccess::isAComboBox_data()
{
    QTest::addColumn<bool>("read");
    QTest::newRow("before a reader comes") << false;
    QTest::newRow("after a reader has come") << true;
}

void tst_CDropDownAccess::isAComboBox()
{
    QFETCH(bool, read);
    if (read) {
        QVERIFY(Box());
    }
    CDropDownAccess::Install(m_pButton);
    QCOMPARE(Box()->role(), QAccessible::ComboBox);
    QCOMPARE(Box()->text(QAccessible::Name), QStringLiteral("Disk"));
    QVERIFY(Box()->state().hasPopup);
    QVERIFY(Box()->state().focusable);
}

void tst_CDropDownAccess::valueIsTheDescription()
{
    CDropDownAccess::Install(m_pButton);
    m_pButton->setAccessibleDescription(QStringLiteral("STICK"));
    QCOMPARE(Box()->text(QAccessible::Description), QStringLiteral("STICK"));
    QCOMPARE(Box()->text(QAccessible::Value), QStringLiteral("STICK"));
}

void tst_CDropDownAccess::openListIsItsChild()
{
    CDropDownAccess::Install(m_pButton);
    QAccessibleInterface* pList = QAccessible::queryAccessibleInterface(m_pList);
    QCOMPARE(Box()->childCount(), 0);
    QVERIFY(!Box()->child(0));
    QCOMPARE(Box()->indexOfChild(pList), -1);
    QVERIFY(Box()->state().expandable && Box()->state().collapsed && !Box()->state().expanded);

    m_pList->setGeometry(200, 200, 100, 100);
    m_pList->show();
    QCOMPARE(Box()->childCount(), 1);
    QCOMPARE(Box()->child(0), pList);
    QVERIFY(!Box()->child(1));
    QCOMPARE(Box()->indexOfChild(pList), 0);
    QCOMPARE(Box()->indexOfChild(Box()), -1);
    QCOMPARE(Box()->indexOfChild(nullptr), -1);
    QCOMPARE(pList->parent(), Box());
    QVERIFY(Box()->state().expanded && !Box()->state().collapsed);
    const QPoint pt = m_pList->geometry().center();
    QCOMPARE(Box()->childAt(pt.x(), pt.y()), pList);
    QVERIFY(!Box()->childAt(pt.x() + 500, pt.y()));
}

void tst_CDropDownAccess::pressing()
{
    CDropDownAccess::Install(m_pButton);
    QSignalSpy spy(m_pButton, &QPushButton::clicked);
    const QString strPress = QAccessibleActionInterface::pressAction();
    QVERIFY(Box()->actionInterface()->actionNames().contains(strPress));
    Box()->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QVERIFY(spy.isEmpty());
    Box()->actionInterface()->doAction(strPress);
    QCOMPARE(spy.count(), 1);
    m_pButton->setEnabled(false);
    QVERIFY(!Box()->actionInterface()->actionNames().contains(strPress));
    Box()->actionInterface()->doAction(strPress);
    QCOMPARE(spy.count(), 1);
}

void tst_CDropDownAccess::otherButtonsStayButtons()
{
    CDropDownAccess::Install(m_pButton);
    QPushButton other(QStringLiteral("Copy"));
    QCOMPARE(QAccessible::queryAccessibleInterface(&other)->role(), QAccessible::PushButton);
}

QTEST_MAIN(tst_CDropDownAccess)
#include "tst_CDropDownAccess.moc"
