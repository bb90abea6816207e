#include "kit/KvMessageBox.h"

#include "kit/BalancedWidth.h"
#include "kit/CDecorationAccess.h"
#include "kit/CSkinPicture.h"
#include "kit/SkinFont.h"
#include "ui_KvMessageBox.h"

#include <QAccessible>
#include <QDesktopServices>
#include <QMouseEvent>
#include <QPushButton>
#include <QTextDocumentFragment>
#include <QUrl>

static const int BOX_WIDTH = 490;
static const int BOX_HEIGHT = 300;

// Four buttons with the form's spacing are wider than the box, so they stand closer together.
static const int ALL_BUTTONS = Style_Yes | Style_No | Style_Ok | Style_Cancel;
static const int SPACING_OF_ALL_BUTTONS = 20;

// With a detail the parts stand closer together, so that the longest texts fit with it.
static const int SPACING = 15;
static const int SPACING_WITH_DETAIL = 6;

// Space on either side of the message, in pixels, that takes it no further line.
static int BalancedMargin(const QLabel& label, int nWidth)
{
    if (label.heightForWidth(nWidth) <= label.heightForWidth(QWIDGETSIZE_MAX)) {
        return 0; // one line
    }
    return (nWidth - BalancedWidth(label, nWidth / 2, nWidth)) / 2;
}

KvMessageBox::KvMessageBox(const QString& strContent, int nStyle, QWidget* parent)
    : KvStyleDialog(parent)
    , m_pForm(std::make_unique<Ui_KvMessageBox>())
{
    m_pForm->setupUi(this);
    setFixedSize(BOX_WIDTH, BOX_HEIGHT);
    setIcon(QStringLiteral(":/res/Tip/tips_mark.png"));
    InitMessage(strContent);
    InitButtons(nStyle);
    InitConnect();
    InitTabOrder();
}

KvMessageBox::~KvMessageBox() = default;

int KvMessageBox::GetClickedBtn() const { return m_nClickedBtn; }

QPushButton* KvMessageBox::Button(KvMessageBox_Style enWhich) const
{
    switch (enWhich) {
    case Style_Yes:
        return m_pForm->pushButton_yes;
    case Style_No:
        return m_pForm->pushButton_no;
    case Style_Ok:
        return m_pForm->pushButton_ok;
    case Style_Cancel:
        return m_pForm->pushButton_cancel;
    default:
        return nullptr;
    }
}

void KvMessageBox::SetBtnText(const KvMessageBox_Style& enWhich, const QString& strText)
{
    if (QPushButton* pButton = Button(enWhich)) {
        pButton->setText(strText);
    }
}

void KvMessageBox::SetButtonText(QString strYes, QString strNo, QString strOk, QString strCancel)
{
    SetBtnText(Style_Yes, strYes);
    SetBtnText(Style_No, strNo);
    SetBtnText(Style_Ok, strOk);
    SetBtnText(Style_Cancel, strCancel);
}

void KvMessageBox::setIcon(QString strPath) { m_pForm->label_icon->setPixmap(CSkinPicture::Pixmap(strPath)); }

void KvMessageBox::hideIcon() { m_pForm->label_icon->hide(); }

void KvMessageBox::SetDialogInfomationContent(const QString& strText)
{
    m_pForm->label->setText(strText);
    TellReaders();
}

void KvMessageBox::SetDetail(const QString& strText, ENDetail enKind)
{
    m_pDetail->SetText(strText, enKind);
    m_pForm->verticalLayout_2->setSpacing(strText.isEmpty() ? SPACING : SPACING_WITH_DETAIL);
    TellReaders();
    if (isVisible()) {
        BalanceLines();
        QAccessibleEvent event(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

void KvMessageBox::SetDetailLink(const QString& strText)
{
    m_pDetail->SetLink(strText);
    if (isVisible()) {
        BalanceLines();
    }
}

// The box's title says nothing, so a reader is given the message for a name, and the
// detail for what is to be said of it.
void KvMessageBox::TellReaders()
{
    setAccessibleName(QTextDocumentFragment::fromHtml(m_pForm->label->text()).toPlainText());
    setAccessibleDescription(m_pDetail->Text());
}

void KvMessageBox::SetTitle(QString strText) { SetDialogInfomationContent(strText); }

void KvMessageBox::setBoxSize(int nMinWidth, int nMinHeight, int nMaxWidth, int nMaxHeight)
{
    setMinimumSize(nMinWidth, nMinHeight);
    setMaximumSize(nMaxWidth, nMaxHeight);
}

void KvMessageBox::setBoxContentSize(int nMinWidth, int nMinHeight, int nMaxWidth, int nMaxHeight)
{
    m_pForm->widget->setMinimumSize(nMinWidth, nMinHeight);
    m_pForm->widget->setMaximumSize(nMaxWidth, nMaxHeight);
}

// The message may hold links, so its label keeps the mouse events of a drag to
// itself. Passed on, they let the box be dragged by its message as well.
bool KvMessageBox::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (IsDragged() && pEvent->type() == QEvent::MouseMove) {
        pEvent->ignore();
        return true;
    }
    if (pEvent->type() == QEvent::MouseButtonRelease) {
        EndDrag();
    }
    return KvStyleDialog::eventFilter(pWatched, pEvent);
}

void KvMessageBox::slotClose_yes() { CloseWith(Style_Yes); }

void KvMessageBox::slotClose_no() { CloseWith(Style_No); }

void KvMessageBox::slotClose_ok() { CloseWith(Style_Ok); }

void KvMessageBox::slotClose_cancel() { CloseWith(Style_Cancel); }

void KvMessageBox::SlotCloseWindow() { CloseWith(0); }

void KvMessageBox::slot_peekPassword() { }

void KvMessageBox::slotLink(QString strLink) { QDesktopServices::openUrl(QUrl(strLink)); }

void KvMessageBox::showEvent(QShowEvent* pEvent)
{
    // A box that is kept and asked again must not answer for the time before
    // when the window manager closes it.
    if (!pEvent->spontaneous()) {
        m_nClickedBtn = 0;
    }
    BalanceLines();
    KvStyleDialog::showEvent(pEvent);
}

void KvMessageBox::BalanceLines()
{
    m_pForm->label->setContentsMargins(0, 0, 0, 0);
    m_pForm->verticalSpacer->changeSize(0, 0);
    LayOut();
    const int nMargin = BalancedMargin(*m_pForm->label, m_pForm->label->width());
    m_pForm->label->setContentsMargins(nMargin, 0, nMargin, 0);
    if (!m_pDetail->isHidden()) {
        MoveTogether(nMargin);
    }
}

// Message and detail say one thing, so what is left of the height goes around both.
void KvMessageBox::MoveTogether(int nMargin)
{
    QLabel* pLabel = m_pForm->label;
    const int nLeft = pLabel->height() - pLabel->heightForWidth(pLabel->width());
    if (nLeft <= 0) {
        return;
    }
    pLabel->setContentsMargins(nMargin, nLeft * 3 / 10, nMargin, 0);
    m_pForm->verticalSpacer->changeSize(0, nLeft / 2);
    LayOut();
}

void KvMessageBox::LayOut()
{
    m_pDetail->layout()->invalidate();
    m_pForm->verticalLayout_2->invalidate();
    layout()->activate();
    m_pForm->verticalLayout_2->activate();
    m_pDetail->layout()->activate();
}

// The box takes every event of the mouse, the base only those of a drag.
void KvMessageBox::mousePressEvent(QMouseEvent* pEvent)
{
    KvStyleDialog::mousePressEvent(pEvent);
    pEvent->accept();
}

void KvMessageBox::mouseMoveEvent(QMouseEvent* pEvent)
{
    KvStyleDialog::mouseMoveEvent(pEvent);
    pEvent->accept();
}

void KvMessageBox::InitMessage(const QString& strContent)
{
    m_pDetail = new CBoxDetail(this);
    m_pForm->verticalLayout_2->insertWidget(2, m_pDetail, 0, Qt::AlignHCenter);
    QLabel* pLabel = m_pForm->label;
    pLabel->setObjectName(QStringLiteral("label_text"));
    pLabel->setOpenExternalLinks(false);
    pLabel->setAlignment(Qt::AlignCenter);
    pLabel->setWordWrap(true);
    pLabel->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_14));
    SetDialogInfomationContent(
        QStringLiteral("<html><head/><body><p style='line-height:25px'>%1</p></body></html>")
            .arg(strContent));
    CDecorationAccess::Mark({m_pForm->label_icon});
    pLabel->installEventFilter(this);
}

void KvMessageBox::InitButtons(int nStyle)
{
    for (const KvMessageBox_Style enWhich : {Style_Yes, Style_No, Style_Ok, Style_Cancel}) {
        // The style sheet fills the ones that agree and outlines the ones that refuse.
        const bool bAgrees = enWhich == Style_Yes || enWhich == Style_Ok;
        QPushButton* pButton = Button(enWhich);
        pButton->setObjectName(bAgrees ? QStringLiteral("toolBtn") : QStringLiteral("toolBtnEx"));
        pButton->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
        pButton->setVisible(nStyle & enWhich);
    }
    if ((nStyle & ALL_BUTTONS) == ALL_BUTTONS) {
        m_pForm->horizontalLayout->setSpacing(SPACING_OF_ALL_BUTTONS);
    }
}

void KvMessageBox::InitConnect()
{
    connect(m_pForm->pushButton_yes, &QPushButton::clicked, this, &KvMessageBox::slotClose_yes);
    connect(m_pForm->pushButton_no, &QPushButton::clicked, this, &KvMessageBox::slotClose_no);
    connect(m_pForm->pushButton_ok, &QPushButton::clicked, this, &KvMessageBox::slotClose_ok);
    connect(m_pForm->pushButton_cancel, &QPushButton::clicked, this, &KvMessageBox::slotClose_cancel);
    connect(m_pForm->label, &QLabel::linkActivated, this, &KvMessageBox::slotLink);
    connect(m_pDetail, &CBoxDetail::SignalLink, this, &KvMessageBox::SignalDetailLink);
    connect(m_pForm->btnClose, &QPushButton::clicked, this, &KvMessageBox::SlotCloseWindow);
}

// The buttons from left to right, the link, then the title's button, which answers nothing. It
// comes first in the form and Qt does not put a widget behind the last one of
// a window, so it goes before that one and that one before it.
void KvMessageBox::InitTabOrder()
{
    setTabOrder(m_pForm->pushButton_no, m_pForm->btnClose);
    setTabOrder(m_pForm->pushButton_no, m_pForm->pushButton_ok);
    setTabOrder(m_pForm->pushButton_ok, m_pDetail->Link());
}

void KvMessageBox::CloseWith(int nResult)
{
    m_nClickedBtn = nResult;
    close();
}
