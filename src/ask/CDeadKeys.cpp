#include "ask/CDeadKeys.h"

#include <QKeyEvent>

#include <algorithm>
#include <iterator>

namespace {

/** A key, what it puts onto a letter, and what it is without one. */
struct STDeadKey
{
    int nKey = 0; ///< of the toolkit
    ushort nCombining = 0; ///< behind the letter
    ushort nAlone = 0; ///< instead of one
    ushort nTypewriter = 0; ///< instead of one, where the sign has no key of its own
};

}

static const STDeadKey DEAD_KEYS[] = {
    {Qt::Key_Dead_Grave, 0x300, '`', '`'},        {Qt::Key_Dead_Acute, 0x301, 0xB4, '\''},
    {Qt::Key_Dead_Circumflex, 0x302, '^', '^'},   {Qt::Key_Dead_Tilde, 0x303, '~', '~'},
    {Qt::Key_Dead_Macron, 0x304, 0xAF, 0xAF},     {Qt::Key_Dead_Breve, 0x306, 0x2D8, 0x2D8},
    {Qt::Key_Dead_Abovedot, 0x307, 0x2D9, 0x2D9}, {Qt::Key_Dead_Diaeresis, 0x308, 0xA8, '"'},
    {Qt::Key_Dead_Abovering, 0x30A, 0xB0, 0xB0},  {Qt::Key_Dead_Doubleacute, 0x30B, 0x2DD, 0x2DD},
    {Qt::Key_Dead_Caron, 0x30C, 0x2C7, 0x2C7},    {Qt::Key_Dead_Cedilla, 0x327, 0xB8, 0xB8},
    {Qt::Key_Dead_Ogonek, 0x328, 0x2DB, 0x2DB},
};

static const STDeadKey* Find(int nKey)
{
    const auto* pFound = std::find_if(std::begin(DEAD_KEYS), std::end(DEAD_KEYS),
                                      [nKey](const STDeadKey& stKey) { return stKey.nKey == nKey; });
    return pFound == std::end(DEAD_KEYS) ? nullptr : pFound;
}

static bool IsModifier(int nKey)
{
    switch (nKey) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
        return true;
    default:
        return false;
    }
}

CDeadKeys::CDeadKeys(bool bTypewriter)
    : m_bTypewriter(bTypewriter)
{
}

std::optional<QString> CDeadKeys::Take(const QKeyEvent& event)
{
    const STDeadKey* pBefore = Find(m_nWaiting);
    const STDeadKey* pNow = Find(event.key());
    if (IsModifier(event.key()) || (!pBefore && !pNow)) {
        return std::nullopt;
    }
    m_nWaiting = pBefore ? 0 : event.key();
    if (!pBefore) {
        return QString();
    }
    const QString strAlone = QChar(m_bTypewriter ? pBefore->nTypewriter : pBefore->nAlone);
    if (pNow || event.key() == Qt::Key_Space) {
        return strAlone;
    }
    const QString strText = event.text();
    if (strText.isEmpty() || !strText.at(0).isPrint()) {
        // Backspace takes the accent back, the others leave it and do what they do.
        return event.key() == Qt::Key_Backspace ? std::make_optional(QString()) : std::nullopt;
    }
    const QString strBoth = (strText + QChar(pBefore->nCombining)).normalized(QString::NormalizationForm_C);
    return strBoth.size() == strText.size() ? strBoth : strAlone + strText;
}
