#include "ask/CChoiceButton.h"

#include "kit/SkinFont.h"

#include <QLabel>
#include <QVBoxLayout>

static const QMargins CHOICE_MARGINS(18, 14, 18, 14);
static const int CHOICE_SPACING = 4;

static QLabel* ChoiceLine(const QString& strText, CSkinMgr::FontStyle enFont, CSkinMgr::ColorStyle enColor)
{
    auto* pLabel = new QLabel(strText);
    pLabel->setTextFormat(Qt::PlainText);
    pLabel->setWordWrap(true);
    pLabel->setFont(SkinFont(enFont));
    pLabel->setStyleSheet(CSkinMgr::GetColorStyle(enColor) + QStringLiteral("background-color:transparent;"));
    // The press is the button's.
    pLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    return pLabel;
}

CChoiceButton::CChoiceButton(const QString& strTitle, const QString& strMeaning, QWidget* pParent)
    : QPushButton(pParent)
{
    setObjectName(QStringLiteral("choiceBtn"));
    setAccessibleName(strTitle);
    setAccessibleDescription(strMeaning);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(CHOICE_MARGINS);
    pLayout->setSpacing(CHOICE_SPACING);
    pLayout->addWidget(ChoiceLine(strTitle, CSkinMgr::FONT_STYLE_PX_16_BOLD, CSkinMgr::COLOR_STYLE_GREY_72));
    pLayout->addWidget(ChoiceLine(strMeaning, CSkinMgr::FONT_STYLE_PX_14, CSkinMgr::COLOR_STYLE_GREY_88));
}

QSize CChoiceButton::sizeHint() const { return layout()->sizeHint(); }

QSize CChoiceButton::minimumSizeHint() const { return layout()->minimumSize(); }

bool CChoiceButton::hasHeightForWidth() const { return true; }

int CChoiceButton::heightForWidth(int nWidth) const { return layout()->heightForWidth(nWidth); }
