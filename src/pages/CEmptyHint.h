#pragma once

#include <QLabel>

class QAbstractItemView;

/**
 * What an item view says while it has no rows: one or two lines in its middle,
 * instead of a blank that leaves the user wondering. It follows the view's size
 * and its model by itself. GUI thread only.
 */
class CEmptyHint : public QLabel
{
    Q_OBJECT

public:
    /** Lays itself into the view, which owns it from then on; the view has to have its model already. */
    CEmptyHint(const QString& strText, QAbstractItemView* pView);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Follow();

    QAbstractItemView* m_pView;
};
