#pragma once

#include <QAccessibleWidget>

class QListWidget;
class QPushButton;

/**
 * A drop-down made of a button and a list that pops up, as a screen reader
 * finds it: a combo box whose value is its description, and which holds the
 * list while that is open. Qt leaves popups out of what a reader can walk
 * through. GUI thread only.
 */
class CDropDownAccess : public QAccessibleWidget
{
public:
    /** Makes Qt take the button for a drop-down. The list has to be the button's child. */
    static void Install(QPushButton* pButton);

    explicit CDropDownAccess(QPushButton* pButton);

    int childCount() const override;
    QAccessibleInterface* child(int nIndex) const override;
    QAccessibleInterface* childAt(int nX, int nY) const override;
    int indexOfChild(const QAccessibleInterface* pChild) const override;
    QString text(QAccessible::Text enText) const override;
    QAccessible::State state() const override;

    /** Pressing, which opens the list, beside what every widget has. */
    QStringList actionNames() const override;
    void doAction(const QString& strAction) override;

private:
    QListWidget* OpenList() const;
};
