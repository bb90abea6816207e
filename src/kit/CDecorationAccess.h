#pragma once

#include <QAccessibleWidget>

#include <initializer_list>

/**
 * A widget that says nothing: a line between two parts, an animation, a picture
 * of what a text beside it says. Screen readers pass it over, where Qt would
 * have them read a control without a name. GUI thread only.
 */
class CDecorationAccess : public QAccessibleWidget
{
public:
    /** Takes the widgets for decoration from now on. */
    static void Mark(std::initializer_list<QWidget*> listWidget);

    explicit CDecorationAccess(QWidget* pWidget);

    /** Nothing to be seen. */
    QAccessible::State state() const override;
};
