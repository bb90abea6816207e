#include "pages/CElidedLabel.h"
#include "pages/CNoticeLine.h"
#include "support/Widgets.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

/** The line of notices by itself. */
class tst_CNoticeLine : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void nothingIsSeenWithoutANotice();
    void mostSeriousComesFirstAndAllThatFit();
    void noticeOfAKindReplacesItsLast();
    void tooLongATextKeepsItsEndsAndItsLink();
    void linkStandsBehindItsTextAndTakesKeys();
    void textsArePlain();
    void readersAreTold();
    void longNamesAreShortened();

private:
    CElidedLabel* Label() const { return m_pLine->findChild<CElidedLabel*>("m_pNoticeLab"); }
    QPushButton* Link() const { return m_pLine->findChild<QPushButton*>("m_pNoticeLink"); }

    std::unique_ptr<CNoticeLine> m_pLine;
};

void tst_CNoticeLine::init()
{
    m_pLine = std::make_unique<CNoticeLine>();
    m_pLine->resize(900, 32);
    QVERIFY(ShowActive(m_pLine.get()));
}

void tst_CNoticeLine::nothingIsSeenWithoutANotice()
{
    const QImage blank = m_pLine->grab().toImage();
    QVERIFY(!Label()->isVisible());
    QVERIFY(!Link()->isVisible());
    m_pLine->Set(ENNotice::LAST_COPY, "two of them", "Show");
    QVERIFY(Label()->isVisible());
    QVERIFY(Link()->isVisible());
    QVERIFY(m_pLine->grab().toImage() != blank);
    m_pLine->Clear(ENNotice::LAST_COPY);
    QVERIFY(!Label()->isVisible());
    QVERIFY(!Link()->isVisible());
    QCOMPARE(m_pLine->Text(), QString());
    QCOMPARE(m_pLine->grab().toImage(), blank);
}

void tst_CNoticeLine::mostSeriousComesFirstAndAllThatFit()
{
    const QString strBetween = QString::fromUtf8("  \u00b7  ");
    m_pLine->Set(ENNotice::DESTINATION, "other");
    m_pLine->Set(ENNotice::FOLDER, "folder");
    m_pLine->Set(ENNotice::UNLISTED, "unlisted");
    m_pLine->Set(ENNotice::LAST_COPY, "last", "Show");
    m_pLine->Set(ENNotice::NO_ANSWER, "hangs");
    const QStringList listText{"hangs", "last", "unlisted", "folder", "other"};
    QCOMPARE(m_pLine->Text(), listText.join(strBetween));
    m_pLine->Set(ENNotice::UNLISTED, QString(300, 'x'));
    // What does not fit behind the others is left out, not cut.
    QCOMPARE(m_pLine->Text(), QStringList({"hangs", "last", "folder", "other"}).join(strBetween));
    m_pLine->resize(60, 32);
    QCOMPARE(m_pLine->Text(), "hangs");
    QVERIFY(!Link()->isVisible());
    m_pLine->resize(2900, 32);
    QVERIFY(m_pLine->Text().contains("xxx"));
}

void tst_CNoticeLine::noticeOfAKindReplacesItsLast()
{
    m_pLine->Set(ENNotice::FOLDER, "one");
    m_pLine->Set(ENNotice::FOLDER, "two");
    QCOMPARE(m_pLine->Text(), "two");
    m_pLine->Clear(ENNotice::UNLISTED);
    QCOMPARE(m_pLine->Text(), "two");
    m_pLine->Set(ENNotice::FOLDER, QString());
    QCOMPARE(m_pLine->Text(), QString());
}

void tst_CNoticeLine::tooLongATextKeepsItsEndsAndItsLink()
{
    m_pLine->Set(ENNotice::LAST_COPY, "begin " + QString(300, 'x') + " end", "Show the list");
    QVERIFY(Label()->ShownText().startsWith("begin"));
    QVERIFY(Label()->ShownText().endsWith("end"));
    QVERIFY(Label()->ShownText() != Label()->text());
    QVERIFY(m_pLine->rect().contains(PlaceIn(m_pLine.get(), Link())));
    QVERIFY(PlaceIn(m_pLine.get(), Label()).right() < PlaceIn(m_pLine.get(), Link()).left());
}

void tst_CNoticeLine::linkStandsBehindItsTextAndTakesKeys()
{
    QSignalSpy spy(m_pLine.get(), &CNoticeLine::SignalLink);
    m_pLine->Set(ENNotice::LAST_COPY, "short", "Show the list");
    QCOMPARE(Label()->ShownText(), "short");
    QVERIFY(PlaceIn(m_pLine.get(), Link()).left() < 200);
    QCOMPARE(m_pLine->TabStop(), Link());
    Link()->setFocus(Qt::TabFocusReason);
    QVERIFY(Link()->hasFocus());
    QTest::keyClick(Link(), Qt::Key_Space);
    QTest::keyClick(Link(), Qt::Key_Return);
    QTest::mouseClick(Link(), Qt::LeftButton);
    QCOMPARE(spy.count(), 3);
    QCOMPARE(Heard(Link())->text(QAccessible::Name), "Show the list");
}

void tst_CNoticeLine::textsArePlain()
{
    m_pLine->Set(ENNotice::DESTINATION, "<b>now</b> &amp; a\nline");
    QCOMPARE(Label()->textFormat(), Qt::PlainText);
    QVERIFY(Label()->ShownText().startsWith("<b>now</b> &amp; a line"));
}

static QStringList* s_pListTold = nullptr;

static void NoteAlert(QAccessibleEvent* pEvent)
{
    if (pEvent->type() == QAccessible::Alert) {
        s_pListTold->append(NameHeard(pEvent->object()));
    }
}

void tst_CNoticeLine::readersAreTold()
{
    QStringList listTold;
    s_pListTold = &listTold;
    QTRY_VERIFY2(QAccessible::isActive(), "there is no accessibility bus");
    const auto pfnBefore = QAccessible::installUpdateHandler(NoteAlert);
    m_pLine->Set(ENNotice::FOLDER, "one");
    m_pLine->Set(ENNotice::FOLDER, "one"); // nothing new
    m_pLine->Set(ENNotice::FOLDER, "two");
    m_pLine->Clear(ENNotice::FOLDER);
    m_pLine->Clear(ENNotice::FOLDER);
    QAccessible::installUpdateHandler(pfnBefore);
    QCOMPARE(listTold, (QStringList{"one", "two"}));
}

void tst_CNoticeLine::longNamesAreShortened()
{
    QCOMPARE(m_pLine->Shortened("RESCUE"), "RESCUE");
    const QString strShort = m_pLine->Shortened(QString(200, 'W'));
    QVERIFY(strShort.size() > 5 && strShort.size() < 60);
}

QTEST_MAIN(tst_CNoticeLine)
#include "tst_CNoticeLine.moc"
