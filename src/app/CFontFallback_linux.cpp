#include "app/CFontFallback.h"
#include "settings/CSystemLanguages.h"

#include <QApplication>
#include <QFont>

// The size that texts have whose size nobody sets, such as the names in the
// tree: that of a Mac, in pixels.
static const int TEXT_SIZE = 13;

// One family for each way in which the shared characters are written. Of a
// language that asks for none of them, the order here counts.
static const char JAPANESE[] = "Noto Sans CJK JP";
static const char SIMPLIFIED[] = "Noto Sans CJK SC";
static const char TRADITIONAL[] = "Noto Sans CJK TC";
static const char KOREAN[] = "Noto Sans CJK KR";

static const char* FamilyOf(const QString& strLanguage)
{
    if (strLanguage.startsWith(QLatin1String("ja"))) {
        return JAPANESE;
    }
    if (strLanguage.startsWith(QLatin1String("ko"))) {
        return KOREAN;
    }
    if (strLanguage.contains(QLatin1String("Hant"))) {
        return TRADITIONAL;
    }
    return strLanguage.startsWith(QLatin1String("zh")) ? SIMPLIFIED : nullptr;
}

void CFontFallback::Install()
{
    QFont::insertSubstitutions(QStringLiteral("Avenir"), Families(CSystemLanguages::Read()));
    // Each desktop has another size of its own, but the window has one size on all of them.
    QFont font(QStringLiteral("Avenir"));
    font.setPixelSize(TEXT_SIZE);
    QApplication::setFont(font);
}

QStringList CFontFallback::Families(const QStringList& listLanguage)
{
    // Round open letters between geometric and humanist like those of "Avenir";
    // then letters of other scripts, which file names may hold.
    QStringList listFamily{QStringLiteral("Lato"), QStringLiteral("Noto Sans")};
    for (const QString& strLanguage : listLanguage) {
        if (const char* pFamily = FamilyOf(strLanguage)) {
            listFamily.append(QLatin1String(pFamily));
        }
    }
    for (const char* pFamily : {JAPANESE, SIMPLIFIED, TRADITIONAL, KOREAN}) {
        listFamily.append(QLatin1String(pFamily));
    }
    listFamily.removeDuplicates();
    return listFamily;
}
