#include "pages/CElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

CElidedLabel::CElidedLabel(QWidget* parent, Qt::WindowFlags f)
    : CClickableLabel(parent, f)
{
    setTextFormat(Qt::PlainText);
}

// A line break or a tab in a name would change the height or the columns of
// the line, so each is drawn as one blank.
QString CElidedLabel::OneLine(QString strText)
{
    for (QChar& ch : strText) {
        if (ch.category() == QChar::Other_Control || ch == QChar::LineSeparator
            || ch == QChar::ParagraphSeparator) {
            ch = QLatin1Char(' ');
        }
    }
    return strText;
}

QString CElidedLabel::ShownText() const
{
    return fontMetrics().elidedText(OneLine(text()), Qt::ElideMiddle, contentsRect().width());
}

// A tool tip takes its text for HTML as soon as it looks like HTML; making it
// HTML ourselves leaves nothing to that guess.
QString CElidedLabel::ToolTipText(const QString& strName)
{
    return QStringLiteral("<p>%1</p>").arg(strName.toHtmlEscaped());
}

QSize CElidedLabel::sizeHint() const { return minimumSizeHint(); }

// The width is the layout's to give: a hint that followed the text would move
// the neighbours with each name.
QSize CElidedLabel::minimumSizeHint() const
{
    const QMargins margins = contentsMargins();
    return QSize(margins.left() + margins.right(), fontMetrics().height() + margins.top() + margins.bottom());
}

bool CElidedLabel::event(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::ToolTip) {
        return CClickableLabel::event(pEvent);
    }
    if (ShownText() == text()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(static_cast<QHelpEvent*>(pEvent)->globalPos(), ToolTipText(text()), this);
    }
    return true;
}

void CElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawFrame(&painter);
    style()->drawItemText(&painter, contentsRect(), int(alignment() | Qt::TextSingleLine), palette(),
                          isEnabled(), ShownText(), foregroundRole());
}
