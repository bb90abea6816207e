#include "ask/CKeyboardLayouts.h"

#include <QRegularExpression>

static STKeyboardLayout Layout(const char* pCode, const char* pName)
{
    return {QLatin1String(pCode), QString::fromUtf8(pName)};
}

// Layouts of other scripts type no Latin letters, which nearly all passwords have; what
// is typed on them where Latin letters are wanted is "us".
const QVector<STKeyboardLayout>& CKeyboardLayouts::All()
{
    static const QVector<STKeyboardLayout> s_layouts{
        Layout("cz", "Čeština"),
        Layout("dk", "Dansk"),
        Layout("de", "Deutsch"),
        Layout("de(mac)", "Deutsch (Mac)"),
        Layout("ch", "Deutsch (Schweiz)"),
        Layout("ee", "Eesti"),
        Layout("us", "English (US)"),
        Layout("us(intl)", "English (US, international)"),
        Layout("us(dvorak)", "English (US, Dvorak)"),
        Layout("gb", "English (UK)"),
        Layout("gb(mac)", "English (UK, Mac)"),
        Layout("es", "Español"),
        Layout("latam", "Español (Latinoamérica)"),
        Layout("fr", "Français"),
        Layout("fr(mac)", "Français (Mac)"),
        Layout("be", "Français / Nederlands (België)"),
        Layout("ca", "Français (Canada)"),
        Layout("ch(fr)", "Français (Suisse)"),
        Layout("hr", "Hrvatski"),
        Layout("is", "Íslenska"),
        Layout("it", "Italiano"),
        Layout("it(mac)", "Italiano (Mac)"),
        Layout("hu", "Magyar"),
        Layout("nl", "Nederlands"),
        Layout("no", "Norsk"),
        Layout("pl", "Polski"),
        Layout("pt", "Português"),
        Layout("br", "Português (Brasil)"),
        Layout("ro", "Română"),
        Layout("sk", "Slovenčina"),
        Layout("si", "Slovenščina"),
        Layout("fi", "Suomi"),
        Layout("se", "Svenska"),
        Layout("tr", "Türkçe"),
        Layout("jp", "日本語"),
        Layout("jp(mac)", "日本語 (Mac)"),
        Layout("cn", "中文 (简体)"),
        Layout("tw", "中文 (繁體)"),
        Layout("kr", "한국어"),
    };
    return s_layouts;
}

bool CKeyboardLayouts::IsName(const QString& strCode)
{
    static const QRegularExpression s_name(QStringLiteral("^[a-z]+(\\([a-zA-Z0-9_-]+\\))?\\z"));
    return s_name.match(strCode).hasMatch();
}
