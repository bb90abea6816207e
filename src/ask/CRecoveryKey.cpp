#include "ask/CRecoveryKey.h"

static const int GROUP = 6;
static const int DIGITS = 48;

static bool IsBetween(QChar ch)
{
    return ch.isSpace() || ch.category() == QChar::Punctuation_Dash || ch == QChar(0x2212)
        || ch == QLatin1Char('.') || ch == QLatin1Char('_');
}

QString CRecoveryKey::Cleaned(const QString& strTyped)
{
    QString strKey;
    int nDigits = 0;
    for (const QChar ch : strTyped) {
        if (IsBetween(ch)) {
            continue;
        }
        const int nDigit = ch.digitValue();
        if (nDigit < 0 || nDigits == DIGITS) {
            return strTyped;
        }
        if (nDigits > 0 && nDigits % GROUP == 0) {
            strKey += QLatin1Char('-');
        }
        strKey += QLatin1Char(char('0' + nDigit));
        ++nDigits;
    }
    return nDigits == DIGITS ? strKey : strTyped;
}
