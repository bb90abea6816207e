#pragma once

#include <QFrame>

class CLinkButton;
class QLabel;

/** What a detail is to its reader. */
enum class ENDetail
{
    PLAIN, ///< a word beside the message
    GOOD, ///< all is well
    WARNING ///< something is missing: nobody is to take it for success
};

/**
 * The second text of a message box, below its message: a sign by its kind, some
 * lines of plain text, and a link when there is one. It is as large as these need.
 * GUI thread only.
 */
class CBoxDetail : public QFrame
{
    Q_OBJECT

public:
    /** Makes a detail that is hidden, since it says nothing. */
    explicit CBoxDetail(QWidget* parent = nullptr);

    /** Shows that text, as plain text; an empty one hides the whole detail. */
    void SetText(const QString& strText, ENDetail enKind);

    /** Shows a link of that text below; an empty one hides it. */
    void SetLink(const QString& strText);

    /** The text as last set. */
    QString Text() const;

    /** The kind as last set. */
    ENDetail Kind() const;

    /** The control of the link, hidden or not. */
    QWidget* Link() const;

signals:
    /** The user has chosen the link. */
    void SignalLink();

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    void Fit();
    void FitText();
    void PaintWarning(QPainter& painter, const QRectF& rect) const;
    void PaintTick(QPainter& painter, const QRectF& rect) const;

    ENDetail m_enKind = ENDetail::PLAIN;
    QLabel* m_pText = nullptr;
    CLinkButton* m_pLink = nullptr;
};
