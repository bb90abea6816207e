#include "ask/CAskGround.h"

#include "ask/CAskPanel.h"
#include "kit/SkinColor.h"

#include <QColor>
#include <QCursor>
#include <QGuiApplication>
#include <QLayout>
#include <QScreen>

// What stays free of the screen beside the panel, on each side.
static const int LEAST_MARGIN = 16;

// What the program's own sheet has no rule for.
static QString Sheet()
{
    return QStringLiteral(
               "CAskGround { background-color: %6; }"
               "QFrame#askPanel { background-color: white; border-radius: 6px; }"
               "QFrame#askDisk { background-color: #f7f7f7; border: 1px solid %2; border-radius: 4px; }"
               "QScrollArea#m_pMissingArea { background-color: #f7f7f7; border: 1px solid %2; border-radius: "
               "4px; }"
               "QScrollArea#m_pMissingArea:focus { border: 1px solid %4; }"
               "QScrollArea#m_pMissingArea QScrollBar:vertical { background-color: #f7f7f7; width: 10px; }"
               "QWidget#missingList { background-color: transparent; }"
               "QLineEdit#m_pPasswordEdit, QComboBox#m_pKeyboardBox { border: 1px solid #c6c6c6;"
               " border-radius: 4px; padding: 0px 10px; background-color: white; color: %1; }"
               "QLineEdit#m_pPasswordEdit { selection-background-color: %3; selection-color: white; }"
               "QLineEdit#m_pPasswordEdit:focus, QComboBox#m_pKeyboardBox:focus { border: 2px solid %4;"
               " padding: 0px 9px; }"
               "QComboBox#m_pKeyboardBox::drop-down { border: 0px; width: 26px; }"
               "QComboBox#m_pKeyboardBox::down-arrow { image: url(:/res/Button/filedesc.png); width: 18px; }"
               "QComboBox#m_pKeyboardBox QListView { border: 1px solid #c6c6c6; background-color: white;"
               " outline: 0px; }"
               "QComboBox#m_pKeyboardBox QListView::item { min-height: 28px; padding-left: 8px; color: %1; }"
               "QComboBox#m_pKeyboardBox QListView::item:selected { background-color: %5; color: %1; }"
               "QPushButton#choiceBtn { border: 1px solid #c6c6c6; border-radius: 4px;"
               " background-color: white; }"
               "QPushButton#choiceBtn:hover { background-color: %5; }"
               "QPushButton#choiceBtn:pressed { background-color: #ffe0c7; }"
               "QPushButton#choiceBtn:focus { border: 2px solid %4; background-color: %5; }"
               "QCheckBox#m_pShowBox { border: 1px solid transparent; border-radius: 3px;"
               " padding: 2px 4px; outline: 0px; }"
               "QCheckBox#m_pShowBox:focus { border-color: %4; }")
        .arg(QColor(SkinColor::TEXT).name(), QColor(SkinColor::LINE).name(), QColor(SkinColor::ACCENT).name(),
             QColor(SkinColor::FOCUS_RING).name(), QColor(SkinColor::TINT).name(),
             QColor(SkinColor::GROUND).name());
}

CAskGround::CAskGround(CAskPanel* pPanel)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
    , m_pPanel(pPanel)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(Sheet());
    pPanel->setParent(this);
    connect(pPanel, &CAskPanel::SignalHeight, this, &CAskGround::PutPanel);
}

bool CAskGround::Cover()
{
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    if (!pScreen || pScreen->geometry().isEmpty()) {
        return false;
    }
    setGeometry(pScreen->geometry());
    // Where it points at nothing that could be taken for a choice.
    QCursor::setPos(width() / 2, height() * 9 / 10);
    show();
    activateWindow();
    if (QWidget* pFirst = m_pPanel->FirstFocus()) {
        pFirst->setFocus(Qt::OtherFocusReason);
    }
    return true;
}

void CAskGround::resizeEvent(QResizeEvent* pEvent)
{
    PutPanel();
    QWidget::resizeEvent(pEvent);
}

void CAskGround::PutPanel()
{
    const int nWidth = qMin(CAskPanel::WIDTH, width() - 2 * LEAST_MARGIN);
    m_pPanel->layout()->invalidate();
    m_pPanel->ensurePolished();
    const int nHeight = qMin(m_pPanel->heightForWidth(nWidth), height());
    m_pPanel->setGeometry((width() - nWidth) / 2, (height() - nHeight) / 2, nWidth, nHeight);
}
