#include "pages/CSearchWaitView.h"

#include "kit/CDecorationAccess.h"
#include "kit/CSkinPicture.h"
#include "kit/SkinFont.h"
#include "ui_CSearchWaitView.h"

#include <QMovie>

// The widest message that stays on one line, in pixels.
static const int MAX_LINE_WIDTH = 250;

CSearchWaitView::CSearchWaitView(QWidget* parent)
    : KvStyleDialog(parent)
    , m_pForm(std::make_unique<Ui_CSearchWaitView>())
{
    m_pForm->setupUi(this);
    InitView();
    InitData();
}

CSearchWaitView::~CSearchWaitView() = default;

void CSearchWaitView::SetText(const QString& strMessage, const QString& strTitle)
{
    m_pForm->label_text->setText(strMessage);
    setAccessibleName(strMessage);
    m_pForm->label_title->setText(strTitle);
    if (m_pForm->label_text->fontMetrics().horizontalAdvance(strMessage) > MAX_LINE_WIDTH) {
        m_pForm->label_text->setFixedWidth(MAX_LINE_WIDTH);
        m_pForm->label_text->setWordWrap(true);
    }
}

void CSearchWaitView::ChangeGifStatus(bool bStart)
{
    QMovie* pMovie = m_pForm->label_gif->movie();
    if (bStart) {
        pMovie->start();
    } else {
        pMovie->stop();
    }
}

void CSearchWaitView::InitView()
{
    const QFont font = SkinFont(CSkinMgr::FONT_STYLE_PX_14);
    m_pForm->label_text->setFont(font);
    m_pForm->label_title->setFont(font);
    m_pForm->frame_title->hide();
    // The window's title has nothing to do with what is waited for.
    setAccessibleName(m_pForm->label_text->text());
    CDecorationAccess::Mark({m_pForm->label_gif});
}

// The movie has no parent and is never freed: it lives as long as the program,
// like the one dialog that shows it.
void CSearchWaitView::InitData()
{
    auto* pMovie = new QMovie;
    pMovie->setFileName(CSkinPicture::MoviePath(QStringLiteral(":/res/Gif/searching.gif")));
    m_pForm->label_gif->setMovie(pMovie);
}
