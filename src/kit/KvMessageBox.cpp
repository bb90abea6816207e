#include "kit/KvMessageBox.h"

#include "kit/CDecorationAccess.h"
#include "kit/CSkinPicture.h"
#include "kit/SkinFont.h"
#include "ui_KvMessageBox.h"

#include <QApplication>
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

// Space on either side of the message, in pixels, that takes it no further line.
// A last line of a single word would look like an accident.
static int BalancedMargin(const QLabel& label, int nWidth)
{
    const int nHeight = label.heightForWidth(nWidth);
    if (nHeight <= label.heightForWidth(QWIDGETSIZE_MAX)) {
        return 0; // one line
    }
    int nTaken = qMax(label.minimumSizeHint().width(), nWidth / 2);
    while (nTaken < nWidth && label.heightForWidth(nTaken) > nHeight) {
        ++nTaken;
    }
    return (nWidth - nTaken) / 2;
}

KvMessageBox::KvMessageBox(const QString& strContent, int nStyle, QWidget* parent)
    : KvStyleDialog(parent)
    , m_strContent(strContent)
    , m_nStyle(nStyle)
    , m_pForm(std::make_unique<Ui_KvMessageBox>())
{
    m_pForm->setupUi(this);
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
                   | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint);
    setAttribute(Qt::WA_TranslucentBackground);
    InitImage();
    setFocus(Qt::OtherFocusReason);
    InitMessage();
    InitFonts();
    InitConnect();
    InitTabOrder();
    ShowButtons();
}

KvMessageBox::~KvMessageBox() = default;

int KvMessageBox::GetClickedBtn() const { return m_nClickedBtn; }

void KvMessageBox::SetBtnText(const KvMessageBox_Style& enWhich, const QString& strText)
{
    switch (enWhich) {
    case Style_Yes:
        m_pForm->pushButton_yes->setText(strText);
        break;
    case Style_No:
        m_pForm->pushButton_no->setText(strText);
        break;
    case Style_Ok:
        m_pForm->pushButton_ok->setText(strText);
        break;
    case Style_Cancel:
        m_pForm->pushButton_cancel->setText(strText);
        break;
    default:
        break;
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
    // The box's title says nothing, so a reader is given the message for a name.
    setAccessibleName(QTextDocumentFragment::fromHtml(strText).toPlainText());
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
    if (m_bPressed && pEvent->type() == QEvent::MouseMove) {
        pEvent->ignore();
        return true;
    }
    if (pEvent->type() == QEvent::MouseButtonRelease) {
        m_bPressed = false;
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
    layout()->activate();
    const int nMargin = BalancedMargin(*m_pForm->label, m_pForm->label->width());
    m_pForm->label->setContentsMargins(nMargin, 0, nMargin, 0);
}

void KvMessageBox::paintEvent(QPaintEvent* pEvent)
{
    m_Shadow.Paint(this);
    // Not the base dialog's: it would lay its shadow over this one.
    QWidget::paintEvent(pEvent); // NOLINT(bugprone-parent-virtual-call)
}

void KvMessageBox::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton) {
        setFocus(Qt::OtherFocusReason);
        m_bPressed = true;
        m_ptPress = pEvent->pos();
    }
    pEvent->accept();
}

// The box keeps a drag state of its own beside its base's; the threshold is
// held against the would-be corner here, too.
void KvMessageBox::mouseMoveEvent(QMouseEvent* pEvent)
{
    pEvent->accept();
    if (!m_bPressed || pEvent->buttons() == Qt::NoButton) {
        return;
    }
    const QPoint ptNew = pEvent->globalPos() - m_ptPress;
    if (ptNew.manhattanLength() > QApplication::startDragDistance()) {
        move(ptNew);
        m_ptPress = pEvent->globalPos() - pos();
        repaint();
    }
}

void KvMessageBox::mouseReleaseEvent(QMouseEvent* pEvent)
{
    m_bPressed = false;
    pEvent->accept();
}

void KvMessageBox::InitImage()
{
    setFixedSize(BOX_WIDTH, BOX_HEIGHT);
    setIcon(QStringLiteral(":/res/Tip/tips_mark.png"));
    const QFont font = SkinFont(CSkinMgr::FONT_STYLE_PX_14);
    for (QPushButton* pButton : {m_pForm->pushButton_yes, m_pForm->pushButton_ok}) {
        pButton->setFont(font);
        pButton->setObjectName(QStringLiteral("toolBtn"));
    }
    for (QPushButton* pButton : {m_pForm->pushButton_no, m_pForm->pushButton_cancel}) {
        pButton->setFont(font);
        pButton->setObjectName(QStringLiteral("toolBtnEx"));
    }
    m_pForm->label->setAlignment(Qt::AlignCenter);
    m_bPressed = false;
    m_ptPress = QPoint(0, 0);
}

void KvMessageBox::InitMessage()
{
    QLabel* pLabel = m_pForm->label;
    pLabel->setObjectName(QStringLiteral("label_text"));
    pLabel->setOpenExternalLinks(false);
    pLabel->setAlignment(Qt::AlignCenter);
    pLabel->setWordWrap(true);
    SetDialogInfomationContent(
        QStringLiteral("<html><head/><body><p style='line-height:25px'>%1</p></body></html>")
            .arg(m_strContent));
    CDecorationAccess::Mark({m_pForm->label_icon});
    pLabel->installEventFilter(this);
}

void KvMessageBox::InitFonts()
{
    m_pForm->label->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_14));
    // One step below the font that the buttons had got with their look.
    const QFont font = SkinFont(CSkinMgr::FONT_STYLE_PX_13);
    for (QPushButton* pButton : {m_pForm->pushButton_yes, m_pForm->pushButton_no, m_pForm->pushButton_ok,
                                 m_pForm->pushButton_cancel}) {
        pButton->setFont(font);
    }
}

void KvMessageBox::InitConnect()
{
    connect(m_pForm->pushButton_yes, &QPushButton::clicked, this, &KvMessageBox::slotClose_yes);
    connect(m_pForm->pushButton_no, &QPushButton::clicked, this, &KvMessageBox::slotClose_no);
    connect(m_pForm->pushButton_ok, &QPushButton::clicked, this, &KvMessageBox::slotClose_ok);
    connect(m_pForm->pushButton_cancel, &QPushButton::clicked, this, &KvMessageBox::slotClose_cancel);
    connect(m_pForm->label, &QLabel::linkActivated, this, &KvMessageBox::slotLink);
    connect(m_pForm->btnClose, &QPushButton::clicked, this, &KvMessageBox::SlotCloseWindow);
}

// The buttons from left to right, then the title's, which answers nothing. It
// comes first in the form and Qt does not put a widget behind the last one of
// a window, so it goes before that one and that one before it.
void KvMessageBox::InitTabOrder()
{
    setTabOrder(m_pForm->pushButton_no, m_pForm->btnClose);
    setTabOrder(m_pForm->pushButton_no, m_pForm->pushButton_ok);
}

void KvMessageBox::ShowButtons()
{
    m_pForm->pushButton_yes->setVisible(m_nStyle & Style_Yes);
    m_pForm->pushButton_no->setVisible(m_nStyle & Style_No);
    m_pForm->pushButton_ok->setVisible(m_nStyle & Style_Ok);
    m_pForm->pushButton_cancel->setVisible(m_nStyle & Style_Cancel);
    if ((m_nStyle & ALL_BUTTONS) == ALL_BUTTONS) {
        m_pForm->horizontalLayout->setSpacing(SPACING_OF_ALL_BUTTONS);
    }
}

void KvMessageBox::CloseWith(int nResult)
{
    m_nClickedBtn = nResult;
    close();
}
