#pragma once

#include <QAccessible>
#include <QFile>
#include <QImage>
#include <QTest>
#include <QWidget>

/** The program's style sheet, for tests that link tarnwick_res; empty when it cannot be read. */
inline QString ProgramSheet()
{
    QFile sheet(":/res/TarnwickMacPE.qss");
    return sheet.open(QIODevice::ReadOnly) ? QString::fromLatin1(sheet.readAll()) : QString();
}

/** Shows a window and waits until it is the one that gets the keys; false when that never happens. */
inline bool ShowActive(QWidget* pWindow)
{
    pWindow->show();
    pWindow->activateWindow();
    return QTest::qWaitForWindowActive(pWindow);
}

/** Where a child of any depth lies in a widget above it. */
inline QRect PlaceIn(const QWidget* pAncestor, const QWidget* pChild)
{
    return {pChild->mapTo(pAncestor, QPoint()), pChild->size()};
}

/** What a widget itself paints on a ground of one colour: no background of its window, no children. */
inline QImage Painted(QWidget* pWidget, const QColor& ground = Qt::transparent,
                      QWidget::RenderFlags flags = QWidget::RenderFlags())
{
    QImage image(pWidget->size(), QImage::Format_ARGB32);
    image.fill(ground);
    pWidget->render(&image, QPoint(), QRegion(), flags);
    return image;
}

/** A widget as a screen reader finds it. */
inline QAccessibleInterface* Heard(QObject* pWidget)
{
    return QAccessible::queryAccessibleInterface(pWidget);
}

/** The name that a screen reader gives a widget. */
inline QString NameHeard(QObject* pWidget) { return Heard(pWidget)->text(QAccessible::Name); }
