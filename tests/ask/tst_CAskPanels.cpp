#include "ask/CAskEndPanel.h"
#include "ask/CAskGround.h"
#include "ask/CAskPanel.h"
#include "ask/CAskProgram.h"
#include "ask/CAskRequest.h"
#include "ask/CCapsLockGuess.h"
#include "ask/CMissingList.h"
#include "pages/CElidedLabel.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <optional>

/** The questions, answered by keys and by the mouse. */
class tst_CAskPanels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qApp->setStyleSheet(ProgramSheet()); }
    void cleanup() { m_pGround.reset(); }

    void panelIsInTheMiddle_data();
    void panelIsInTheMiddle();
    void answersByKeys_data();
    void answersByKeys();
    void heldReturnAnswersNothing();
    void answerIsGivenOnce_data();
    void answerIsGivenOnce();
    void passwordIsGivenAsTyped();
    void recoveryKeyIsCleanedForBitLockerAlone();
    void emptyPasswordIsNoAnswer();
    void whatIsTypedIsShownUntilItIsNot();
    void wrongPasswordIsTold();
    void nameIsPlainTextAndElided();
    void capsLock_data();
    void capsLock();
    void deadKeys_data();
    void deadKeys();
    void layoutIsChosenFromTheOpenList();
    void layoutInUseIsNoChoice();
    void unknownLayoutIsShown();
    void choiceIsClicked();
    void endCountsDown();
    void endTellsOfTheStick();
    void endWaitsForADiskThatDoesNotAnswer();
    void helpSaysWhatBecomesOfTheDisk();
    void missingSaysWhatAndWhy();
    void missingSaysWhatHelps_data();
    void missingSaysWhatHelps();
    void missingGoesOn_data();
    void missingGoesOn();
    void longListOfMissingScrolls();

private:
    void Ask(const QStringList& listArgument, const QByteArray& baMissing = {});
    QString Texts() const;
    template <typename T> T* Part(const char* pName) const { return m_pGround->findChild<T*>(pName); }

    std::unique_ptr<CAskGround> m_pGround;
    std::optional<STAskAnswer> m_stAnswer;
};

void tst_CAskPanels::Ask(const QStringList& listArgument, const QByteArray& baMissing)
{
    STParsedRequest stParsed = CAskRequest::Parse(listArgument);
    QVERIFY2(stParsed.stRequest, qPrintable(stParsed.strError));
    stParsed.stRequest->listMissing = CMissingList::Parse(baMissing);
    m_stAnswer.reset();
    m_pGround = std::make_unique<CAskGround>(CAskProgram::MakePanel(*stParsed.stRequest).release());
    connect(m_pGround->Panel(), &CAskPanel::SignalAnswer, this,
            [this](const STAskAnswer& stAnswer) { m_stAnswer = stAnswer; });
    QVERIFY(m_pGround->Cover());
    QVERIFY(QTest::qWaitForWindowActive(m_pGround.get()));
}

void tst_CAskPanels::panelIsInTheMiddle_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("800x600") << QSize(800, 600);
    QTest::newRow("1024x768") << QSize(1024, 768);
    QTest::newRow("1280x800") << QSize(1280, 800);
    QTest::newRow("narrower than the panel") << QSize(480, 800);
}

void tst_CAskPanels::panelIsInTheMiddle()
{
    QFETCH(QSize, size);
    Ask({"password", "--name", "a"});
    m_pGround->resize(size);
    const QRect rect = m_pGround->Panel()->geometry();
    QVERIFY(QRect(QPoint(), size).contains(rect));
    QVERIFY((rect.center() - QRect(QPoint(), size).center()).manhattanLength() <= 2);
    QCOMPARE(rect.width(), qMin(CAskPanel::WIDTH, size.width() - 32));
}

void tst_CAskPanels::answersByKeys_data()
{
    QTest::addColumn<QString>("strScreen");
    QTest::addColumn<QList<int>>("listKey");
    QTest::addColumn<int>("nStatus"); // -1: none
    const auto row = [](const char* pName, const char* pScreen, const QList<int>& listKey, int nStatus) {
        QTest::newRow(pName) << QString(pScreen) << listKey << nStatus;
    };
    row("source, Return", "source", {Qt::Key_Return}, 0);
    row("source, Enter", "source", {Qt::Key_Enter}, 0);
    row("source, Space", "source", {Qt::Key_Space}, 0);
    row("source, the other by Tab", "source", {Qt::Key_Tab, Qt::Key_Return}, 1);
    row("source, the other by an arrow", "source", {Qt::Key_Down, Qt::Key_Return}, 1);
    row("source, and back", "source", {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return}, 0);
    row("source, Escape", "source", {Qt::Key_Escape}, -1);
    row("end, Return", "end", {Qt::Key_Return}, 0);
    row("end, the other by Tab", "end", {Qt::Key_Tab, Qt::Key_Return}, 1);
    row("end, Escape", "end", {Qt::Key_Escape}, -1);
    row("again, Return", "again", {Qt::Key_Return}, 0);
    row("again, the other by Tab", "again", {Qt::Key_Tab, Qt::Key_Return}, 1);
    row("wait", "wait", {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}, -1);
    row("password, Escape alone", "password", {Qt::Key_Escape}, -1);
    row("password, Escape and Return", "password", {Qt::Key_Escape, Qt::Key_Return}, 1);
    row("password, Return in an empty field", "password", {Qt::Key_Return}, -1);
    row("password, typed", "password", {Qt::Key_A, Qt::Key_Return}, 0);
    // Show, keyboard, skip.
    row("password, skipped by Tab", "password", {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return}, 1);
    row("password, unlocked by Tab", "password",
        {Qt::Key_A, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}, 0);
}

void tst_CAskPanels::answersByKeys()
{
    QFETCH(QString, strScreen);
    QFETCH(QList<int>, listKey);
    QFETCH(int, nStatus);
    Ask({strScreen});
    for (const int nKey : listKey) {
        QWidget* pFocus = QApplication::focusWidget();
        QTest::keyClick(pFocus ? pFocus : m_pGround.get(), Qt::Key(nKey));
    }
    QCOMPARE(m_stAnswer ? m_stAnswer->nStatus : -1, nStatus);
}

void tst_CAskPanels::heldReturnAnswersNothing()
{
    for (const QStringList& listArgument :
         {QStringList("source"), QStringList("end"), QStringList("password")}) {
        Ask(listArgument);
        if (auto* pEdit = Part<QLineEdit>("m_pPasswordEdit")) {
            pEdit->setText("a");
        }
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
        QVERIFY(!m_stAnswer);
    }
}

void tst_CAskPanels::answerIsGivenOnce_data()
{
    QTest::addColumn<QStringList>("listArgument");
    QTest::newRow("password") << QStringList("password");
    QTest::newRow("source") << QStringList("source");
    QTest::newRow("end") << QStringList("end");
    QTest::newRow("again") << QStringList("again");
}

// A key that bounces would give the password twice in one line.
void tst_CAskPanels::answerIsGivenOnce()
{
    QFETCH(QStringList, listArgument);
    Ask(listArgument);
    if (auto* pEdit = Part<QLineEdit>("m_pPasswordEdit")) {
        pEdit->setText("a");
    }
    int nAnswers = 0;
    connect(m_pGround->Panel(), &CAskPanel::SignalAnswer, this, [&] { ++nAnswers; });
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    for (auto* pButton : m_pGround->findChildren<QPushButton*>()) {
        pButton->click();
    }
    QCOMPARE(nAnswers, 1);
}

void tst_CAskPanels::passwordIsGivenAsTyped()
{
    Ask({"password", "--kind", "LUKS"});
    auto* pEdit = Part<QLineEdit>("m_pPasswordEdit");
    QCOMPARE(QApplication::focusWidget(), pEdit);
    const QString strPassword(" 1 2-ß<b>\\$' 日本 ");
    pEdit->setText(strPassword);
    QTest::keyClick(pEdit, Qt::Key_Return);
    QVERIFY(m_stAnswer);
    QCOMPARE(m_stAnswer->nStatus, 0);
    QCOMPARE(m_stAnswer->baOutput, strPassword.toUtf8());
}

void tst_CAskPanels::recoveryKeyIsCleanedForBitLockerAlone()
{
    const QByteArray baKey("111111-222222-333333-444444-555555-666666-777777-888888");
    const QByteArray baTyped = QByteArray(baKey).replace("-", " ");
    for (const bool bBitLocker : {true, false}) {
        Ask({"password", "--kind", bBitLocker ? "BitLocker" : "LUKS"});
        Part<QLineEdit>("m_pPasswordEdit")->setText(baTyped);
        QTest::mouseClick(Part<QPushButton>("toolBtn"), Qt::LeftButton);
        QVERIFY(m_stAnswer);
        QCOMPARE(m_stAnswer->baOutput, bBitLocker ? baKey : baTyped);
    }
}

void tst_CAskPanels::emptyPasswordIsNoAnswer()
{
    Ask({"password"});
    auto* pUnlock = Part<QPushButton>("toolBtn");
    QVERIFY(!pUnlock->isEnabled());
    Part<QLineEdit>("m_pPasswordEdit")->setText("a");
    QVERIFY(pUnlock->isEnabled());
    Part<QLineEdit>("m_pPasswordEdit")->clear();
    QVERIFY(!pUnlock->isEnabled());
    QTest::mouseClick(Part<QPushButton>("toolBtnEx"), Qt::LeftButton);
    QVERIFY(m_stAnswer);
    QCOMPARE(m_stAnswer->nStatus, 1);
    QVERIFY(m_stAnswer->baOutput.isEmpty());
}

void tst_CAskPanels::whatIsTypedIsShownUntilItIsNot()
{
    Ask({"password"});
    const auto* pEdit = Part<QLineEdit>("m_pPasswordEdit");
    auto* pBox = Part<QCheckBox>("m_pShowBox");
    QVERIFY(pBox->isChecked());
    QCOMPARE(pEdit->echoMode(), QLineEdit::Normal);
    QTest::keyClick(pBox, Qt::Key_Space);
    QCOMPARE(pEdit->echoMode(), QLineEdit::Password);
    QTest::keyClick(pBox, Qt::Key_Space);
    QCOMPARE(pEdit->echoMode(), QLineEdit::Normal);
}

void tst_CAskPanels::wrongPasswordIsTold()
{
    Ask({"password"});
    QVERIFY(!Part<QLabel>("m_pWrongLab"));
    Ask({"password", "--try", "2"});
    QCOMPARE(Part<QLabel>("m_pWrongLab")->text(),
             QString("That password did not open the disk. Try 2 of 3."));
}

void tst_CAskPanels::nameIsPlainTextAndElided()
{
    const QString strLong = "<b>" + QString(300, 'W') + "</b>";
    Ask({"source", "--name", strLong, "--disk", strLong, "--size", "5", "--systems", "<i>Windows</i>"});
    for (const char* pName : {"m_pNameLab", "m_pFactsLab"}) {
        const auto* pLabel = Part<CElidedLabel>(pName);
        QCOMPARE(pLabel->textFormat(), Qt::PlainText);
        QVERIFY(pLabel->ShownText() != pLabel->text());
        QVERIFY(pLabel->width() < CAskPanel::WIDTH);
    }
    QVERIFY(Part<CElidedLabel>("m_pFactsLab")->text().startsWith("Holds <i>Windows</i>"));
}

void tst_CAskPanels::capsLock_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<int>("nModifiers");
    QTest::addColumn<bool>("bOn");
    const auto row = [](const char* pName, const char* pText, int nModifiers, bool bOn) {
        QTest::newRow(pName) << QString(pText) << nModifiers << bOn;
    };
    row("small", "a", Qt::NoModifier, false);
    row("large", "A", Qt::NoModifier, true);
    row("large with Shift", "A", Qt::ShiftModifier, false);
    row("small with Shift", "a", Qt::ShiftModifier, true);
    row("umlaut", "Ü", Qt::NoModifier, true);
    row("digit", "1", Qt::NoModifier, false);
    row("sharp s", "ß", Qt::NoModifier, false);
    row("third level", "A", Qt::GroupSwitchModifier, false);
    row("Control", "A", Qt::ControlModifier, false);
    row("no text", "", Qt::NoModifier, false);
}

void tst_CAskPanels::capsLock()
{
    QFETCH(QString, strText);
    QFETCH(int, nModifiers);
    QFETCH(bool, bOn);
    CCapsLockGuess guess;
    const QKeyEvent event(QEvent::KeyPress, 0, Qt::KeyboardModifiers(nModifiers), strText);
    guess.Take(event);
    QCOMPARE(guess.IsOn(), bOn);
    // What says nothing changes nothing.
    guess.Take(QKeyEvent(QEvent::KeyPress, 0, Qt::NoModifier, "1"));
    QCOMPARE(guess.IsOn(), bOn);

    Ask({"password"});
    QKeyEvent typed(event);
    QCoreApplication::sendEvent(Part<QLineEdit>("m_pPasswordEdit"), &typed);
    QCOMPARE(Part<QLabel>("m_pCapsLab")->isVisible(), bOn);
}

void tst_CAskPanels::deadKeys_data()
{
    QTest::addColumn<QString>("strLayout");
    QTest::addColumn<QVector<int>>("listKey");
    QTest::addColumn<QString>("strTyped");
    const auto row
        = [](const char* pName, const char* pLayout, const QVector<int>& listKey, const char* pTyped) {
              QTest::newRow(pName) << QString(pLayout) << listKey << QString::fromUtf8(pTyped);
          };
    row("letter", "de", {Qt::Key_Dead_Acute, Qt::Key_E}, "é");
    row("letter that takes none", "de", {Qt::Key_Dead_Circumflex, Qt::Key_X}, "^x");
    row("blank", "de", {Qt::Key_Dead_Circumflex, Qt::Key_Space}, "^");
    row("twice", "de", {Qt::Key_Dead_Grave, Qt::Key_Dead_Grave}, "`");
    row("and then a letter", "pt", {Qt::Key_Dead_Tilde, Qt::Key_Space, Qt::Key_A}, "~a");
    row("Shift between", "fr", {Qt::Key_Dead_Diaeresis, Qt::Key_Shift, Qt::Key_I}, "ï");
    row("taken back", "es", {Qt::Key_A, Qt::Key_Dead_Acute, Qt::Key_Backspace, Qt::Key_E}, "ae");
    row("given up", "es", {Qt::Key_Dead_Acute, Qt::Key_Home, Qt::Key_E}, "e");
    row("acute with a blank", "de", {Qt::Key_Dead_Acute, Qt::Key_Space}, "´");
    row("acute with a blank, US", "us(intl)", {Qt::Key_Dead_Acute, Qt::Key_Space}, "'");
    row("diaeresis with a blank, US", "us(intl)", {Qt::Key_Dead_Diaeresis, Qt::Key_Space}, "\"");
    row("none", "de", {Qt::Key_A, Qt::Key_Space}, "a ");
}

void tst_CAskPanels::deadKeys()
{
    QFETCH(QString, strLayout);
    QFETCH(QVector<int>, listKey);
    QFETCH(QString, strTyped);
    Ask({"password", "--layout", strLayout});
    auto* pEdit = Part<QLineEdit>("m_pPasswordEdit");
    for (const int nKey : listKey) {
        const bool bText = nKey < 0x80;
        const QString strText = bText ? QString(QChar(nKey)).toLower() : QString();
        QKeyEvent event(QEvent::KeyPress, nKey, Qt::NoModifier, strText);
        QCoreApplication::sendEvent(pEdit, &event);
    }
    QCOMPARE(pEdit->text(), strTyped);
}

void tst_CAskPanels::layoutIsChosenFromTheOpenList()
{
    Ask({"password", "--layout", "de"});
    auto* pBox = Part<QComboBox>("m_pKeyboardBox");
    QCOMPARE(pBox->currentData().toString(), QString("de"));
    pBox->setFocus();
    // Closed it changes for no key but opens.
    QTest::keyClick(pBox, Qt::Key_E);
    QCOMPARE(pBox->currentData().toString(), QString("de"));
    QTest::keyClick(pBox, Qt::Key_Down);
    QTRY_VERIFY(pBox->view()->isVisible());
    QVERIFY(!m_stAnswer);
    const int nNext = pBox->currentIndex() + 1;
    const QByteArray baNext = pBox->itemData(nNext).toByteArray();
    QTest::keyClick(pBox->view(), Qt::Key_Down);
    QTest::keyClick(pBox->view(), Qt::Key_Return);
    QTRY_VERIFY(m_stAnswer);
    QCOMPARE(m_stAnswer->nStatus, 3);
    QCOMPARE(m_stAnswer->baOutput, baNext);
}

void tst_CAskPanels::layoutInUseIsNoChoice()
{
    Ask({"password", "--layout", "de"});
    auto* pBox = Part<QComboBox>("m_pKeyboardBox");
    pBox->showPopup();
    QTRY_VERIFY(pBox->view()->isVisible());
    QTest::keyClick(pBox->view(), Qt::Key_Return);
    QTRY_VERIFY(!pBox->view()->isVisible());
    QVERIFY(!m_stAnswer);
}

void tst_CAskPanels::unknownLayoutIsShown()
{
    Ask({"password", "--layout", "xy(z)"});
    QCOMPARE(Part<QComboBox>("m_pKeyboardBox")->currentText(), QString("xy(z)"));
}

void tst_CAskPanels::choiceIsClicked()
{
    Ask({"source", "--name", "a"});
    const auto listChoice = m_pGround->findChildren<QPushButton*>("choiceBtn");
    QCOMPARE(listChoice.size(), 2);
    // On the text, which is a part of the button.
    auto* pText = listChoice.at(1)->findChildren<QLabel*>().at(1);
    QTest::mouseClick(m_pGround->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      pText->mapTo(m_pGround.get(), pText->rect().center()));
    QVERIFY(m_stAnswer);
    QCOMPARE(m_stAnswer->nStatus, 1);
}

void tst_CAskPanels::endCountsDown()
{
    Ask({"end"});
    auto* pPanel = qobject_cast<CAskEndPanel*>(m_pGround->Panel());
    const auto* pSeconds = Part<QLabel>("m_pSecondsLab");
    for (int nLeft = CAskEndPanel::SECONDS - 1; nLeft > 0; --nLeft) {
        pPanel->Tick();
        QVERIFY2(pSeconds->text().endsWith(QString(": %1").arg(nLeft)), qPrintable(pSeconds->text()));
        QVERIFY(!m_stAnswer);
    }
    pPanel->Tick();
    QVERIFY(m_stAnswer);
    QCOMPARE(m_stAnswer->nStatus, 0);
}

void tst_CAskPanels::endTellsOfTheStick()
{
    const auto fnTexts = [this] { return m_pGround->findChildren<QLabel*>().size(); };
    Ask({"end"});
    const int nTexts = fnTexts();
    Ask({"end", "--reads-medium"});
    QCOMPARE(fnTexts(), nTexts + 1);
}

void tst_CAskPanels::endWaitsForADiskThatDoesNotAnswer()
{
    Ask({"end"});
    QVERIFY(Part<QLabel>("m_pSecondsLab"));
    Ask({"end", "--unsaved"});
    QVERIFY(!Part<QLabel>("m_pSecondsLab"));
    QCOMPARE(m_pGround->Panel()->accessibleName(), QString("A disk did not answer"));
    const auto listLabel = m_pGround->findChildren<QLabel*>();
    QVERIFY(std::none_of(listLabel.begin(), listLabel.end(), [](const QLabel* pLabel) {
        return pLabel->text().contains("unplug") || pLabel->text().contains("any more");
    }));
}

void tst_CAskPanels::helpSaysWhatBecomesOfTheDisk()
{
    const auto fnSays = [this](const QString& strText) {
        const auto listLabel = m_pGround->findChildren<QLabel*>();
        return std::any_of(listLabel.begin(), listLabel.end(),
                           [&](const QLabel* pLabel) { return pLabel->text().contains(strText); });
    };
    for (const bool bWritable : {false, true}) {
        Ask(bWritable ? QStringList{"password", "--writable"} : QStringList{"password"});
        QCOMPARE(fnSays("Nothing on the disk is changed."), !bWritable);
        QCOMPARE(fnSays("Then files can be copied to the disk."), bWritable);
    }
}

QString tst_CAskPanels::Texts() const
{
    QStringList listText;
    for (const auto* pLabel : m_pGround->findChildren<QLabel*>()) {
        listText += pLabel->text();
    }
    return listText.join('\n');
}

void tst_CAskPanels::missingSaysWhatAndWhy()
{
    const QString strLong = "<b>" + QString(300, 'W') + "</b>";
    Ask({"missing"}, "damaged\t" + strLong.toUtf8() + "\t500000000\tDisk\nsilent\t\t\tModel\n");
    const auto listName = m_pGround->findChildren<CElidedLabel*>("m_pMissingNameLab");
    const auto listFacts = m_pGround->findChildren<CElidedLabel*>("m_pMissingFactsLab");
    QCOMPARE(listName.size(), 2);
    QCOMPARE(listName.at(0)->text(), strLong);
    QCOMPARE(listName.at(0)->textFormat(), Qt::PlainText);
    QVERIFY(listName.at(0)->ShownText() != strLong);
    QVERIFY(listName.at(0)->width() < CAskPanel::WIDTH);
    QCOMPARE(listFacts.at(0)->text(), QString("Cannot be read, perhaps damaged  ·  Disk"));
    QVERIFY(Texts().contains("500"));
    // What has no name goes by its disk.
    QCOMPARE(listName.at(1)->text(), QString("Model"));
    QVERIFY(listFacts.at(1)->text().startsWith("Does not answer"));
}

void tst_CAskPanels::missingSaysWhatHelps_data()
{
    QTest::addColumn<QByteArray>("baMissing");
    QTest::addColumn<bool>("bSpecialist");
    QTest::addColumn<bool>("bLater");
    QTest::addColumn<bool>("bPassword");
    const auto row
        = [](const char* pName, const char* pMissing, bool bSpecialist, bool bLater, bool bPassword) {
              QTest::newRow(pName) << QByteArray(pMissing) << bSpecialist << bLater << bPassword;
          };
    row("locked", "locked\ta\t1\tb", false, false, true);
    row("silent", "silent\ta\t1\tb", false, true, false);
    row("damaged", "damaged\ta\t1\tb", true, false, false);
    row("unknown", "unknown\ta\t1\tb", true, false, false);
    row("apart", "apart\ta\t1\tb", true, false, false);
    row("lost", "lost\ta\t1\tb", true, false, false);
    row("all", "lost\ta\t1\tb\nsilent\ta\t1\tb\nlocked\ta\t1\tb", true, true, true);
}

void tst_CAskPanels::missingSaysWhatHelps()
{
    QFETCH(QByteArray, baMissing);
    QFETCH(bool, bSpecialist);
    QFETCH(bool, bLater);
    QFETCH(bool, bPassword);
    Ask({"missing"}, baMissing);
    QCOMPARE(Texts().contains("specialist"), bSpecialist);
    QCOMPARE(Texts().contains("later"), bLater);
    QCOMPARE(Texts().contains("type a password"), bPassword);
}

void tst_CAskPanels::missingGoesOn_data()
{
    QTest::addColumn<int>("nLines");
    QTest::addColumn<QList<int>>("listKey");
    QTest::addColumn<int>("nStatus"); // -1: none
    QTest::newRow("Return") << 1 << QList<int>{Qt::Key_Return} << 0;
    QTest::newRow("Enter") << 1 << QList<int>{Qt::Key_Enter} << 0;
    QTest::newRow("Space") << 1 << QList<int>{Qt::Key_Space} << 0;
    QTest::newRow("Escape") << 1 << QList<int>{Qt::Key_Escape} << -1;
    QTest::newRow("Return in the list") << 20 << QList<int>{Qt::Key_Tab, Qt::Key_Return} << 0;
    QTest::newRow("Space in the list") << 20 << QList<int>{Qt::Key_Tab, Qt::Key_Space} << -1;
}

void tst_CAskPanels::missingGoesOn()
{
    QFETCH(int, nLines);
    QFETCH(QList<int>, listKey);
    QFETCH(int, nStatus);
    Ask({"missing"}, QByteArray("damaged\ta\t1\tb\n").repeated(nLines));
    for (const int nKey : listKey) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(nKey));
    }
    QCOMPARE(m_stAnswer ? m_stAnswer->nStatus : -1, nStatus);
    if (m_stAnswer) {
        QVERIFY(m_stAnswer->baOutput.isEmpty());
        return;
    }
    QTest::mouseClick(Part<QPushButton>("toolBtn"), Qt::LeftButton);
    QVERIFY(m_stAnswer);
}

void tst_CAskPanels::longListOfMissingScrolls()
{
    Ask({"missing"}, "damaged\ta\t1\tb\n");
    QCOMPARE(Part<QScrollArea>("m_pMissingArea")->verticalScrollBar()->maximum(), 0);
    Ask({"missing"}, QByteArray("damaged\ta\t1\tb\n").repeated(50));
    m_pGround->resize(800, 600);
    QVERIFY(m_pGround->rect().contains(m_pGround->Panel()->geometry()));
    const auto* pArea = Part<QScrollArea>("m_pMissingArea");
    const auto* pBar = pArea->verticalScrollBar();
    QTRY_VERIFY(pBar->maximum() > pArea->height());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    const int nPage = pBar->value();
    QVERIFY(nPage > 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QCOMPARE(pBar->value(), pBar->maximum());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp);
    QVERIFY(pBar->value() < pBar->maximum());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    QCOMPARE(pBar->value(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), pArea);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QVERIFY(pBar->value() > 0 && pBar->value() < nPage);
}

QTEST_MAIN(tst_CAskPanels)
#include "tst_CAskPanels.moc"
