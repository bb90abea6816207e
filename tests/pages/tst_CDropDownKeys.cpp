#include "pages/CDropDownKeys.h"
#include "support/Widgets.h"

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
    void listKey_data();
    void listKey();

private:
    void Press(QWidget* pWidget, Qt::Key key, bool bHeld, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    std::unique_ptr<QWidget> m_pWindow;
    QPushButton* m_pOther = nullptr;
    QPushButton* m_pButton = nullptr;
    QListWidget* m_pList = nullptr;
    CDropDownKeys* m_pKeys = nullptr;
};

void tst_CDropDownKeys::init()
{
    m_pWindow = std::make_unique<QWidget>();
    m_pWindow->resize(300, 200);
    m_pOther = new QPushButton("other", m_pWindow.get());
    m_pButton = new QPushButton("open", m_pWindow.get());
    m_pList = new QListWidget(m_pWindow.get());
    m_pList->setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
    m_pKeys = new CDropDownKeys(m_pButton, m_pList);
    QVERIFY(ShowActive(m_pWindow.get()));
}

void tst_CDropDownKeys::cleanup() { m_pWindow.reset(); }

void tst_CDropDownKeys::Press(QWidget* pWidget, Qt::Key key, bool bHeld, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), bHeld);
    QApplication::sendEvent(pWidget, &event);
}

void tst_CDropDownKeys::buttonKey_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("nOpens");
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
    QSignalSpy spyOpen(m_pKeys, &CDropDownKeys::SignalOpen);
    QSignalSpy spyClick(m_pButton, &QPushButton::clicked);
    m_pButton->setFocus();
    Press(m_pButton, key, true, modifiers);
    QCOMPARE(spyOpen.count(), 0); // it is still held from the list
    Press(m_pButton, key, false, modifiers);
    QTEST(spyOpen.count(), "nOpens");
    QVERIFY(spyClick.isEmpty());
    QVERIFY(m_pButton->hasFocus());
    // Space stays the button's own.
    QTest::keyClick(m_pButton, Qt::Key_Space);
    QCOMPARE(spyClick.count(), 1);
}

void tst_CDropDownKeys::listKey_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("bHeld");
    QTest::addColumn<QStringList>("listChosen"); // from a list whose second row of three is current
    QTest::addColumn<int>("nRow");
    QTest::addColumn<bool>("bCloses");
    const auto row = [](const char* pName, Qt::Key key, int nRow, bool bCloses) {
        QTest::newRow(pName) << key << false << QStringList() << nRow << bCloses;
    };
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        const QByteArray baName = QKeySequence(key).toString().toUtf8();
        QTest::newRow(baName) << key << false << QStringList{"two"} << 1 << true;
        QTest::newRow(baName + ", held") << key << true << QStringList() << 1 << false;
    }
    row("Escape", Qt::Key_Escape, 1, true);
    row("Up", Qt::Key_Up, 0, false);
    row("Down", Qt::Key_Down, 2, false);
    row("Home", Qt::Key_Home, 0, false);
    row("End", Qt::Key_End, 2, false);
    row("Tab", Qt::Key_Tab, 1, false);
}

void tst_CDropDownKeys::listKey()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, bHeld);
    QFETCH(QStringList, listChosen);
    QFETCH(int, nRow);
    QFETCH(bool, bCloses);
    QStringList listHeard;
    connect(m_pKeys, &CDropDownKeys::SignalChosen, this,
            [&](const QListWidgetItem* pItem) { listHeard += pItem->text(); });
    QSignalSpy spyClick(m_pButton, &QPushButton::clicked);
    for (const bool bEmpty : {true, false}) {
        m_pList->addItems(bEmpty ? QStringList() : QStringList{"one", "two", "three"});
        m_pList->setCurrentRow(bEmpty ? -1 : 1);
        // The list can be opened in other ways, too, so the focus is elsewhere at first.
        m_pOther->setFocus();
        m_pList->show();
        m_pList->setFocus(Qt::PopupFocusReason);
        Press(m_pList, key, bHeld);
        QCOMPARE(listHeard, bEmpty ? QStringList() : listChosen);
        QCOMPARE(m_pList->currentRow(), bEmpty ? -1 : nRow);
        QCOMPARE(m_pList->isVisible(), !bCloses);
        QCOMPARE(m_pButton->hasFocus(), bCloses);
        QVERIFY(m_pWindow->isVisible());
        // The rest of the same key stroke arrives at the button.
        QTest::keyRelease(m_pButton, key);
        QVERIFY(spyClick.isEmpty());
    }
}

QTEST_MAIN(tst_CDropDownKeys)
#include "tst_CDropDownKeys.moc"
