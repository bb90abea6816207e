#pragma once

#include <QAccessibleWidget>

class CClickableLabel;

/**
 * A clickable label that the keyboard can reach, as a screen reader finds it: a
 * button. Other clickable labels stay what Qt makes of a label, a text.
 * GUI thread only.
 */
class CClickableLabelAccess : public QAccessibleWidget
{
public:
    /** Makes Qt use this class. Saying so again changes nothing. */
    static void Install();

    explicit CClickableLabelAccess(CClickableLabel* pLabel);

    /** Pressing, beside what every widget has. */
    QStringList actionNames() const override;

    /** Pressing is a click. */
    void doAction(const QString& strAction) override;
};
