#include "ask/CKeyboardBox.h"

#include "ask/CKeyboardLayouts.h"

#include <QKeyEvent>
#include <QListView>
#include <QWheelEvent>

static const int MOST_ROWS = 10;

CKeyboardBox::CKeyboardBox(const QString& strLayout, QWidget* pParent)
    : QComboBox(pParent)
    , m_strLayout(strLayout)
{
    setObjectName(QStringLiteral("m_pKeyboardBox"));
    // Rows of the style sheet; the style's own list covers the box and ignores them.
    setView(new QListView);
    setMaxVisibleItems(MOST_ROWS);
    for (const STKeyboardLayout& stLayout : CKeyboardLayouts::All()) {
        addItem(stLayout.strName, stLayout.strCode);
    }
    if (findData(strLayout) < 0) {
        addItem(strLayout, strLayout);
    }
    setCurrentIndex(findData(strLayout));
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &CKeyboardBox::Choose);
}

void CKeyboardBox::Choose(int nIndex)
{
    const QString strLayout = itemData(nIndex).toString();
    if (strLayout != m_strLayout) {
        emit SignalLayout(strLayout);
    }
}

void CKeyboardBox::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!pEvent->isAutoRepeat()) {
            showPopup();
        }
        return;
    default:
        // A letter would choose the layout that begins with it.
        pEvent->ignore();
    }
}

void CKeyboardBox::wheelEvent(QWheelEvent* pEvent) { pEvent->ignore(); }
