#include "kit/CLinkButton.h"

#include "kit/SkinColor.h"
#include "kit/SkinFont.h"

#include <QColor>
#include <QKeyEvent>

// The border is there without the focus, too, so that the text does not move.
static QString LinkStyle()
{
    return QStringLiteral("QPushButton { border: 1px solid transparent; border-radius: 3px; padding: 0px 4px;"
                          " background-color: transparent; color: %1; text-decoration: underline; }"
                          "QPushButton:focus { border-color: %2; }"
                          "QPushButton:hover, QPushButton:pressed { color: %2; }")
        .arg(QColor(SkinColor::WARNING).name(), QColor(SkinColor::FOCUS_RING).name());
}

CLinkButton::CLinkButton(QWidget* parent)
    : QPushButton(parent)
{
    setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    setStyleSheet(LinkStyle());
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(false);
}

void CLinkButton::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bReturn = pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter;
    if (bReturn && !pEvent->isAutoRepeat()) {
        click();
        return;
    }
    QPushButton::keyPressEvent(pEvent);
}
