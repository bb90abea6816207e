#pragma once

#include <QStyledItemDelegate>

class QCheckBox;

/**
 * Draws a row of the source tree (check box, icon, name) and ticks it when the
 * box is pressed. GUI thread only.
 */
class CDirDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /** No row is narrower than this, in pixels. */
    static constexpr int LEAST_WIDTH = 450;

    explicit CDirDelegate(QObject* parent = nullptr);
    ~CDirDelegate() override;

    /** What a press or a key makes of a tick, a Qt::CheckState: checked, and of checked unchecked. */
    static Qt::CheckState NextState(int nState);

    void paint(QPainter* pPainter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /** The base size, at least 450 pixels wide. */
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /** A press or double click on the box ticks or unticks the row; true when it did. */
    bool editorEvent(QEvent* pEvent, QAbstractItemModel* pModel, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

    /** Shows the full path of a row of the tree as its tool tip, as plain text, and what is wrong with it. */
    bool helpEvent(QHelpEvent* pEvent, QAbstractItemView* pView, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /** The name on one line, whatever line breaks it holds. */
    QString displayText(const QVariant& value, const QLocale& locale) const override;

private:
    QCheckBox* m_pCheckBox; // never shown; what it looks like is drawn into the rows
};
