#include "kit/KvStyleDialog.h"

#include "kit/CCompositor.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QResizeEvent>
#include <QShowEvent>

KvStyleDialog::KvStyleDialog(QWidget* parent)
    : QDialog(parent)
{
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
                   | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocus(Qt::OtherFocusReason);
}

void KvStyleDialog::showEvent(QShowEvent* pEvent)
{
    // Left alone, a dialog keeps room for a frame, which this one has not, and
    // comes up beside the middle.
    if (!pEvent->spontaneous() && parentWidget()) {
        const QWidget* pWindow = parentWidget()->window();
        const QPoint ptCentre = pWindow->mapToGlobal(pWindow->rect().center());
        move(ptCentre - rect().center());
    }
    ClipToPanel();
    // Every button of a dialog answers Return by default while it has the focus.
    const auto listButton = findChildren<QPushButton*>();
    for (QPushButton* pButton : listButton) {
        pButton->setAutoDefault(false);
        pButton->setDefault(false);
    }
    QDialog::showEvent(pEvent);
}

void KvStyleDialog::resizeEvent(QResizeEvent* pEvent)
{
    ClipToPanel();
    QDialog::resizeEvent(pEvent);
}

// The shadow needs what is behind the dialog to shine through. Where nothing
// does it would be a black frame, so there the dialog ends with its panel. Where
// it cannot even do that it has the shadow on the white that most of the window is.
void KvStyleDialog::ClipToPanel()
{
    if (CCompositor::IsRunning() || !CCompositor::CanClip()) {
        clearMask();
        return;
    }
    setMask(QRegion(KvStyleShadow::Panel(size()).toFillPolygon().toPolygon()));
}

void KvStyleDialog::paintEvent(QPaintEvent* pEvent)
{
    if (!CCompositor::IsRunning()) {
        QPainter(this).fillRect(rect(), Qt::white);
    }
    m_Shadow.Paint(this);
    QWidget::paintEvent(pEvent);
}

void KvStyleDialog::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return;
    default:
        QDialog::keyPressEvent(pEvent);
    }
}

void KvStyleDialog::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton) {
        return;
    }
    setFocus(Qt::OtherFocusReason);
    m_bPressed = true;
    m_ptPress = pEvent->pos();
    pEvent->accept();
}

void KvStyleDialog::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!m_bPressed || pEvent->buttons() == Qt::NoButton) {
        return;
    }
    // The threshold is held against the place where the corner would come to
    // lie, so it matters only right at the screen's corner: elsewhere the
    // dialog follows from the first pixel, as a window without a frame should.
    const QPoint ptNew = pEvent->globalPos() - m_ptPress;
    if (ptNew.manhattanLength() > QApplication::startDragDistance()) {
        move(ptNew);
        // A window manager may have put it elsewhere; go on from there.
        m_ptPress = pEvent->globalPos() - pos();
        repaint();
    }
    pEvent->accept();
}

void KvStyleDialog::mouseReleaseEvent(QMouseEvent* pEvent)
{
    m_bPressed = false;
    pEvent->accept();
}
