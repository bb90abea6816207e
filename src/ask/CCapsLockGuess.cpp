#include "ask/CCapsLockGuess.h"

#include <QKeyEvent>

void CCapsLockGuess::Take(const QKeyEvent& event)
{
    const QString strText = event.text();
    // With Control or the third level a key gives what is no letter of its case.
    const bool bOther = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::GroupSwitchModifier);
    if (bOther || strText.size() != 1 || strText.toUpper() == strText.toLower()) {
        return;
    }
    const bool bShift = event.modifiers().testFlag(Qt::ShiftModifier);
    m_bOn = strText.at(0).isUpper() != bShift;
}
