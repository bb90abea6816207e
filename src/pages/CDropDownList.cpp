#include "pages/CDropDownList.h"

#include "kit/SkinColor.h"
#include "kit/SkinFont.h"
#include "pages/CDropDownAccess.h"
#include "pages/CDropDownKeys.h"
#include "pages/CElidedLabel.h"
#include "pages/CEmptyHint.h"
#include "pages/CPopupCloser.h"

#include <QColor>
#include <QPushButton>

static const int WIDTH = 332;
static const int HEIGHT = 180;

// The open list covers the upper part of the disk's picture, so it needs an
// edge below; its names stand under the name in the title line.
static QString ListStyle()
{
    return QStringLiteral("QListWidget { border-radius: 0px; border-bottom: 1px solid %1; }"
                          "QListWidget::item { border: 0px; padding: 0px 12px; }")
        .arg(QColor(SkinColor::LINE).name());
}

CDropDownList::CDropDownList(const QString& strEmpty, QPushButton* pButton)
    : QListWidget(pButton)
    , m_pButton(pButton)
{
    setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
    setFixedSize(WIDTH, HEIGHT);
    setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_14));
    setStyleSheet(ListStyle());
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    new CEmptyHint(strEmpty, this);
    new CPopupCloser(this);
    const auto* pKeys = new CDropDownKeys(pButton, this);
    connect(pKeys, &CDropDownKeys::SignalOpen, this, &CDropDownList::SignalOpen);
    connect(pKeys, &CDropDownKeys::SignalChosen, this, &CDropDownList::SignalChosen);
    connect(this, &QListWidget::itemClicked, this, &CDropDownList::SignalChosen);
    CDropDownAccess::Install(pButton);
}

void CDropDownList::SetNames(const QStringList& listName)
{
    clear();
    addItems(listName);
    for (int i = 0; i < listName.size(); ++i) {
        item(i)->setToolTip(CElidedLabel::ToolTipText(listName.at(i)));
    }
}

void CDropDownList::Open(const QPoint& ptGlobal, const QString& strChosen)
{
    setCurrentItem(findItems(strChosen, Qt::MatchExactly | Qt::MatchCaseSensitive).value(0));
    // The entry under the pointer has the same ground as the current one, so the
    // chosen one is told by its letters.
    for (int i = 0; i < count(); ++i) {
        QFont fontEntry = font();
        fontEntry.setBold(item(i) == currentItem());
        item(i)->setFont(fontEntry);
    }
    move(ptGlobal);
    show();
    // The list takes the pointer from the button without telling it.
    m_pButton->setAttribute(Qt::WA_UnderMouse, false);
    m_pButton->update();
    // A popup gets the keys without the focus, but a screen reader follows the focus.
    setFocus(Qt::PopupFocusReason);
}
