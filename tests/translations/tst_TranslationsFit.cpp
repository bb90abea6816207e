#include "app/CFontFallback.h"
#include "app/CStartSplash.h"
#include "ask/CAskGround.h"
#include "ask/CAskPanel.h"
#include "ask/CAskProgram.h"
#include "ask/CAskRequest.h"
#include "ask/CMissingList.h"
#include "copy/CCopyReportText.h"
#include "copy/CCopyText.h"
#include "disk/CDestinationDiscovery.h"
#include "kit/CLinkButton.h"
#include "kit/KvMessageBox.h"
#include "pages/CCopyEndBox.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CElidedLabel.h"
#include "pages/CItemListDialog.h"
#include "pages/CNoticeLine.h"
#include "pages/CSearchWaitView.h"
#include "pages/CSelFileWidget.h"
#include "settings/PListSerializer.h"
#include "support/TestFiles.h"
#include "support/Widgets.h"
#include "translations/CTranslations.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QGlyphRun>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPushButton>
#include <QRawFont>
#include <QStyleOptionButton>
#include <QTextLayout>
#include <QToolTip>
#include <QTranslator>
#include <QtTest>

// What a page has of the main window, in pixels.
static const QSize PAGE_SIZE(1120, 649);

// What a tool tip may take of the narrowest window.
static const int TIP_WIDTH = 300;

// The border that a button with the keyboard's focus has on either side, in pixels.
static const int FOCUS_BORDERS = 4;

static const char BOX[] = "box"; ///< message of a message box
static const char BUTTON[] = "button"; ///< button of a message box or a page
static const char LABEL[] = "label"; ///< label of a page
static const char HINT[] = "hint"; ///< what the empty drop-down says
static const char WAIT[] = "wait"; ///< message of the waiting dialog
static const char SPLASH[] = "splash"; ///< what is shown before the window
static const char FOLDER[] = "folder"; ///< piece of a folder's name
static const char NOTICE[] = "notice"; ///< in the line of notices of the selection page
static const char SOURCES[] = "sources"; ///< alone in that line
static const char LINK[] = "link"; ///< link of that line
static const char CHOICE[] = "choice"; ///< the check box of the selection page, and notices about it
static const char DETAIL[] = "detail"; ///< below the message of a box
static const char SUMMARY[] = "summary"; ///< what has become of a copy: in a box and in the line of notices
static const char ROW[] = "row"; ///< in a row of the list of items, which is elided where it is too long
static const char REPORT[] = "report"; ///< in the report beside the copy
static const char REMOVED[] = "removed"; ///< below the message of a removal
static const char STATE[] = "state"; ///< in the line of the copy page that says how the copy goes
static const char ITEMS[] = "items"; ///< above or below the list of items
static const char ASK[] = "ask"; ///< on a panel that asks before or after the window
static const char TIP[] = "tip"; ///< in a tool tip
static const char SPOKEN[] = "spoken"; ///< what a screen reader says of a part without a text
static const char UNSEEN[] = "unseen"; ///< replaced before it is seen, or a name of a window

// Where each text is shown. A new text has to be given a place here, so that it is measured.
static const struct
{
    const char* pContext;
    const char* pSource;
    const char* pPlace;
} PLACES[] = {
    {"CAskAgainPanel", "Tarnwick stopped unexpectedly", ASK},
    {"CAskAgainPanel",
     "Files that were copied before are still on the disk. If a copy was running, start again and copy "
     "everything once more.",
     ASK},
    {"CAskAgainPanel", "Restart the computer", ASK},
    {"CAskAgainPanel", "Start again", ASK},
    {"CAskEndPanel", "A disk did not answer", ASK},
    {"CAskEndPanel", "You can unplug your disks now", ASK},
    {"CAskEndPanel",
     "Not everything may be on it yet. Wait while its light flashes, and check the copied files on another "
     "computer.",
     ASK},
    {"CAskEndPanel", "Tarnwick has ended, and nothing is written to a disk any more.", ASK},
    {"CAskEndPanel", "Leave the stick that you started from in its place until the screen goes dark.", ASK},
    {"CAskEndPanel", "Power off", ASK},
    {"CAskEndPanel", "Restart", ASK},
    {"CAskEndPanel", "The computer restarts by itself. Seconds left: %1", ASK},
    {"CAskMissingPanel", "Not everything can be shown", ASK},
    {"CAskMissingPanel", "Nothing can be copied from these disks or parts of disks:", ASK},
    {"CAskMissingPanel", "Locked with a password", ASK},
    {"CAskMissingPanel", "Cannot be read, perhaps damaged", ASK},
    {"CAskMissingPanel", "Does not answer", ASK},
    {"CAskMissingPanel", "One of several disks that belong together", ASK},
    {"CAskMissingPanel", "Needs more memory than this computer has", ASK},
    {"CAskMissingPanel", "Of a kind that Tarnwick cannot read", ASK},
    {"CAskMissingPanel",
     "Another computer or a specialist may still be able to read what cannot be read here. Do not format or "
     "repair it before.",
     ASK},
    {"CAskMissingPanel", "A disk that answers later appears by itself.", ASK},
    {"CAskMissingPanel", "To type a password, restart the computer and start Tarnwick again.", ASK},
    {"CAskMissingPanel", "Continue", ASK},
    {"CAskPasswordPanel", "Locked by Windows (BitLocker)", ASK},
    {"CAskPasswordPanel", "Locked by macOS (FileVault)", ASK},
    {"CAskPasswordPanel", "Locked by Linux (LUKS)", ASK},
    {"CAskPasswordPanel", "Type its password or its recovery key of 48 digits.", ASK},
    {"CAskPasswordPanel", "Type its password: mostly the one with which you log in to your Mac.", ASK},
    {"CAskPasswordPanel",
     "Type the password that your computer asks for when it starts, or when you plug this disk in.", ASK},
    {"CAskPasswordPanel", "Then files can be copied to the disk.", ASK},
    {"CAskPasswordPanel", "Nothing on the disk is changed.", ASK},
    {"CAskPasswordPanel", "This disk needs its password", ASK},
    {"CAskPasswordPanel", "That password did not open the disk. Try %1 of %2.", ASK},
    {"CAskPasswordPanel", "Password", SPOKEN},
    {"CAskPasswordPanel", "Show what I type", ASK},
    {"CAskPasswordPanel", "Caps Lock is on.", ASK},
    {"CAskPasswordPanel", "Keyboard:", ASK},
    {"CAskPasswordPanel", "Skip this disk", ASK},
    {"CAskPasswordPanel", "Unlock", ASK},
    {"CAskSourcePanel", "What is this USB disk for?", ASK},
    {"CAskSourcePanel", "Holds %1", ASK},
    {"CAskSourcePanel", "Rescue files from it", ASK},
    {"CAskSourcePanel", "Its files are listed to be copied. Nothing on it is changed.", ASK},
    {"CAskSourcePanel", "Copy files to it", ASK},
    {"CAskSourcePanel", "Files of other disks can be copied to it, beside what it holds.", ASK},
    {"CAskWaitPanel", "Looking for your disks…", ASK},
    {"CAskWaitPanel", "This can take a minute.", ASK},
    {"CCopyEndBox", "Show the list", LINK},
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
    {"CCopyReportText", "And %1 more, for which there was no room.", REPORT},
    {"CCopyReportText", "Begun: %1", REPORT},
    {"CCopyReportText", "Copy everything again, best onto another disk.", REPORT},
    {"CCopyReportText", "Ended: %1", REPORT},
    {"CCopyReportText", "Everything is whole. The items below are worth a note.", REPORT},
    {"CCopyReportText", "From: %1", REPORT},
    {"CCopyReportText",
     "If no copy is running any more, it broke off: the program was ended, the disk was removed or the power "
     "failed. Files are missing that are not named below. Copy everything again.",
     REPORT},
    {"CCopyReportText", "Items that are missing, not whole or worth a note:", REPORT},
    {"CCopyReportText", "Not copied whole so far:", REPORT},
    {"CCopyReportText", "Not whole: %1", REPORT},
    {"CCopyReportText", "Report on a copy of files", REPORT},
    {"CCopyReportText", "This copy has not come to its end.", REPORT},
    {"CCopyReportText", "To be copied: at most %1", REPORT},
    {"CCopyReportText", "To: %1", REPORT},
    {"CCopyReportText",
     "Try to copy the items below again. If the disk is full, or its file system takes no large files, use "
     "another disk. Keep this list with the copy until you have them all.",
     REPORT},
    {"CCopyReportText", "What had not been copied by then is missing and is not named below.", REPORT},
    {"CCopyReportText", "Whole: %1, %2", REPORT},
    {"CCopyText", "%1 %2", SUMMARY},
    {"CCopyText", "%1 GB", SUMMARY},
    {"CCopyText", "%1 KB", SUMMARY},
    {"CCopyText", "%1 MB", SUMMARY},
    {"CCopyText", "%1 TB", SUMMARY},
    {"CCopyText", "%1 bytes", SUMMARY},
    {"CCopyText", "%1 files", SUMMARY},
    {"CCopyText", "%1 of %2", ROW},
    {"CCopyText", "%1 of %2 items were not copied whole.", SUMMARY},
    {"CCopyText", "%1, %2 are on the disk. It can be unplugged now.", SUMMARY},
    {"CCopyText", "1 byte", SUMMARY},
    {"CCopyText", "1 file", SUMMARY},
    {"CCopyText", "1 of %1 items was not copied whole.", SUMMARY},
    {"CCopyText", "Access is not permitted.", ROW},
    {"CCopyText", "It became shorter while it was copied.", ROW},
    {"CCopyText", "It cannot be created on the disk.", ROW},
    {"CCopyText", "It cannot be opened.", ROW},
    {"CCopyText", "It cannot be read.", ROW},
    {"CCopyText", "It cannot be written to the disk.", ROW},
    {"CCopyText", "It changed while it was copied.", ROW},
    {"CCopyText", "It is a link to a folder that it lies in.", ROW},
    {"CCopyText", "It is a link to another disk. What it leads to was copied.", ROW},
    {"CCopyText", "It is not a file, but a pipe, a socket or a device.", ROW},
    {"CCopyText", "It is not there any more.", ROW},
    {"CCopyText", "It was copied whole, but its date could not be kept.", ROW},
    {"CCopyText", "It was not in the list, so it was not copied.", ROW},
    {"CCopyText", "It was removed while it was copied.", ROW},
    {"CCopyText", "Its folder cannot be created.", ROW},
    {"CCopyText", "Its name or path is too long.", ROW},
    {"CCopyText", "Nothing was copied.", SUMMARY},
    {"CCopyText", "Something else has taken its place.", ROW},
    {"CCopyText", "Something else of that name is in its place.", ROW},
    {"CCopyText", "The copy was stopped.", ROW},
    {"CCopyText", "The copy was stopped. %1, %2 are on the disk.", SUMMARY},
    {"CCopyText", "The disk did not confirm that everything is on it.", ROW},
    {"CCopyText", "The disk did not confirm that everything is on it. Do not rely on this copy.", SUMMARY},
    {"CCopyText", "The disk did not take all of it.", ROW},
    {"CCopyText", "The disk does not answer.", ROW},
    {"CCopyText", "The disk is full.", ROW},
    {"CCopyText", "The disk is not connected any more.", ROW},
    {"CCopyText", "The disk is write-protected.", ROW},
    {"CCopyText", "The disk reports an error.", ROW},
    {"CCopyText", "The disk was removed.", ROW},
    {"CCopyText", "The file system of this disk does not allow its name.", ROW},
    {"CCopyText", "The folder cannot be read.", ROW},
    {"CCopyText", "The folder was not opened, so its contents were not copied.", ROW},
    {"CCopyText", "The list could not be saved on the disk.", SUMMARY},
    {"CCopyText", "There was not enough memory.", ROW},
    {"CCopyText", "Too large for the file system of this disk.", ROW},
    {"CCopyText", "Parts of it cannot be read; zeros stand for the bytes %1.", ROW},
    {"CCopyText", "Another disk is mounted here. What is on it was not copied.", ROW},
    {"CCopyText", "It is the same folder as another one in this copy, or the copy itself.", ROW},
    {"CCopyText", "It is a link to %1, and this disk cannot hold links.", ROW},
    {"CCopyText", "The disk does not take its name. There it is called %1.", ROW},
    {"CCopyText", "Items whose permissions this disk cannot hold: %1", ROW},
    {"CCopyText", "Items whose extended attributes this disk cannot hold: %1", ROW},
    {"CCopyText", "Folders whose dates this disk cannot hold: %1", ROW},
    {"CCopyText", "Its resource fork, a part of it, cannot be read.", ROW},
    {"CCopyText", "Its contents are in its resource fork, and this disk cannot hold that.", ROW},
    {"CCopyText", "Items whose resource forks this disk cannot hold: %1", ROW},
    {"CCopyText", "Items whose Finder tags and icons this disk cannot hold: %1", ROW},
    {"CCopyText", "Items whose access lists this disk cannot hold: %1", ROW},
    {"CCopyText", "Items whose creation dates this disk cannot hold: %1", ROW},
    {"CCopyText", "Locked items whose copies are not locked: %1", ROW},
    {"CCopyText", "Its contents are only in iCloud, not on this Mac.", ROW},
    {"CCopyFileWidget", "Everything was on the disk before it was removed.", REMOVED},
    {"CCopyStateLine", "%1 so far", STATE},
    {"CCopyStateLine", "%1, %2", STATE},
    {"CCopyStateLine", "%1 MB/s", STATE},
    {"CCopyStateLine", "The copy is being stopped…", STATE},
    {"CCopyStateLine", "The last bytes are being written to the disk…", STATE},
    {"CCopyStateLine", "The disk has not answered for %1 seconds: %2", STATE},
    {"CDestinationPanel", "The destination is now %1", NOTICE},
    {"CDestinationPanel", "%1 cannot hold a file of %2 or more.", CHOICE},
    {"CItemListDialog", "Close", BUTTON},
    {"CItemListDialog", "Minimize", SPOKEN},
    {"CItemListDialog", "Zoom", SPOKEN},
    {"CItemListDialog", "Items of this copy that need your attention", ITEMS},
    {"CItemListDialog", "and %1 more, see %2", ITEMS},
    {"CItemListDialog", "and %1 more", ITEMS},
    {"CItemListDialog", "This list is also in %1", ITEMS},
    {"CFolderTrouble", "This folder may not be read, nothing of it is copied.", TIP},
    {"CFolderTrouble", "This folder cannot be read: %1", TIP},
    {"CFolderTrouble", "Only a part of this folder can be read: %1", TIP},
    {"CFolderTrouble", "This link leads back to a folder that it lies in.", TIP},
    {"CFolderTrouble", "The disk does not answer. What is in this folder appears as soon as it does.", TIP},
    {"CFolderTrouble", "The disk reports an error.", TIP},
    {"CFolderTrouble", "It is not there any more.", TIP},
    {"CFolderTrouble", "Its contents are only in iCloud, not on this Mac.", TIP},
    {"CLastCopyNotice", "Show the list", LINK},
    {"CNoticeLine", "%1 does not answer.", NOTICE},
    {"CNoticeLine", "%1: %2", NOTICE},
    {"CSearchWaitView", "NotFoundOrNoItemView", UNSEEN},
    {"CSearchWaitView", "Searching", UNSEEN},
    {"CSearchWaitView", "image", UNSEEN},
    {"CSearchWaitView", "Searching, please wait...", WAIT},
    {"CSelFileWidget", "Source", LABEL},
    {"CSelFileWidget", "Select File to Copy:", LABEL},
    {"CSelFileWidget", "Destination", LABEL},
    {"CSelFileWidget", "Select Destination Disk:", LABEL},
    {"CSelFileWidget", "Copy", BUTTON},
    {"CSelFileWidget", "Complete rescue", CHOICE},
    {"CSelFileWidget", "Copies everything in what is ticked, whether the list shows it or not.", TIP},
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
    {"CStartSplash", "Searching for disks…", SPLASH},
    {"CStartSplash", "Waiting for %1…", SPLASH},
    {"CSelFileWidget", "%1 are needed, %2 are free.", DETAIL},
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
    {"CLogNotice", "The log is kept in %1", SOURCES},
    {"CLogNotice", "The log cannot be written.", SOURCES},
    {"CSourceNotice", "%1 is there now: press the round arrow to list it.", SOURCES},
    {"CSourceNotice", "The users' files are on %1, not on %2.", SOURCES},
    {"CSourceNotice",
     "The users' files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.",
     SOURCES},
    {"CSourceNotice",
     "The users' files of %1 may be locked: unlock them with their password, then start Tarnwick again.",
     SOURCES},
    {"CTreeNotices", "Only opened folders of a fully ticked volume are copied.", NOTICE},
    {"CTreeNotices", "Entries that are not in the list are not copied.", CHOICE},
    {"CTreeNotices", "Entries left out of %1 because of their names: %2", NOTICE},
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
    // A link has the border of the focus at all times.
    const int nBorders = qobject_cast<const CLinkButton*>(pButton) ? 0 : FOCUS_BORDERS;
    return metrics.horizontalAdvance(pButton->text()) <= rect.width() - nBorders
        && metrics.height() <= rect.height() - nBorders;
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

/** How many texts are seen below a widget, and each that is cut with the size that it has. */
static QString Measured(const QWidget* pWidget)
{
    int nTexts = 0;
    QString strCut;
    const auto fnMeasure = [&](const auto* pPart) {
        if (!pPart->isVisible() || pPart->text().isEmpty()) {
            return;
        }
        ++nTexts;
        if (!Fits(pPart)) {
            strCut += QString(", cut: %1 (%2x%3) %4")
                          .arg(pPart->objectName(), QString::number(pPart->width()),
                               QString::number(pPart->height()), pPart->text());
        }
    };
    for (const QLabel* pLabel : pWidget->findChildren<QLabel*>()) {
        fnMeasure(pLabel);
    }
    for (const QPushButton* pButton : pWidget->findChildren<QPushButton*>()) {
        fnMeasure(pButton);
    }
    return QString::number(nTexts) + " texts" + strCut;
}

static int CutCount(const QWidget* pWidget) { return Measured(pWidget).count(", cut: "); }

/** Whether icon, message, detail, link and button of a box stand below each other. */
static bool StandApart(const QWidget* pBox)
{
    int nBottom = 0;
    bool bApart = true;
    for (const char* pName : {"label_icon", "label_text", "label_detail", "m_pDetailLink", "toolBtn"}) {
        for (const QWidget* pPart : pBox->findChildren<QWidget*>(pName)) {
            if (pPart->isVisible()) {
                const QRect place = PlaceIn(pBox, pPart);
                bApart = bApart && place.top() > nBottom;
                nBottom = place.bottom();
            }
        }
    }
    return bApart;
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
    void copyState();
    void endBox();
    void removalOfAWholeCopy();
    void itemList();
    void waitingDialog();
    void noticeLine();
    void noticesOfSources();
    void completeRescue();
    void startSplash();
    void questions_data();
    void questions();
    void copySummaries();
    void headsOfTheReport();
    void toolTips();
    void messageBoxes();
    void boxDetails();
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
        QVariantMap{{"AppleLanguages", QVariantList{CTranslations::Code(m_strLanguage)}}},
        "/Library/Preferences/.GlobalPreferences.plist");
    CFontFallback::Install();
    QVERIFY(m_translator.load(CTranslations::BuiltPath(m_strLanguage)));
    QVERIFY(QCoreApplication::installTranslator(&m_translator));

    qApp->setStyleSheet(ProgramSheet());
}

void tst_TranslationsFit::Save(QWidget* pWidget, const QString& strName)
{
    const QString strFolder = BuildPath("pictures/languages/");
    QDir().mkpath(strFolder);
    pWidget->grab().save(QString("%1%2-%3.png").arg(strFolder, m_strLanguage, strName));
}

void tst_TranslationsFit::everyTextHasAPlace()
{
    QStringList listPlaced;
    for (const auto& place : PLACES) {
        listPlaced.append(QString(place.pContext) + ": " + place.pSource);
    }
    QStringList listText;
    for (const STEntry& entry : CTranslations::Entries(CTranslations::SourcePath("English"))) {
        listText.append(entry.strContext + ": " + entry.strSource);
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
    QCOMPARE(Measured(&page), QString("7 texts"));
    Save(&page, "selection-empty");

    page.SlotShowListWidget();
    auto* pList = page.findChild<QListWidget*>();
    QVERIFY(pList && pList->isVisible());
    QCOMPARE(Measured(pList), QString("1 texts"));
    Save(pList, "drop-down-empty");
    pList->hide();

    // The largest figures that a disk of our days can have.
    auto* pBottom = page.findChild<QLabel*>("bottomLab");
    QVERIFY(pBottom);
    pBottom->setText(CSelFileWidget::tr("<span style=\"color:#ff7e17;\">%1GB</span> Available, "
                                        "<span style=\"color:#ff7e17;\">%2GB</span> Total")
                         .arg("16000.00", "22000.00"));
    QCOMPARE(Measured(&page), QString("7 texts"));
    Save(&page, "selection");
}

void tst_TranslationsFit::copyPage()
{
    CCopyFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.SlotGetCopyInfo("/Volumes/Macintosh HD/Users/anna/Pictures/IMG_0001.jpg", 42);
    QCOMPARE(Measured(&page), QString("3 texts"));
    Save(&page, "copy");
    page.SlotCopyRemainTime(86399);
    QCOMPARE(Measured(&page), QString("3 texts"));
}

void tst_TranslationsFit::copyState()
{
    CCopyFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.SlotGetCopyInfo("a", 42);
    auto* pState = page.findChild<CElidedLabel*>("m_pStateLab");
    int nStates = 0;
    for (const auto& place : PLACES) {
        if (place.pPlace != STATE) {
            continue;
        }
        QString strText = Translated(place.pContext, place.pSource);
        const QString strFirst = strText.contains("%2") ? "9999" : CCopyText::Files(9999999);
        strText.replace("%1", strFirst).replace("%2", "/Volumes/Macintosh HD/Users/anna/IMG_0001.jpg");
        pState->setText(strText);
        pState->show();
        QCOMPARE(Measured(&page), QString("4 texts"));
        Save(&page, QString("state%1").arg(++nStates));
    }
    QCOMPARE(nStates, 6);
}

// The longest of all: it has a list, too, that could not be saved.
void tst_TranslationsFit::endBox()
{
    STCopyAccount stAccount;
    stAccount.nFiles = 9999999;
    stAccount.nBytes = 999990000000;
    stAccount.nProblems = 999999;
    stAccount.bReportMissing = true;
    stAccount.listItem.resize(1);
    stAccount.listItem[0].enProblem = ENCopyProblem::SOURCE_READ;
    for (const bool bStopped : {false, true}) {
        for (const ENCopyFlush enFlush : {ENCopyFlush::DONE, ENCopyFlush::FAILED}) {
            stAccount.bStopped = bStopped;
            stAccount.enFlush = enFlush;
            CCopyEndBox box(nullptr);
            box.SetAccount(stAccount);
            box.show();
            QVERIFY(QTest::qWaitForWindowExposed(&box));
            QCOMPARE(Measured(&box), QString("4 texts"));
            QVERIFY2(StandApart(&box), qPrintable(CCopyText::Summary(stAccount)));
            Save(&box, QString("end%1%2").arg(bStopped).arg(int(enFlush)));
        }
    }
}

void tst_TranslationsFit::removalOfAWholeCopy()
{
    KvMessageBox box(Translated("CCopyFileWidget",
                                "The destination storage device has been removed! Please check and connect "
                                "the storage device then try again."),
                     Style_Ok, nullptr);
    box.SetDetail(Translated("CCopyFileWidget", "Everything was on the disk before it was removed."),
                  ENDetail::GOOD);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QCOMPARE(Measured(&box), QString("3 texts"));
    Save(&box, "removed-whole");
}

void tst_TranslationsFit::itemList()
{
    STCopyAccount stAccount;
    stAccount.listItem.resize(1);
    for (const char* pReport : {"/Volumes/STICK/Tarnwick 2026-09-30 at 23.59.59.txt", ""}) {
        stAccount.strReport = pReport;
        for (const qint64 nProblems : {1, 9999999}) {
            stAccount.nProblems = nProblems;
            CItemListDialog dialog(stAccount);
            dialog.show();
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            const bool bFooter = nProblems > 1 || !stAccount.strReport.isEmpty();
            QCOMPARE(Measured(&dialog), QString(bFooter ? "3 texts" : "2 texts"));
            Save(&dialog, "items");
        }
    }
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
        QCOMPARE(Measured(&dialog), QString("1 texts"));
        Save(&dialog, "wait");
    }
}

void tst_TranslationsFit::toolTips()
{
    int nTips = 0;
    for (const auto& place : PLACES) {
        if (place.pPlace != TIP) {
            continue;
        }
        // A tip breaks its lines. It lies below the pointer, and what is on the screen ends at its edge.
        QLabel label(QString("<p>%1</p>").arg(Translated(place.pContext, place.pSource)));
        label.setWordWrap(true);
        label.setFont(QToolTip::font());
        label.setFixedWidth(TIP_WIDTH);
        label.setFixedHeight(label.heightForWidth(TIP_WIDTH));
        QVERIFY2(Fits(&label), qPrintable(label.text()));
        Save(&label, QString("tip-%1").arg(++nTips));
    }
    QVERIFY(nTips > 0);
}

void tst_TranslationsFit::startSplash()
{
    for (const qint64 nMs : {qint64(0), qint64(CStartSplash::NAME_AFTER_MS)}) {
        CStartSplash splash;
        QVERIFY(QTest::qWaitFor([&] {
            splash.Wait({"Macintosh HD", nMs});
            return splash.isVisible();
        }));
        QCOMPARE(Measured(&splash), QString("2 texts"));
        Save(&splash, nMs == 0 ? "splash-searching" : "splash-waiting");
    }
}

void tst_TranslationsFit::questions_data()
{
    QTest::addColumn<QString>("strArguments");
    QTest::addColumn<int>("nTexts");
    const auto row = [](const char* pName, const char* pArguments, int nTexts) {
        QTest::newRow(pName) << QString(pArguments) << nTexts;
    };
    row("wait", "wait", 3);
    row("LUKS", "password --name Daten --kind LUKS --size 999990000000 --disk Samsung --try 3 --layout de",
        10);
    row("BitLocker", "password --name Daten --kind BitLocker --size 999990000000 --disk Samsung --try 3", 10);
    row("FileVault", "password --name Daten --kind FileVault --size 999990000000 --disk Samsung --try 3", 10);
    row("to copy to",
        "password --name Daten --kind LUKS --size 999990000000 --disk Samsung --try 3 --writable", 10);
    row("source", "source --name Daten --size 999990000000 --disk Samsung --systems Windows,Linux", 8);
    row("end", "end --reads-medium", 7);
    row("end, unsaved", "end --reads-medium --unsaved", 6);
    row("again", "again", 5);
    row("missing", "missing", 23);
}

// One of each.
static const char MISSING[] = "damaged\tDaten\t999990000000\tSamsung\nsilent\tDaten\t999990000000\tSamsung\n"
                              "locked\tDaten\t999990000000\tSamsung\nunknown\tDaten\t999990000000\tSamsung\n"
                              "apart\tDaten\t999990000000\tSamsung\nlost\tDaten\t999990000000\tSamsung\n";

// On the smallest screen that there is.
void tst_TranslationsFit::questions()
{
    QFETCH(QString, strArguments);
    QFETCH(int, nTexts);
    auto stRequest = CAskRequest::Parse(strArguments.split(' ')).stRequest;
    QVERIFY(stRequest);
    stRequest->listMissing = CMissingList::Parse(MISSING);
    CAskGround ground(CAskProgram::MakePanel(*stRequest).release());
    ground.resize(800, 600);
    ground.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ground));
    if (auto* pCaps = ground.findChild<QLabel*>("m_pCapsLab")) {
        pCaps->show();
        ground.Panel()->layout()->activate();
    }
    QCOMPARE(Measured(&ground), QString("%1 texts").arg(nTexts));
    for (const auto* pBox : ground.findChildren<QCheckBox*>()) {
        QVERIFY(pBox->sizeHint().width() <= pBox->width() && pBox->sizeHint().height() <= pBox->height());
    }
    QVERIFY(ground.Panel()->heightForWidth(ground.Panel()->width()) <= ground.Panel()->height());
    QVERIFY(ground.Panel()->height() < ground.height());
    Save(&ground, QString("ask-%1").arg(QTest::currentDataTag()));
}

void tst_TranslationsFit::noticeLine()
{
    CSelFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    auto* pLine = page.findChild<CNoticeLine*>();
    QVERIFY(pLine);
    const QString strLink = Translated("CLastCopyNotice", "Show the list");
    const QString strName = pLine->Shortened(QString(40, 'W'));
    STCopyAccount stAccount;
    stAccount.nProblems = 999999;
    stAccount.nFiles = 9999999;
    int nNotices = 0;
    for (const auto& place : PLACES) {
        if (place.pPlace != NOTICE) {
            continue;
        }
        QString strText = Translated(place.pContext, place.pSource);
        if (strText.contains("%2")) {
            const bool bNumber = qstrcmp(place.pContext, "CTreeNotices") == 0;
            strText = strText.arg(strName, bNumber ? QString("65,535") : CCopyText::Summary(stAccount));
        } else if (strText.contains("%1")) {
            strText = strText.arg(strName);
        }
        pLine->Set(ENNotice::LAST_COPY, strText, strLink);
        QCOMPARE(Measured(pLine), QString("2 texts"));
        Save(&page, QString("notice%1").arg(++nNotices));
    }
    QCOMPARE(nNotices, 5);
}

void tst_TranslationsFit::noticesOfSources()
{
    CSelFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    auto* pLine = page.findChild<CNoticeLine*>();
    int nNotices = 0;
    for (const auto& place : PLACES) {
        if (place.pPlace != SOURCES) {
            continue;
        }
        QString strText = Translated(place.pContext, place.pSource);
        const QString strName = pLine->Shortened("Macintosh HD - Data");
        if (strText.contains("%1")) {
            strText
                = strText.contains("%2") ? strText.arg(strName, "Macintosh HD") : strText.arg("Macintosh HD");
        }
        pLine->Set(ENNotice::SOURCES, strText);
        QCOMPARE(Measured(pLine), QString("1 texts"));
        Save(&page, QString("sources%1").arg(++nNotices));
    }
    QCOMPARE(nNotices, 6);
}

void tst_TranslationsFit::completeRescue()
{
    CSelFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    const auto* pBox = page.findChild<QCheckBox*>("m_pCompleteBox");
    QCOMPARE(pBox->text(), Translated("CSelFileWidget", "Complete rescue"));
    QVERIFY(pBox->sizeHint().width() <= pBox->width() && pBox->sizeHint().height() <= pBox->height());
    auto* pLine = page.findChild<CNoticeLine*>();
    const QString strName = pLine->Shortened(QString(40, 'W'));
    for (const char* pNotice : {"Only opened folders of a fully ticked volume are copied.",
                                "Entries that are not in the list are not copied."}) {
        pLine->Set(ENNotice::UNLISTED, Translated("CTreeNotices", pNotice), pBox->text());
        QCOMPARE(Measured(pLine), QString("2 texts"));
        Save(&page, QString("complete%1").arg(strlen(pNotice)));
    }
    pLine->Clear(ENNotice::UNLISTED);
    pLine->Set(ENNotice::LARGE_FILES,
               Translated("CDestinationPanel", "%1 cannot hold a file of %2 or more.")
                   .arg(strName, CCopyText::Bytes(999990000000)));
    QCOMPARE(Measured(pLine), QString("1 texts"));
    Save(&page, "complete-large");
}

void tst_TranslationsFit::boxDetails()
{
    for (const auto& place : PLACES) {
        if (place.pPlace != DETAIL) {
            continue;
        }
        KvMessageBox box(Translated("CSelFileWidget",
                                    "No enough space, please select other Hard Disk or USB flash drive."),
                         Style_Cancel, nullptr);
        box.SetDetail(Translated(place.pContext, place.pSource).arg("999.99 GB", "888.88 GB"),
                      ENDetail::PLAIN);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        QCOMPARE(Measured(&box), QString("3 texts"));
        Save(&box, "detail");
    }
}

void tst_TranslationsFit::copySummaries()
{
    STCopyItem stItem;
    stItem.enProblem = ENCopyProblem::SOURCE_READ;
    STCopyAccount stWhole;
    stWhole.nFiles = 9999999;
    stWhole.nBytes = 999990000000;
    STCopyAccount stNotWhole = stWhole;
    stNotWhole.nProblems = 999999;
    stNotWhole.listItem = {stItem};
    STCopyAccount stStopped = stNotWhole;
    stStopped.bStopped = true;
    STCopyAccount stNotConfirmed = stStopped;
    stNotConfirmed.enFlush = ENCopyFlush::FAILED;
    const QString strBox = Translated("CCopyFileWidget", "Copy file completed!");
    for (const STCopyAccount& stAccount : {STCopyAccount(), stWhole, stNotWhole, stStopped, stNotConfirmed}) {
        KvMessageBox box(strBox, Style_Ok, nullptr);
        box.SetDetail(CCopyText::Summary(stAccount) + '\n' + CCopyText::ReportMissing(), ENDetail::WARNING);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        QCOMPARE(Measured(&box), QString("3 texts"));
        Save(&box, "summary");
    }
}

void tst_TranslationsFit::headsOfTheReport()
{
    // Whatever the names and the state, the head is written over in place.
    STCopyBeginning stBeginning{QDateTime(QDate(2026, 9, 30), QTime(23, 59)), {}, {}, 22000000000000};
    stBeginning.strDest = '/' + QString(4000, QChar(0x3042));
    stBeginning.listSource = QStringList{stBeginning.strDest, stBeginning.strDest, stBeginning.strDest, "/"};
    STCopyAccount stAccount;
    QCOMPARE(CCopyReportText::HeadAtBegin(stBeginning).size(), CCopyReportText::HEAD_SIZE);
    stAccount.nFiles = stAccount.nProblems = 999999999;
    stAccount.nBytes = 22000000000000;
    QCOMPARE(CCopyReportText::HeadAtEnd(stBeginning, stAccount).size(), CCopyReportText::HEAD_SIZE);
    stAccount.bStopped = true;
    QCOMPARE(CCopyReportText::HeadAtEnd(stBeginning, stAccount).size(), CCopyReportText::HEAD_SIZE);
    stAccount.enFlush = ENCopyFlush::FAILED;
    QCOMPARE(CCopyReportText::HeadAtEnd(stBeginning, stAccount).size(), CCopyReportText::HEAD_SIZE);
    QVERIFY(CCopyReportText::HeadAtEnd(stBeginning, STCopyAccount()).endsWith('\n'));
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
        QCOMPARE(Measured(&box), QString("5 texts"));
        Save(&box, QString("box%1").arg(++nBox));
        for (const auto& button : PLACES) {
            if (button.pPlace == BUTTON) {
                box.SetBtnText(Style_Cancel, Translated(button.pContext, button.pSource));
                QCOMPARE(Measured(&box), QString("5 texts"));
            }
        }
    }
    QCOMPARE(nBox, 6);
}

void tst_TranslationsFit::everyLetterHasAFace()
{
    const QFontMetrics metrics(QFont("Avenir"));
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
    const QString strShared = m_strLanguage == "Chinese" ? "Noto Sans CJK SC"
        : m_strLanguage == "ChineseTW"                   ? "Noto Sans CJK TC"
                                                         : "Noto Sans CJK JP";
    QTest::newRow("Latin") << QString("Größe São où") << QString("Lato");
    QTest::newRow("Cyrillic") << QString("Привет") << QString("Lato");
    QTest::newRow("Greek") << QString("Ωμέγα") << QString("Lato");
    QTest::newRow("shared characters") << QString("骨直角今") << strShared;
    QTest::newRow("Traditional Chinese") << QString("磁碟拷貝") << strShared;
    QTest::newRow("Simplified Chinese") << QString("磁盘拷贝") << strShared;
    QTest::newRow("Japanese") << QString("コピー残り") << strShared;
    QTest::newRow("Korean") << QString("한국어") << strShared;
}

void tst_TranslationsFit::lettersComeFromTheFaceMeant()
{
    QFETCH(QString, strLetters);
    QFETCH(QString, strFace);
    QFont font("Avenir");
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
    KvMessageBox box(QString("word ").repeated(20), Style_Ok, nullptr);
    box.show();
    QCOMPARE(CutCount(&box), 0);
    box.SetBtnText(Style_Ok, "Wiederherstellen");
    QCOMPARE(CutCount(&box), 1);
    for (const QString& strText : {QString("word ").repeated(400), QString(200, 'w')}) {
        KvMessageBox boxLong(strText, Style_Ok, nullptr);
        boxLong.show();
        QCOMPARE(CutCount(&boxLong), 1);
    }

    CSearchWaitView dialog(nullptr);
    dialog.SetText(QString("word ").repeated(30), QString());
    dialog.show();
    QCOMPARE(CutCount(&dialog), 1);

    CSelFileWidget page(nullptr);
    page.resize(PAGE_SIZE);
    page.show();
    QCOMPARE(CutCount(&page), 0);
    page.findChild<QLabel*>("m_pUSBTitleLab")->setText(QString(80, 'x'));
    QCOMPARE(CutCount(&page), 1);
    page.findChild<QLabel*>("m_pDstLab")->setText(QString(200, 'x'));
    QCOMPARE(CutCount(&page), 2);
    page.findChild<QLabel*>("bottomLab")->setText(QString("word ").repeated(40));
    QCOMPARE(CutCount(&page), 3);
    auto* pSource = page.findChild<QLabel*>("m_pSrcLab");
    QFont font = pSource->font();
    font.setPixelSize(32);
    pSource->setFont(font);
    QCOMPARE(CutCount(&page), 4);
}

QTEST_MAIN(tst_TranslationsFit)
#include "tst_TranslationsFit.moc"
