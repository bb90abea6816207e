#include "pages/CDropDownKeys.h"

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class tst_CDropDownKeys : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void buttonKey_data();
    void buttonKey();
    void heldKeyOpensNothing();
    void chooses_data();
    void chooses();
    void heldKeyChoosesNothing();
    void escapeClosesOnly();
    void moves();
    void emptyListBearsEveryKey_data();
    void emptyListBearsEveryKey();

private:
    void Open(int nRow);
    void Press(QWidget* pWidget, Qt::Key key, bool bHeld = false,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    std::unique_ptr<QWidget> m_pWindow;
    QPushButton* m_pButton = nullptr;
    QListWidget* m_pList = nullptr;
    CDropDownKeys* m_pKeys = nullptr;
};

void tst_CDropDownKeys::init()
{
    m_pWindow = std::make_unique<QWidget>();
    m_pWindow->resize(300, 200);
    auto* pOther = new QPushButton(QStringLiteral("other"), m_pWindow.get());
    m_pButton = new QPushButton(QStringLiteral("open"), m_pWindow.get());
    m_pList = new QListWidget(m_pWindow.get());
    m_pList->setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
    m_pKeys = new CDropDownKeys(m_pButton, m_pList);
    m_pWindow->show();
    m_pWindow->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    // The list can be opened in other ways, too, so the focus is elsewhere at first.
    pOther->setFocus();
}

void tst_CDropDownKeys::cleanup() { m_pWindow.reset(); }

void tst_CDropDownKeys::Open(int nRow)
{
    m_pList->addItems({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")});
    m_pList->setCurrentRow(nRow);
    m_pList->show();
    m_pList->setFocus(Qt::PopupFocusReason);
    QVERIFY(m_pList->hasFocus());
}

void tst_CDropDownKeys::Press(QWidget* pWidget, Qt::Key key, bool bHeld, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), bHeld);
    QApplication::sendEvent(pWidget, &event);
}

void tst_CDropDownKeys::buttonKey_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("opens");
    QTest::newRow("Down") << Qt::Key_Down << Qt::KeyboardModifiers() << 1;
    QTest::newRow("Alt+Down") << Qt::Key_Down << Qt::KeyboardModifiers(Qt::AltModifier) << 1;
    QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers() << 1;
    QTest::newRow("Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier) << 1;
    QTest::newRow("Escape") << Qt::Key_Escape << Qt::KeyboardModifiers() << 0;
    QTest::newRow("letter") << Qt::Key_O << Qt::KeyboardModifiers() << 0;
}

void tst_CDropDownKeys::buttonKey()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(int, opens);
    QSignalSpy spyOpen(m_pKeys, &CDropDownKeys::SignalOpen);
    QSignalSpy spyClick(m_pButton, &QPushButton::clicked);
    m_pButton->setFocus();
    Press(m_pButton, key, false, modifiers);
    QCOMPARE(spyOpen.count(), opens);
    QVERIFY(spyClick.isEmpty());
    QVERIFY(m_pButton->hasFocus());
    // Space stays the button's own.
    QTest::keyClick(m_pButton, Qt::Key_Space);
    QCOMPARE(spyClick.count(), 1);
}

void tst_CDropDownKeys::heldKeyOpensNothing()
{
    QSignalSpy spyOpen(m_pKeys, &CDropDownKeys::SignalOpen);
    m_pButton->setFocus();
    Press(m_pButton, Qt::Key_Return, true);
    Press(m_pButton, Qt::Key_Down, true);
    QVERIFY(spyOpen.isEmpty());
    QVERIFY(m_pButton->hasFocus());
}

void tst_CDropDownKeys::chooses_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void tst_CDropDownKeys::chooses()
{
    QFETCH(Qt::Key, key);
    Open(1);
    QStringList listChosen;
    connect(m_pKeys, &CDropDownKeys::SignalChosen, this,
            [&](const QListWidgetItem* pItem) { listChosen += pItem->text(); });
    QSignalSpy spyClick(m_pButton, &QPushButton::clicked);
    QTest::keyClick(m_pList, key);
    QCOMPARE(listChosen, QStringList{QStringLiteral("two")});
    QVERIFY(!m_pList->isVisible());
    QVERIFY(m_pButton->hasFocus());
    // The rest of the same key stroke arrives at the button.
    QTest::keyRelease(m_pButton, key);
    QVERIFY(spyClick.isEmpty());
}

void tst_CDropDownKeys::heldKeyChoosesNothing()
{
    Open(1);
    QSignalSpy spyChosen(m_pKeys, &CDropDownKeys::SignalChosen);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        Press(m_pList, key, true);
    }
    QVERIFY(spyChosen.isEmpty());
    QVERIFY(m_pList->isVisible());
}

void tst_CDropDownKeys::escapeClosesOnly()
{
    Open(1);
    QSignalSpy spyChosen(m_pKeys, &CDropDownKeys::SignalChosen);
    QTest::keyClick(m_pList, Qt::Key_Escape);
    QVERIFY(spyChosen.isEmpty());
    QVERIFY(!m_pList->isVisible());
    QVERIFY(m_pButton->hasFocus());
    QVERIFY(m_pWindow->isVisible());
}

void tst_CDropDownKeys::moves()
{
    Open(1);
    QTest::keyClick(m_pList, Qt::Key_Down);
    QCOMPARE(m_pList->currentRow(), 2);
    QTest::keyClick(m_pList, Qt::Key_Home);
    QCOMPARE(m_pList->currentRow(), 0);
    QTest::keyClick(m_pList, Qt::Key_End);
    QCOMPARE(m_pList->currentRow(), 2);
    QTest::keyClick(m_pList, Qt::Key_Up);
    QCOMPARE(m_pList->currentRow(), 1);
    QVERIFY(m_pList->isVisible());
}

void tst_CDropDownKeys::emptyListBearsEveryKey_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("closes");
    QTest::newRow("Up") << Qt::Key_Up << false;
    QTest::newRow("Down") << Qt::Key_Down << false;
    QTest::newRow("Home") << Qt::Key_Home << false;
    QTest::newRow("End") << Qt::Key_End << false;
    QTest::newRow("Tab") << Qt::Key_Tab << false;
    QTest::newRow("Return") << Qt::Key_Return << true;
    QTest::newRow("Enter") << Qt::Key_Enter << true;
    QTest::newRow("Space") << Qt::Key_Space << true;
    QTest::newRow("Escape") << Qt::Key_Escape << true;
}

void tst_CDropDownKeys::emptyListBearsEveryKey()
{
    QFETCH(Qt::Key, key);
    QSignalSpy spyChosen(m_pKeys, &CDropDownKeys::SignalChosen);
    m_pList->show();
    m_pList->setFocus(Qt::PopupFocusReason);
    QTest::keyClick(m_pList, key);
    QVERIFY(spyChosen.isEmpty());
    QTEST(!m_pList->isVisible(), "closes");
}

QTEST_MAIN(tst_CDropDownKeys)
#include "tst_CDropDownKeys.moc"
