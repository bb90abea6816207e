#include "ask/CAskPasswordPanel.h"

#include "ask/CAskRequest.h"
#include "ask/CKeyboardBox.h"
#include "ask/CRecoveryKey.h"
#include "kit/SkinColor.h"
#include "kit/SkinFont.h"

#include <QCheckBox>
#include <QColor>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

static const int FIELD_HEIGHT = 40;
static const int BOX_HEIGHT = 32;
static const int ROW_SPACING = 10;

static QString KindText(ENEncryption enKind)
{
    switch (enKind) {
    case ENEncryption::BITLOCKER:
        return CAskPasswordPanel::tr("Locked by Windows (BitLocker)");
    case ENEncryption::FILE_VAULT:
        return CAskPasswordPanel::tr("Locked by macOS (FileVault)");
    default:
        return CAskPasswordPanel::tr("Locked by Linux (LUKS)");
    }
}

static QString HelpText(ENEncryption enKind)
{
    switch (enKind) {
    case ENEncryption::BITLOCKER:
        return CAskPasswordPanel::tr("Type its password or its recovery key of 48 digits.");
    case ENEncryption::FILE_VAULT:
        return CAskPasswordPanel::tr("Type its password: mostly the one with which you log in to your Mac.");
    default:
        return CAskPasswordPanel::tr(
            "Type the password that your computer asks for when it starts, or when you plug this disk in.");
    }
}

static QString MeaningText(bool bWritable)
{
    return bWritable ? CAskPasswordPanel::tr("Then files can be copied to the disk.")
                     : CAskPasswordPanel::tr("Nothing on the disk is changed.");
}

static QLabel* SmallText(const QString& strText)
{
    auto* pLabel = new QLabel(strText);
    pLabel->setTextFormat(Qt::PlainText);
    pLabel->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    pLabel->setStyleSheet(CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_88));
    return pLabel;
}

static QString WarningStyle() { return QStringLiteral("color:%1;").arg(QColor(SkinColor::WARNING).name()); }

CAskPasswordPanel::CAskPasswordPanel(const STAskRequest& stRequest)
    : CAskPanel(tr("This disk needs its password"))
    , m_stRequest(stRequest)
    , m_deadKeys(stRequest.strLayout.startsWith(QLatin1String("us")))
{
    AddDisk(stRequest, KindText(stRequest.enKind));
    if (stRequest.nTry > 1) {
        QLabel* pWrong = AddText(tr("That password did not open the disk. Try %1 of %2.")
                                     .arg(stRequest.nTry)
                                     .arg(CAskRequest::MOST_TRIES));
        pWrong->setObjectName(QStringLiteral("m_pWrongLab"));
        pWrong->setStyleSheet(WarningStyle());
    }
    AddText(HelpText(stRequest.enKind) + '\n' + MeaningText(stRequest.bWritable));
    AddField();
    AddKeyboard();
    AddAnswers();
}

QWidget* CAskPasswordPanel::FirstFocus() const { return m_pEdit; }

void CAskPasswordPanel::AddField()
{
    m_pEdit = new QLineEdit;
    m_pEdit->setObjectName(QStringLiteral("m_pPasswordEdit"));
    m_pEdit->setAccessibleName(tr("Password"));
    m_pEdit->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_18));
    m_pEdit->setMinimumHeight(FIELD_HEIGHT);
    m_pEdit->setInputMethodHints(Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    m_pEdit->setContextMenuPolicy(Qt::NoContextMenu);
    m_pEdit->installEventFilter(this);
    Body()->addWidget(m_pEdit);

    // Nobody looks over the shoulder at home, and a foreign keyboard gives what one does not expect.
    auto* pShowBox = new QCheckBox(tr("Show what I type"));
    pShowBox->setObjectName(QStringLiteral("m_pShowBox"));
    pShowBox->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    pShowBox->setChecked(true);
    connect(pShowBox, &QCheckBox::toggled, this,
            [this](bool bShow) { m_pEdit->setEchoMode(bShow ? QLineEdit::Normal : QLineEdit::Password); });
    m_pCapsLab = SmallText(tr("Caps Lock is on."));
    m_pCapsLab->setObjectName(QStringLiteral("m_pCapsLab"));
    m_pCapsLab->setStyleSheet(WarningStyle());
    m_pCapsLab->hide();
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(ROW_SPACING);
    pRow->addWidget(pShowBox);
    pRow->addStretch();
    pRow->addWidget(m_pCapsLab);
    Body()->addLayout(pRow);
}

void CAskPasswordPanel::AddKeyboard()
{
    auto* pBox = new CKeyboardBox(m_stRequest.strLayout);
    pBox->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_14));
    pBox->setMinimumHeight(BOX_HEIGHT);
    pBox->setAccessibleName(tr("Keyboard:"));
    connect(pBox, &CKeyboardBox::SignalLayout, this, [this](const QString& strLayout) {
        Answer({STATUS_LAYOUT, strLayout.toUtf8()});
    });
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(ROW_SPACING);
    pRow->addWidget(SmallText(tr("Keyboard:")));
    pRow->addWidget(pBox, 1);
    Body()->addLayout(pRow);
}

void CAskPasswordPanel::AddAnswers()
{
    m_pSkipBtn = AddButton(tr("Skip this disk"), false);
    QPushButton* pUnlockBtn = AddButton(tr("Unlock"), true);
    pUnlockBtn->setEnabled(false);
    connect(m_pEdit, &QLineEdit::textChanged, pUnlockBtn,
            [pUnlockBtn](const QString& strText) { pUnlockBtn->setEnabled(!strText.isEmpty()); });
    connect(pUnlockBtn, &QPushButton::clicked, this, &CAskPasswordPanel::Unlock);
    connect(m_pSkipBtn, &QPushButton::clicked, this, [this] { Answer({STATUS_SKIP, {}}); });
}

void CAskPasswordPanel::Unlock()
{
    QString strTyped = m_pEdit->text();
    if (strTyped.isEmpty()) {
        return;
    }
    if (m_stRequest.enKind == ENEncryption::BITLOCKER) {
        strTyped = CRecoveryKey::Cleaned(strTyped);
    }
    Answer({STATUS_PASSWORD, strTyped.toUtf8()});
}

bool CAskPasswordPanel::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pWatched == m_pEdit && pEvent->type() == QEvent::KeyPress) {
        const auto& eventKey = *static_cast<QKeyEvent*>(pEvent);
        m_caps.Take(eventKey);
        m_pCapsLab->setVisible(m_caps.IsOn());
        if (const std::optional<QString> strTyped = m_deadKeys.Take(eventKey)) {
            m_pEdit->insert(*strTyped);
            return true;
        }
    }
    return CAskPanel::eventFilter(pWatched, pEvent);
}

void CAskPasswordPanel::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bReturn = pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter;
    if (bReturn && m_pEdit->hasFocus()) {
        if (!pEvent->isAutoRepeat()) {
            Unlock();
        }
        return;
    }
    // It leaves nothing out by itself: Return is still needed.
    if (pEvent->key() == Qt::Key_Escape) {
        m_pSkipBtn->setFocus(Qt::OtherFocusReason);
        return;
    }
    CAskPanel::keyPressEvent(pEvent);
}
