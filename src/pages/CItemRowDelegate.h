#pragma once

#include <QStyledItemDelegate>

/**
 * Draws an item of a copy's account in two lines: its path, shortened in the
 * middle, and below it the reason and the amount. All of it is plain text.
 * GUI thread only.
 */
class CItemRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    static constexpr int REASON_ROLE = Qt::UserRole; ///< text
    static constexpr int AMOUNT_ROLE = Qt::UserRole + 1; ///< text, may be empty
    static constexpr int NOTE_ROLE = Qt::UserRole + 2; ///< true when the item is whole

    explicit CItemRowDelegate(QObject* parent = nullptr);

    void paint(QPainter* pPainter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
