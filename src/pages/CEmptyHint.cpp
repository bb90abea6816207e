#include "pages/CEmptyHint.h"

#include "kit/CSkinMgr.h"
#include "kit/SkinFont.h"

#include <QAbstractItemView>
#include <QEvent>

static const int SIDE_MARGIN = 24;

CEmptyHint::CEmptyHint(const QString& strText, QAbstractItemView* pView)
    : QLabel(strText, pView->viewport())
    , m_pView(pView)
{
    setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    setStyleSheet(CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_120));
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setMargin(SIDE_MARGIN);
    // The view below is to get the pointer, as if nothing lay over it.
    setAttribute(Qt::WA_TransparentForMouseEvents);

    const QAbstractItemModel* pModel = pView->model();
    connect(pModel, &QAbstractItemModel::rowsInserted, this, &CEmptyHint::Follow);
    connect(pModel, &QAbstractItemModel::rowsRemoved, this, &CEmptyHint::Follow);
    connect(pModel, &QAbstractItemModel::modelReset, this, &CEmptyHint::Follow);
    pView->viewport()->installEventFilter(this);
    Follow();
}

bool CEmptyHint::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Resize) {
        Follow();
    }
    return QLabel::eventFilter(pWatched, pEvent);
}

void CEmptyHint::Follow()
{
    setGeometry(m_pView->viewport()->rect());
    // A view that has lent its model away is not empty for that.
    setVisible(m_pView->model() && m_pView->model()->rowCount() == 0);
}
