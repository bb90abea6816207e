#pragma once

#include "kit/CClickableLabel.h"

/**
 * A label of one line that draws a text too long for it with dots in the middle.
 *
 * text() always is the whole text, and a tool tip shows it while it is
 * shortened. The text is taken as plain text whatever it holds, and its length
 * never changes the size of the label. GUI thread only.
 */
class CElidedLabel : public CClickableLabel
{
    Q_OBJECT

public:
    explicit CElidedLabel(QWidget* parent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());

    /** What is drawn at the present width. */
    QString ShownText() const;

    /** A name as a tool tip: marks of HTML in it are shown, not obeyed, and a long one wraps. Any thread. */
    static QString ToolTipText(const QString& strName);

    /** The text with a blank for each line break, tab or other control character. Any thread. */
    static QString OneLine(QString strText);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
};
