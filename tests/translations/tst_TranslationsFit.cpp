#include "app/CFontFallback.h"
#include "kit/KvMessageBox.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CElidedLabel.h"
#include "pages/CSearchWaitView.h"
#include "pages/CSelFileWidget.h"
#include "settings/PListSerializer.h"
#include "translations/CTranslations.h"

#include <QApplication>
#include <QDir>
#include <QGlyphRun>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRawFont>
#include <QStyleOptionButton>
#include <QTextLayout>
#include <QTranslator>
#include <QtTest>

// What a page has of the main window, in pixels.
static const QSize PAGE_SIZE(1120, 649);

// The border that a button with the keyboard's focus has on either side, in pixels.
static const int FOCUS_BORDERS = 4;

static const char BOX[] = "box"; ///< message of a message box
static const char BUTTON[] = "button"; ///< button of a message box or a page
static const char LABEL[] = "label"; ///< label of a page
static const char HINT[] = "hint"; ///< what the empty drop-down says
static const char WAIT[] = "wait"; ///< message of the waiting dialog
static const char FOLDER[] = "folder"; ///< piece of a folder's name
static const char SPOKEN[] = "spoken"; ///< what a screen reader says of a part without a text
static const char UNSEEN[] = "unseen"; ///< replaced before it is seen, or a name of a window

// Where each text is shown. A new text has to be given a place here, so that it is measured.
static const struct
{
    const char* pContext;
    const char* pSource;
    const char* pPlace;
} PLACES[] = {
    {"CCopyFileWidget", "Remaining Time: %1", LABEL},
    {"CCopyFileWidget", "Cancel", BUTTON},
    {"CCopyFileWidget", "Calculating...", LABEL},
    {"CCopyFileWidget", "Copy Progress", SPOKEN},
    {"CCopyFileWidget", "Copying files to (%1): %2", LABEL},
    {"CCopyFileWidget", "Copy file completed!", BOX},
    {"CCopyFileWidget", "OK", BUTTON},
    {"CCopyFileWidget", "Your data might not be copied completely, are you sure to stop the copying process?",
     BOX},
    {"CCopyFileWidget", "Yes", BUTTON},
    {"CCopyFileWidget",
     "The destination storage device has been removed! Please check and connect the storage device then try "
     "again.",
     BOX},
    {"CSearchWaitView", "NotFoundOrNoItemView", UNSEEN},
    {"CSearchWaitView", "Searching", UNSEEN},
    {"CSearchWaitView", "image", UNSEEN},
    {"CSearchWaitView", "Searching, please wait...", WAIT},
    {"CSelFileWidget", "Source", LABEL},
    {"CSelFileWidget", "Select File to Copy:", LABEL},
    {"CSelFileWidget", "Destination", LABEL},
    {"CSelFileWidget", "Select Destination Disk:", LABEL},
    {"CSelFileWidget", "Copy", BUTTON},
    {"CSelFileWidget", "No disk to copy files from was found.", LABEL},
    {"CSelFileWidget", "No USB disk was found.\nConnect one, and it appears here.", HINT},
    {"CSelFileWidget", "Refresh List of Disks", SPOKEN},
    {"CSelFileWidget", "Files selected", SPOKEN},
    {"CSelFileWidget", "No files selected", SPOKEN},
    {"CSelFileWidget",
     "<span style=\"color:#ff7e17;\">%1GB</span> Available, <span style=\"color:#ff7e17;\">%2GB</span> Total",
     LABEL},
    {"CSelFileWidget",
     "Your drive may be damaged and Tarnwick can not write to this drive, please change another one and "
     "retry.",
     BOX},
    {"CSelFileWidget", "Calculating files size...", WAIT},
    {"CSelFileWidget", "No enough space, please select other Hard Disk or USB flash drive.", BOX},
    {"CSelFileWidget", "Tarnwick", FOLDER},
    {"CSelFileWidget", " at ", FOLDER},
    {"CSelFileWidget", "OK", BUTTON},
    {"CTarnwickMacPE", "CTarnwickMacPE", UNSEEN},
    {"CTarnwickMacPE", "Close", SPOKEN},
    {"CTarnwickMacPE", "Minimize", SPOKEN},
    {"CTarnwickMacPE", "Zoom", SPOKEN},
    {"CTarnwickMacPE", "logo", UNSEEN},
    {"CTarnwickMacPE", "title", UNSEEN},
    {"CTarnwickMacPE", "Kelvane Tarnwick", UNSEEN},
    {"CTarnwickMacPE", "Your computer will restart if you exit the program. Are you sure you want to exit?",
     BOX},
    {"CTarnwickMacPE", "Yes", BUTTON},
    {"CTarnwickMacPE", "Cancel", BUTTON},
    {"KvMessageBox", "Form", UNSEEN},
    {"KvMessageBox", "Close", SPOKEN},
    {"KvMessageBox", "Minimize", SPOKEN},
    {"KvMessageBox", "Zoom", SPOKEN},
    {"KvMessageBox", "TextLabel", UNSEEN},
    {"KvMessageBox", "Cancel", BUTTON},
    {"KvMessageBox", "Yes", BUTTON},
    {"KvMessageBox", "No", BUTTON},
    {"KvMessageBox", "OK", BUTTON},
};

/** Whether all of a button's text is seen, also while the button has the focus. */
static bool Fits(const QPushButton* pButton)
{
    QStyleOptionButton option;
    option.initFrom(pButton);
    const QRect rect = pButton->style()->subElementRect(QStyle::SE_PushButtonContents, &option, pButton);
    const QFontMetrics metrics = pButton->fontMetrics();
    return metrics.horizontalAdvance(pButton->text()) <= rect.width() - FOCUS_BORDERS
        && metrics.height() <= rect.height() - FOCUS_BORDERS;
}

/**
 * Whether the letters of a line that is centred between top and bottom are seen
 * whole. The line itself may be higher than its place: faces for Chinese keep
 * more room above and below than their letters take.
 */
static bool LineFits(const QString& strText, const QFont& font, const QSize& size)
{
    QTextLayout layout(strText, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    QRectF rectInk;
    for (const QGlyphRun& run : layout.glyphRuns()) {
        for (int n = 0; n < run.glyphIndexes().size(); ++n) {
            const QRectF rect = run.rawFont().boundingRect(run.glyphIndexes().at(n));
            rectInk |= rect.translated(run.positions().at(n));
        }
    }
    rectInk.translate(0, (size.height() - line.height()) / 2);
    return line.naturalTextWidth() <= size.width() && rectInk.top() >= 0 && rectInk.bottom() <= size.height();
}

/** Whether all of a label's text is seen at the label's size. */
static bool Fits(const QLabel* pLabel)
{
    if (const auto* pElided = qobject_cast<const CElidedLabel*>(pLabel)) {
        return pElided->ShownText() == pElided->text()
            && LineFits(pElided->text(), pElided->font(), pElided->size());
    }
    if (pLabel->wordWrap()) {
        // The least width is that of the longest word.
        return pLabel->minimumSizeHint().width() <= pLabel->width()
            && pLabel->heightForWidth(pLabel->width()) <= pLabel->height();
    }
    const int nIndent = qMax(0, pLabel->indent());
    return LineFits(pLabel->text(), pLabel->font(), pLabel->size() - QSize(nIndent, 0));
}

/** The texts below a widget that are cut, with the size that each has. */
static QString CutTexts(const QWidget* pWidget, int* pnMeasured = nullptr)
{
    QStringList listCut;
    const auto measure = [&](const auto* pPart) {
        if (!pPart->isVisible() || pPart->text().isEmpty()) {
            return;
        }
        if (pnMeasured) {
            ++*pnMeasured;
        }
        if (!Fits(pPart)) {
            listCut.append(QStringLiteral("%1 (%2x%3): %4")
                               .arg(pPart->objectName(), QString::number(pPart->width()),
                                    QString::number(pPart->height()), pPart->text()));
        }
    };
    for (const QLabel* pLabel : pWidget->findChildren<QLabel*>()) {
        measure(pLabel);
    }
    for (const QPushButton* pButton : pWidget->findChildren<QPushButton*>()) {
        measure(pButton);
    }
    return listCut.join(QLatin1Char('\n'));
}

static int CutCount(const QWidget* pWidget)
{
    const QString strCut = CutTexts(pWidget);
    return strCut.isEmpty() ? 0 : strCut.count(QLatin1Char('\n')) + 1;
}

static QString Translated(const char* pContext, const char* pSource)
{
    return QCoreApplication::translate(pContext, pSource);
}

/** Whether each translated text can be read whole where it is shown, in the program's fonts. */
class tst_TranslationsFit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void everyTextHasAPlace();
    void selectionPage();
    void copyPage();
    void waitingDialog();
    void messageBoxes();
    void everyLetterHasAFace();
    void lettersComeFromTheFaceMeant_data();
    void lettersComeFromTheFaceMeant();
    void measureFindsWhatIsCut();

private:
    void Save(QWidget* pWidget, const QString& strName);

    QString m_strLanguage;
    QTranslator m_translator;
};

// One language a run, as in the program: faces that Qt has chosen once stay.
void tst_TranslationsFit::initTestCase()
{
    m_strLanguage = QString::fromLocal8Bit(qgetenv("TARNWICK_LANGUAGE"));
    QVERIFY2(CTranslations::Languages().contains(m_strLanguage), "TARNWICK_LANGUAGE names no language");
    PListSerializer::WriteRecordPList(
        QVariantMap{{QStringLiteral("AppleLanguages"), QVariantList{CTranslations::Code(m_strLanguage)}}},
        QStringLiteral("/Library/Preferences/.GlobalPreferences.plist"));
    CFontFallback::Install();
    QVERIFY(m_translator.load(CTranslations::BuiltPath(m_strLanguage)));
    QVERIFY(QCoreApplication::installTranslator(&m_translator));

    QFile file(QStringLiteral(":/res/TarnwickMacPE.qss"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    qApp->setStyleSheet(QString::fromLatin1(file.readAll()));
}

void tst_TranslationsFit::Save(QWidget* pWidget, const QString& strName)
{
    const QString strFolder
        = QFile::decodeName(qgetenv("TARNWICK_BUILD_DIR")) + QStringLiteral("/pictures/languages/");
    QDir().mkpath(strFolder);
    pWidget->grab().save(QStringLiteral("%1%2-%3.png").arg(strFolder, m_strLanguage, strName));
}

void tst_TranslationsFit::everyTextHasAPlace()
{
    QStringList listPlaced;
    for (const auto& place : PLACES) {
        listPlaced.append(QString::fromUtf8(place.pContext) + QStringLiteral(": ")
                          + QString::fromUtf8(place.pSource));
    }
    QStringList listText;
    for (const STEntry& entry :
         CTranslations::Entries(CTranslations::SourcePath(QStringLiteral("English")))) {
        listText.append(entry.strContext + QStringLiteral(": ") + entry.strSource);
    }
    listPlaced.sort();
    listText.sort();
    QCOMPARE(listPlaced, listText);
}

void tst_TranslationsFit::selectionPage()
{
    CSelFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    int nMeasured = 0;
    QCOMPARE(CutTexts(&page, &nMeasured), QString());
    QCOMPARE(nMeasured, 7);
    Save(&page, QStringLiteral("selection-empty"));

    page.SlotShowListWidget();
    auto* pList = page.findChild<QListWidget*>();
    QVERIFY(pList && pList->isVisible());
    nMeasured = 0;
    QCOMPARE(CutTexts(pList, &nMeasured), QString());
    QCOMPARE(nMeasured, 1);
    Save(pList, QStringLiteral("drop-down-empty"));
    pList->hide();

    // The largest figures that a disk of our days can have.
    auto* pBottom = page.findChild<QLabel*>(QStringLiteral("bottomLab"));
    QVERIFY(pBottom);
    pBottom->setText(CSelFileWidget::tr("<span style=\"color:#ff7e17;\">%1GB</span> Available, "
                                        "<span style=\"color:#ff7e17;\">%2GB</span> Total")
                         .arg(QStringLiteral("16000.00"), QStringLiteral("22000.00")));
    QCOMPARE(CutTexts(&page), QString());
    Save(&page, QStringLiteral("selection"));
}

void tst_TranslationsFit::copyPage()
{
    CCopyFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.SlotGetCopyInfo(QStringLiteral("/Volumes/Macintosh HD/Users/anna/Pictures/IMG_0001.jpg"), 42);
    int nMeasured = 0;
    QCOMPARE(CutTexts(&page, &nMeasured), QString());
    QCOMPARE(nMeasured, 3);
    Save(&page, QStringLiteral("copy"));
    page.SlotCopyRemainTime(86399);
    QCOMPARE(CutTexts(&page), QString());
}

void tst_TranslationsFit::waitingDialog()
{
    for (const auto& place : PLACES) {
        if (place.pPlace != WAIT) {
            continue;
        }
        CSearchWaitView dialog(nullptr);
        dialog.SetText(Translated(place.pContext, place.pSource), QString());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        int nMeasured = 0;
        QCOMPARE(CutTexts(&dialog, &nMeasured), QString());
        QCOMPARE(nMeasured, 1);
        Save(&dialog, QStringLiteral("wait"));
    }
}

void tst_TranslationsFit::messageBoxes()
{
    int nBox = 0;
    for (const auto& place : PLACES) {
        if (place.pPlace != BOX) {
            continue;
        }
        // All four buttons: whatever a screen shows is among them. Each screen
        // brings texts of its own, so the widest of each button counts.
        KvMessageBox box(Translated(place.pContext, place.pSource),
                         Style_Yes | Style_No | Style_Ok | Style_Cancel, nullptr);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        int nMeasured = 0;
        QCOMPARE(CutTexts(&box, &nMeasured), QString());
        QCOMPARE(nMeasured, 5);
        Save(&box, QStringLiteral("box%1").arg(++nBox));
        for (const auto& button : PLACES) {
            if (button.pPlace == BUTTON) {
                box.SetBtnText(Style_Cancel, Translated(button.pContext, button.pSource));
                QCOMPARE(CutTexts(&box), QString());
            }
        }
    }
    QCOMPARE(nBox, 6);
}

void tst_TranslationsFit::everyLetterHasAFace()
{
    const QFontMetrics metrics(QFont(QStringLiteral("Avenir")));
    for (const STEntry& entry : CTranslations::Entries(CTranslations::SourcePath(m_strLanguage))) {
        for (const uint nLetter : entry.strTranslation.toUcs4()) {
            QVERIFY2(nLetter == '\n' || metrics.inFontUcs4(nLetter), qPrintable(entry.strTranslation));
        }
    }
}

void tst_TranslationsFit::lettersComeFromTheFaceMeant_data()
{
    QTest::addColumn<QString>("strLetters");
    QTest::addColumn<QString>("strFace");
    // The characters that the languages share, each in the form of the language in use.
    static const QMap<QString, QString> s_shared{
        {QStringLiteral("Chinese"), QStringLiteral("Noto Sans CJK SC")},
        {QStringLiteral("ChineseTW"), QStringLiteral("Noto Sans CJK TC")},
    };
    const QString strShared = s_shared.value(m_strLanguage, QStringLiteral("Noto Sans CJK JP"));
    const auto row = [](const char* pName, const char* pLetters, const QString& strFace) {
        QTest::newRow(pName) << QString::fromUtf8(pLetters) << strFace;
    };
    row("Latin", "Größe São où", QStringLiteral("Lato"));
    row("Cyrillic", "Привет", QStringLiteral("Lato"));
    row("Greek", "Ωμέγα", QStringLiteral("Lato"));
    row("shared characters", "骨直角今", strShared);
    row("Traditional Chinese", "磁碟拷貝", strShared);
    row("Simplified Chinese", "磁盘拷贝", strShared);
    row("Japanese", "コピー残り", strShared);
    row("Korean", "한국어", strShared);
}

void tst_TranslationsFit::lettersComeFromTheFaceMeant()
{
    QFETCH(QString, strLetters);
    QFETCH(QString, strFace);
    QFont font(QStringLiteral("Avenir"));
    font.setPixelSize(14);
    QTextLayout layout(strLetters, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    QVERIFY(!layout.glyphRuns().isEmpty());
    for (const QGlyphRun& run : layout.glyphRuns()) {
        QCOMPARE(run.rawFont().familyName().toLower(), strFace.toLower());
        QVERIFY2(!run.glyphIndexes().contains(0), "box character");
    }
}

void tst_TranslationsFit::measureFindsWhatIsCut()
{
    KvMessageBox box(QStringLiteral("word ").repeated(20), Style_Ok, nullptr);
    box.show();
    QCOMPARE(CutTexts(&box), QString());
    box.SetBtnText(Style_Ok, QStringLiteral("Wiederherstellen"));
    QCOMPARE(CutCount(&box), 1);

    KvMessageBox boxLong(QStringLiteral("word ").repeated(400), Style_Ok, nullptr);
    boxLong.show();
    QCOMPARE(CutCount(&boxLong), 1);
    KvMessageBox boxWide(QString(200, QLatin1Char('w')), Style_Ok, nullptr);
    boxWide.show();
    QCOMPARE(CutCount(&boxWide), 1);

    CSearchWaitView dialog(nullptr);
    dialog.SetText(QStringLiteral("word ").repeated(30), QString());
    dialog.show();
    QCOMPARE(CutCount(&dialog), 1);

    CSelFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QCOMPARE(CutCount(&page), 0);
    const auto label = [&page](const char* pName) { return page.findChild<QLabel*>(QLatin1String(pName)); };
    label("m_pUSBTitleLab")->setText(QString(80, QLatin1Char('x')));
    QCOMPARE(CutCount(&page), 1);
    label("m_pDstLab")->setText(QString(200, QLatin1Char('x')));
    QCOMPARE(CutCount(&page), 2);
    label("bottomLab")->setText(QStringLiteral("word ").repeated(40));
    QCOMPARE(CutCount(&page), 3);
    QFont font = label("m_pSrcLab")->font();
    font.setPixelSize(32);
    label("m_pSrcLab")->setFont(font);
    QCOMPARE(CutCount(&page), 4);
}

QTEST_MAIN(tst_TranslationsFit)
#include "tst_TranslationsFit.moc"
