#include "visual/Looks.h"

#include "app/CStartSplash.h"
#include "app/CTarnwickMacPE.h"
#include "disk/CDestinationDiscovery.h"
#include "kit/KvMessageBox.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CCopyWatch.h"
#include "pages/CElidedLabel.h"
#include "pages/CItemListDialog.h"
#include "pages/CNoticeLine.h"
#include "pages/CPageTree.h"
#include "pages/CSearchWaitView.h"
#include "pages/CSelFileWidget.h"
#include "translations/CTranslations.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CFileTreeView.h"
#include "visual/CLookStage.h"

#include <QCheckBox>
#include <QListWidget>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <cerrno>

static const QString LONG_NAME = "A stick with a very long name, longer than its place in the window";
static const QString LONG_FILE
    = "Minutes of the meeting of the tenants of the house at the river, with all its annexes "
      "and the letters to the administration, third version.pdf";
static const int ALL_BUTTONS = Style_Yes | Style_No | Style_Ok | Style_Cancel;

using Scene = std::function<void(CLookStage&)>;

// ---------------------------------------------------------------- selection page

static void PlugIn(CLookStage& stage) { stage.AddStick("RESCUE", 61035); }

static void PlugInThree(CLookStage& stage)
{
    PlugIn(stage);
    stage.AddStick("Backup 2026", 488281);
    stage.AddStick(LONG_NAME, 1907348);
}

/** Rows of all three states. */
static void TickSome(CLookStage& stage)
{
    PlugIn(stage);
    stage.Expand("Users/anna/Pictures");
    stage.Tick("Users/anna/Documents");
    stage.Tick("Users/anna/Pictures/IMG_0002.jpg");
}

/** Folders that cannot be listed, beside one that can. */
static void ShowTroubles(CLookStage& stage)
{
    TickSome(stage);
    CDirModel* pModel = CDirModel::GetInstence();
    const auto fnEmpty = [&stage, pModel](const char* pszPath) {
        pModel->RemoveAllChild(stage.Row(pszPath));
        return pModel->nodeFromIndex(stage.Row(pszPath));
    };
    fnEmpty("Users/anna/Desktop")->m_nListError = EACCES;
    fnEmpty("Users/anna/Music")->SetListed(ENListed::OVERDUE);
    fnEmpty("Applications")->m_nListError = ENOENT;
    fnEmpty("Library")->m_nListError = ELOOP;
    // The one that was read in part can be opened.
    pModel->nodeFromIndex(stage.Row("Users/anna/Documents"))->m_nListError = EIO;
}

static void ShowLongNames(CLookStage& stage)
{
    stage.AddStick(LONG_NAME, 1907348);
    stage.Expand("Names/of a folder whose name is nearly as long as the names that are in it");
}

static void ShowDeepFolder(CLookStage& stage)
{
    PlugIn(stage);
    QString strPath = "Deep";
    for (int n = 1; n <= 24; ++n) {
        strPath += QString("/level %1").arg(n);
        stage.Expand(strPath);
    }
    stage.Tree()->scrollTo(stage.Row(strPath), QAbstractItemView::PositionAtCenter);
    stage.Tree()->horizontalScrollBar()->setValue(stage.Tree()->horizontalScrollBar()->maximum() / 2);
}

static QListWidget* OpenList(CLookStage& stage)
{
    PlugInThree(stage);
    auto* pList = stage.SelectPage()->findChild<QListWidget*>();
    stage.SelectPage()->SlotListWidgetItemClick(pList->item(1));
    QTest::mouseClick(stage.Button("m_pDropBtn"), Qt::LeftButton);
    return pList;
}

/** No volume to copy from, as when only sticks are plugged in. */
static void TakeVolumesAway(CLookStage& stage)
{
    PlugIn(stage);
    stage.Tree()->selectionModel()->reset();
    CPageTree::Clear();
    stage.Tree()->reset();
    // What tells the hint to look again.
    QResizeEvent event(stage.Tree()->viewport()->size(), QSize());
    QCoreApplication::sendEvent(stage.Tree()->viewport(), &event);
}

static void HoverOtherDisk(CLookStage& stage)
{
    QListWidget* pList = OpenList(stage);
    CLookStage::Hover(pList->viewport(), pList->visualItemRect(pList->item(2)).center());
}

static void HoverRow(CLookStage& stage)
{
    TickSome(stage);
    const QRect rect = stage.Tree()->visualRect(stage.Row("Users/anna/Music"));
    CLookStage::Hover(stage.Tree()->viewport(), rect.center());
}

/** A row that was clicked on its name. */
static void ChooseRow(CLookStage& stage)
{
    TickSome(stage);
    const QRect rect = stage.Tree()->visualRect(stage.Row("Users/anna/Music"));
    QTest::mouseClick(stage.Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

static void LeaveChosenRow(CLookStage& stage)
{
    ChooseRow(stage);
    stage.Button("toolBtn")->setFocus(Qt::TabFocusReason);
}

static QCheckBox* CompleteBox(CLookStage& stage)
{
    return qobject_cast<QCheckBox*>(stage.Part("m_pCompleteBox"));
}

/** Some is ticked, and everything in it is meant. */
static void ChooseComplete(CLookStage& stage)
{
    TickSome(stage);
    CompleteBox(stage)->setChecked(true);
}

// ---------------------------------------------------------------- copy page

static void ShowNewCopy(CLookStage& stage)
{
    PlugIn(stage);
    stage.BeginCopy();
}

static void ShowHalfCopied(CLookStage& stage)
{
    ShowNewCopy(stage);
    stage.CopyPage()->SlotGetCopyInfo("/Volumes/Macintosh HD/Users/anna/" + LONG_FILE, 42);
    stage.CopyPage()->SlotCopyRemainTime(5025);
}

static void ShowWholeCopied(CLookStage& stage)
{
    ShowNewCopy(stage);
    stage.CopyPage()->SlotGetCopyInfo("/Volumes/Macintosh HD/Users/anna/IMG_0002.jpg", 100);
    stage.CopyPage()->SlotCopyRemainTime(1);
}

/** What Tab reaches in a window, in its order. */
static QList<QWidget*> TabStops(QWidget* pWindow)
{
    QList<QWidget*> listStop;
    for (QWidget* pWidget = pWindow->nextInFocusChain(); pWidget != pWindow;
         pWidget = pWidget->nextInFocusChain()) {
        const bool bTaken = pWidget->isVisible() && pWidget->isEnabled() && pWidget->window() == pWindow
            && !pWidget->focusProxy();
        if (bTaken && (pWidget->focusPolicy() & Qt::TabFocus)) {
            listStop.append(pWidget);
        }
    }
    return listStop;
}

static void GiveFocus(QWidget* pWindow, int nStop)
{
    QWidget* pStop = TabStops(pWindow).at(nStop);
    // As after a key of the user: some styles draw more then.
    pWindow->setAttribute(Qt::WA_KeyboardFocusChange);
    // The one that has it already is to get it by Tab all the same.
    pStop->clearFocus();
    pStop->setFocus(Qt::TabFocusReason);
}

/** The line that says how the copy goes, after looks at the worker that lie ten seconds apart. */
static Scene ShowState(bool bStop, const STCopySample& stLast)
{
    return [bStop, stLast](CLookStage& stage) {
        ShowHalfCopied(stage);
        CCopyStateLine line;
        line.Begin();
        line.Look({}, 0);
        if (bStop) {
            line.Stop();
        }
        line.Look(stLast, 10000);
        CCopyWatch::ShowLine(*stage.CopyPage()->findChild<CElidedLabel*>("m_pStateLab"), line);
    };
}

static STCopySample Sample(qint64 nSinceProgressMs, bool bFlushing)
{
    STCopySample stSample;
    stSample.nFiles = 1204;
    stSample.nBytes = 184000000;
    stSample.nSinceProgressMs = nSinceProgressMs;
    stSample.bFlushing = bFlushing;
    stSample.strPath = "/Volumes/Macintosh HD/Users/anna/" + LONG_FILE;
    return stSample;
}

/** Cancel was pressed and answered with Yes. */
static void ShowStopping(CLookStage& stage)
{
    ShowState(true, Sample(0, false))(stage);
    stage.Button("toolBtn")->setEnabled(false);
}

// ---------------------------------------------------------------- dialogs

static QImage SeenBox(QWidget* pBox) { return CLookStage::OnGround(pBox); }

/** What the program asks or says when fnOpen is run, answered with the button of that text. */
static STLook Asked(const char* pName, const std::function<void(CLookStage&)>& fnOpen, const char* pAnswer)
{
    return {pName, [fnOpen, pAnswer] {
                CLookStage stage;
                return CLookStage::DuringModal([&] { fnOpen(stage); }, pAnswer, SeenBox);
            }};
}

static void RefuseReadOnlyDisk(CLookStage& stage)
{
    stage.AddStick("RESCUE", 61035).MakeReadOnly();
    stage.SelectPage()->SlotCopyBtnClick();
}

static void RefuseTooMuch(CLookStage& stage)
{
    PlugIn(stage);
    stage.SelectPage()->ShowUsbNoEnoughDlg(qint64(256) * 1000 * 1000 * 1000);
}

static QImage WithBox(int nMask, const std::function<void(KvMessageBox&)>& fnChange)
{
    KvMessageBox box("The disk has been looked through. What is to be done?", nMask, nullptr);
    box.setIcon(":/res/Tip/tips_error40.png");
    box.show();
    if (!QTest::qWaitForWindowActive(&box)) {
        return QImage();
    }
    fnChange(box);
    return CLookStage::OnGround(&box);
}

static STLook Box(const QString& strName, int nMask, const std::function<void(KvMessageBox&)>& fnChange)
{
    return {strName, [nMask, fnChange] { return WithBox(nMask, fnChange); }};
}

static const int LISTED = 12;

/** An account of a copy that is not whole, with more items than it lists. */
static STCopyAccount BadAccount()
{
    STCopyAccount stAccount;
    stAccount.nFiles = 1204;
    stAccount.nBytes = 3200000000;
    stAccount.nProblems = 1230;
    stAccount.enFlush = ENCopyFlush::DONE;
    stAccount.strReport = "/Volumes/RESCUE/Tarnwick 2026-11-22 at 10.00.00.txt";
    for (int n = 0; n < LISTED; ++n) {
        STCopyItem stItem;
        stItem.strPath = QString("/Volumes/Macintosh HD/Users/anna/%1. %2").arg(n + 1).arg(LONG_FILE);
        stItem.enProblem = n % 2 ? ENCopyProblem::TARGET_WRITE : ENCopyProblem::SOURCE_READ;
        stItem.nError = n % 2 ? ENOSPC : EIO;
        stItem.nCopied = n * 1000000;
        stItem.nExpected = 12000000;
        stAccount.listItem.append(stItem);
    }
    stAccount.listItem[2] = {"/Volumes/Macintosh HD/Users/anna/lists/passwd", ENCopyProblem::LEAVES_VOLUME};
    stAccount.listItem[2].bNote = true;
    return stAccount;
}

/** What the box of the end says of a copy. */
static STLook End(const char* pName, const std::function<void(STCopyAccount&)>& fnChange)
{
    STCopyAccount stAccount = BadAccount();
    fnChange(stAccount);
    return Asked(
        pName,
        [stAccount](CLookStage& stage) {
            stage.CopyPage()->SlotCopyAccount(stAccount);
            stage.CopyPage()->SlotCopyFinish();
        },
        "OK");
}

static void MakeWhole(STCopyAccount& stAccount)
{
    stAccount.nProblems = 0;
    stAccount.listItem.clear();
}

static QList<STLook> EndLooks()
{
    return {
        End("end-whole", MakeWhole),
        End("end-not-whole", [](STCopyAccount&) {}),
        End("end-no-report", [](STCopyAccount& stAccount) { stAccount.bReportMissing = true; }),
        End("end-nothing",
            [](STCopyAccount& stAccount) {
                stAccount.nFiles = 0;
                stAccount.nBytes = 0;
            }),
        End("end-stopped", [](STCopyAccount& stAccount) { stAccount.bStopped = true; }),
        End("end-not-confirmed",
            [](STCopyAccount& stAccount) {
                MakeWhole(stAccount);
                stAccount.enFlush = ENCopyFlush::FAILED;
            }),
    };
}

/** The disk was pulled while the user read that all is on it. */
static QImage RemovedWhole()
{
    CLookStage stage;
    QImage img;
    const auto fnOpen = [&] {
        STCopyAccount stAccount = BadAccount();
        MakeWhole(stAccount);
        stage.CopyPage()->SlotCopyAccount(stAccount);
        stage.CopyPage()->SlotCopyFinish();
    };
    const auto fnPull = [&](QWidget*) {
        img = CLookStage::DuringModal([&] { stage.CopyPage()->USBExtract(); }, "OK", SeenBox);
        return QImage();
    };
    CLookStage::DuringModal(fnOpen, "OK", fnPull);
    return img;
}

static QImage ItemList()
{
    CItemListDialog dialog(BadAccount());
    dialog.show();
    return QTest::qWaitForWindowActive(&dialog) ? CLookStage::OnGround(&dialog) : QImage();
}

/** What only a complete copy has to say. */
static QImage CompleteItemList()
{
    const auto fnItem = [](const char* pName, ENCopyProblem enProblem, const QString& strDetail, bool bNote) {
        STCopyItem stItem{QString("/Volumes/Macintosh HD/Users/anna/") + pName, enProblem};
        stItem.strDetail = strDetail;
        stItem.bNote = bNote;
        if (enProblem == ENCopyProblem::DAMAGED) {
            stItem.nCopied = stItem.nExpected = 12000000;
        }
        return stItem;
    };
    const QString strRanges = QString("4194304-4198399, ").repeated(20);
    STCopyAccount stAccount;
    stAccount.listItem = {
        fnItem("Film.mov", ENCopyProblem::DAMAGED, "4096-8191, 12288-16383", false),
        fnItem("Concert.mov", ENCopyProblem::DAMAGED, strRanges, false),
        fnItem("Long film.mov", ENCopyProblem::TOO_LARGE, QString(), false),
        fnItem("Stick", ENCopyProblem::OTHER_FILE_SYSTEM, QString(), false),
        fnItem("a:b?.txt", ENCopyProblem::NAME_CHANGED, "Macintosh HD/Users/anna/a_b_.txt", true),
        fnItem("Latest", ENCopyProblem::LINK_LOST, "../Shared/<b>%1</b>", true),
        fnItem("Copy", ENCopyProblem::ENTERED_BEFORE, QString(), true),
        fnItem("", ENCopyProblem::PERMISSIONS_LOST, "1204", true),
    };
    stAccount.listItem[2].nExpected = 5368709120;
    CItemListDialog dialog(stAccount);
    dialog.show();
    return QTest::qWaitForWindowActive(&dialog) ? CLookStage::OnGround(&dialog) : QImage();
}

/** The language's text for one of the program's; the text itself when it has none. */
static QString InLanguage(const QString& strLanguage, const QString& strContext, const QString& strSource)
{
    for (const STEntry& entry : CTranslations::Entries(CTranslations::SourcePath(strLanguage))) {
        if (entry.strContext == strContext && entry.strSource == strSource) {
            return entry.strTranslation;
        }
    }
    return strSource;
}

static const QStringList CONTEXTS_OF_BOXES{"CCopyFileWidget", "CSelFileWidget", "CTarnwickMacPE"};

/** The language whose sentence for a source text is the longest of those in boxes, and that text's entry. */
static QPair<QString, STEntry> LongestText()
{
    QPair<QString, STEntry> longest;
    for (const QString& strLanguage : CTranslations::Languages()) {
        for (const STEntry& entry : CTranslations::Entries(CTranslations::SourcePath(strLanguage))) {
            const bool bLonger = entry.strTranslation.size() > longest.second.strTranslation.size();
            // With placeholders it is no text of a box.
            const bool bOfBox
                = CONTEXTS_OF_BOXES.contains(entry.strContext) && !entry.strTranslation.contains('%');
            if (bLonger && bOfBox) {
                longest = {strLanguage, entry};
            }
        }
    }
    return longest;
}

static QImage LongestBox()
{
    const auto longest = LongestText();
    const auto fnButton
        = [&longest](const char* pText) { return InLanguage(longest.first, "KvMessageBox", pText); };
    KvMessageBox box(longest.second.strTranslation, Style_Yes | Style_Cancel, nullptr);
    box.SetButtonText(fnButton("Yes"), QString(), QString(), fnButton("Cancel"));
    box.show();
    return QTest::qWaitForWindowActive(&box) ? CLookStage::OnGround(&box) : QImage();
}

static QImage Splash(qint64 nMs)
{
    CStartSplash splash;
    const bool bShown = QTest::qWaitFor([&] {
        splash.Wait({"Macintosh HD", nMs});
        return splash.isVisible();
    });
    return bShown ? CLookStage::OnGround(&splash) : QImage();
}

static QImage WaitDialog(const QString& strText)
{
    CSearchWaitView dialog(nullptr);
    dialog.SetText(strText, QString());
    dialog.ChangeGifStatus(true);
    dialog.show();
    return QTest::qWaitForWindowActive(&dialog) ? CLookStage::OnGround(&dialog) : QImage();
}

// ---------------------------------------------------------------- keyboard focus

/** A name for each stop: the text of a button, else its object name. */
static QStringList StopNames(QWidget* pWindow, const QString& strBefore)
{
    QStringList listName;
    for (const QWidget* pStop : TabStops(pWindow)) {
        const auto* pButton = qobject_cast<const QPushButton*>(pStop);
        const bool bText = pButton && !pButton->text().isEmpty();
        listName.append(strBefore + (bText ? pButton->text() : pStop->objectName()));
    }
    return listName;
}

static QList<STLook> FocusLooks(const QString& strBefore, const Scene& fnScene)
{
    CLookStage stage;
    fnScene(stage);
    const QStringList listName = StopNames(stage.Window(), strBefore);
    QList<STLook> listLook;
    for (int nStop = 0; nStop < listName.size(); ++nStop) {
        listLook.append({listName.at(nStop), [fnScene, nStop] {
                             CLookStage stage;
                             fnScene(stage);
                             GiveFocus(stage.Window(), nStop);
                             return stage.Picture(stage.Window()->focusWidget());
                         }});
    }
    return listLook;
}

static QList<STLook> BoxFocusLooks()
{
    KvMessageBox box(QString(), ALL_BUTTONS, nullptr);
    box.show();
    const QStringList listName = StopNames(&box, "box-focus-");
    QList<STLook> listLook;
    for (int nStop = 0; nStop < listName.size(); ++nStop) {
        listLook.append(
            Box(listName.at(nStop), ALL_BUTTONS, [nStop](KvMessageBox& box) { GiveFocus(&box, nStop); }));
    }
    return listLook;
}

// ---------------------------------------------------------------- the list

/** The whole window. */
static STLook Whole(const char* pName, const Scene& fnScene)
{
    return {pName, [fnScene] {
                CLookStage stage;
                fnScene(stage);
                return stage.Picture();
            }};
}

/** One part of the window and what is around it. */
static STLook Part(const char* pName, const char* pPart, const Scene& fnScene)
{
    return {pName, [fnScene, pPart] {
                CLookStage stage;
                fnScene(stage);
                return stage.Picture(stage.Part(pPart));
            }};
}

/** A part of the window that has just come up, with the mouse over it. */
static STLook Hovered(const char* pName, const char* pPart, const char* pSeen)
{
    return Part(pName, pSeen, [pPart](CLookStage& stage) { CLookStage::Hover(stage.Part(pPart)); });
}

static QList<STLook> SelectLooks()
{
    return {
        Whole("select-no-disk", [](CLookStage&) {}),
        Whole("select-disk", PlugIn),
        Whole("select-ticked", TickSome),
        Whole("select-troubles", ShowTroubles),
        Whole("select-long-names", ShowLongNames),
        Whole("select-deep-folder", ShowDeepFolder),
        Whole("select-list-open", [](CLookStage& stage) { OpenList(stage); }),
        Whole("select-list-empty",
              [](CLookStage& stage) { QTest::mouseClick(stage.Button("m_pDropBtn"), Qt::LeftButton); }),
        Whole("select-no-volume", TakeVolumesAway),
        Whole("select-counting",
              [](CLookStage& stage) {
                  TickSome(stage);
                  stage.SelectPage()->SlotCopyBtnClick();
              }),
        Part("select-list-hover", "m_pUSBPicFrame", HoverOtherDisk),
        Part("select-row-hover", "m_pTreeFrame", HoverRow),
        Part("select-row-left", "m_pTreeFrame", LeaveChosenRow),
        Part("select-copy-hover", "toolBtn",
             [](CLookStage& stage) {
                 TickSome(stage);
                 CLookStage::Hover(stage.Button("toolBtn"));
             }),
        Part("select-copy-pressed", "toolBtn",
             [](CLookStage& stage) {
                 TickSome(stage);
                 CLookStage::Hover(stage.Button("toolBtn"));
                 stage.Button("toolBtn")->setDown(true);
             }),
        Hovered("select-complete-hover", "m_pCompleteBox", "m_pBottomWidget"),
        Part("select-complete-pressed", "m_pBottomWidget",
             [](CLookStage& stage) {
                 CLookStage::Hover(stage.Part("m_pCompleteBox"));
                 CompleteBox(stage)->setDown(true);
             }),
        Part("select-complete-on", "m_pBottomWidget", ChooseComplete),
        Part("select-complete-on-hover", "m_pBottomWidget",
             [](CLookStage& stage) {
                 ChooseComplete(stage);
                 CLookStage::Hover(stage.Part("m_pCompleteBox"));
             }),
        Part("select-complete-on-focus", "m_pBottomWidget",
             [](CLookStage& stage) {
                 ChooseComplete(stage);
                 stage.Part("m_pCompleteBox")->setFocus(Qt::TabFocusReason);
             }),
        Whole("select-complete-counting",
              [](CLookStage& stage) {
                  ChooseComplete(stage);
                  stage.SelectPage()->SlotCopyBtnClick();
              }),
        Hovered("select-list-button-hover", "m_pDropBtn", "m_pDropBtn"),
        Hovered("select-refresh-hover", "RefreshLab", "RefreshLab"),
        Hovered("title-close-hover", "m_pCloseBtn", "m_pTitleWidget"),
    };
}

static QList<STLook> CopyLooks()
{
    return {
        Whole("copy-begin", ShowNewCopy),
        Whole("copy-half", ShowHalfCopied),
        Whole("copy-whole", ShowWholeCopied),
        Whole("copy-figures", ShowState(false, Sample(0, false))),
        Whole("copy-no-answer", ShowState(false, Sample(25000, false))),
        Whole("copy-stopping", ShowStopping),
        Part("copy-last-bytes", "m_pStateLab", ShowState(false, Sample(0, true))),
        Part("copy-cancel-hover", "toolBtn",
             [](CLookStage& stage) {
                 ShowHalfCopied(stage);
                 CLookStage::Hover(stage.Button("toolBtn"));
             }),
    };
}

static QList<STLook> DialogLooks()
{
    const auto fnButton
        = [](KvMessageBox& box, const char* pName) { return box.findChild<QPushButton*>(pName); };
    return {
        Asked(
            "box-exit", [](CLookStage& stage) { stage.Window()->close(); }, "Cancel"),
        Asked(
            "box-cancel", [](CLookStage& stage) { stage.CopyPage()->SlotCancelBtnClick(); }, "Cancel"),
        Asked(
            "box-completed", [](CLookStage& stage) { stage.CopyPage()->SlotCopyFinish(); }, "OK"),
        Asked(
            "box-removed", [](CLookStage& stage) { stage.CopyPage()->USBExtract(); }, "OK"),
        Asked("box-read-only", RefuseReadOnlyDisk, "OK"),
        Asked("box-no-space", RefuseTooMuch, "OK"),
        {"box-longest-text", LongestBox},
        Box("box-detail-plain", Style_Ok,
            [](KvMessageBox& box) {
                box.SetDetail("5.20 GB are needed, 3.10 GB are free.", ENDetail::PLAIN);
            }),
        Box("box-detail-good", Style_Ok,
            [](KvMessageBox& box) {
                box.SetDetail("1,204 files, 3.20 GB are on the disk. It can be unplugged now.",
                              ENDetail::GOOD);
            }),
        Box("box-detail-warning", Style_Ok,
            [](KvMessageBox& box) {
                box.SetDetail("The disk did not confirm that everything is on it. Do not rely on this "
                              "copy.\nThe list could not be saved on the disk.",
                              ENDetail::WARNING);
                box.SetDetailLink("Show the list");
                GiveFocus(&box, 1);
            }),
        {"box-removed-whole", RemovedWhole},
        {"item-list", ItemList},
        {"item-list-complete", CompleteItemList},
        Box("box-no-button", 0, [](KvMessageBox&) {}),
        Box("box-all-buttons", ALL_BUTTONS, [](KvMessageBox&) {}),
        Box("box-close-hover", ALL_BUTTONS,
            [fnButton](KvMessageBox& box) { CLookStage::Hover(fnButton(box, "btnClose")); }),
        Box("box-first-hover", ALL_BUTTONS,
            [fnButton](KvMessageBox& box) { CLookStage::Hover(fnButton(box, "toolBtn")); }),
        Box("box-second-hover", ALL_BUTTONS,
            [fnButton](KvMessageBox& box) { CLookStage::Hover(fnButton(box, "toolBtnEx")); }),
        Box("box-second-pressed", ALL_BUTTONS,
            [fnButton](KvMessageBox& box) { fnButton(box, "toolBtnEx")->setDown(true); }),
        {"splash-searching", [] { return Splash(0); }},
        {"splash-waiting", [] { return Splash(CStartSplash::NAME_AFTER_MS); }},
        {"wait-one-line", [] { return WaitDialog("Calculating files size..."); }},
        {"wait-two-lines",
         [] { return WaitDialog("Calculating the size of the files that are ticked, this may take long"); }},
    };
}

static STLook Notice(const char* pName, const Scene& fnScene)
{
    return Part(pName, "m_pBottomWidget", fnScene);
}

static void ShowNotice(CLookStage& stage, ENNotice enNotice, const QString& strText,
                       const QString& strLink = QString())
{
    PlugIn(stage);
    stage.SelectPage()->findChild<CNoticeLine*>()->Set(enNotice, strText, strLink);
}

static QList<STLook> NoticeLooks()
{
    const auto fnLastCopy = [](CLookStage& stage) {
        TickSome(stage);
        stage.SelectPage()->ShowLastCopy(BadAccount(), "RESCUE");
    };
    return {
        Whole("select-notice-copy", fnLastCopy),
        Notice("select-notice-long",
               [](CLookStage& stage) {
                   PlugIn(stage);
                   STCopyAccount stAccount = BadAccount();
                   stAccount.enFlush = ENCopyFlush::FAILED;
                   stage.SelectPage()->ShowLastCopy(stAccount, LONG_NAME);
               }),
        Notice("select-notice-link-focus",
               [fnLastCopy](CLookStage& stage) {
                   fnLastCopy(stage);
                   stage.Part("m_pNoticeLink")->setFocus(Qt::TabFocusReason);
               }),
        Notice("select-notice-volume",
               [](CLookStage& stage) {
                   PlugIn(stage);
                   stage.Tree()->ToggleTick(stage.Tree()->model()->index(0, 0));
               }),
        Notice("select-notice-not-listed",
               [](CLookStage& stage) {
                   ShowNotice(stage, ENNotice::UNLISTED, "Entries that are not in the list are not copied.",
                              "Complete rescue");
               }),
        Notice("select-notice-large-files",
               [](CLookStage& stage) {
                   CompleteBox(stage)->setChecked(true);
                   ShowNotice(stage, ENNotice::LARGE_FILES, "RESCUE cannot hold a file of 4.29 GB or more.");
               }),
        Notice("select-notice-folder",
               [](CLookStage& stage) {
                   ShowNotice(stage, ENNotice::FOLDER,
                              "Documents: The folder cannot be read. Access is not permitted.");
               }),
        Notice("select-notice-no-answer",
               [](CLookStage& stage) { ShowNotice(stage, ENNotice::NO_ANSWER, "RESCUE does not answer."); }),
        Notice("select-notice-two",
               [fnLastCopy](CLookStage& stage) {
                   fnLastCopy(stage);
                   stage.AddStick("KEEPSAKE", 1000);
                   stage.SelectPage()->RemoveDisk("/Volumes/RESCUE");
                   stage.SelectPage()->OnRefreshUSB();
               }),
    };
}

QList<STLook> AllLooks()
{
    return SelectLooks() + NoticeLooks() + FocusLooks("select-focus-", ChooseRow) + CopyLooks()
        + FocusLooks("copy-focus-", ShowNewCopy) + DialogLooks() + EndLooks() + BoxFocusLooks();
}
