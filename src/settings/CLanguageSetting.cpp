#include "settings/CLanguageSetting.h"

#include "settings/CSystemLanguages.h"
#include "settings/CTranslationFile.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QLocale>
#include <QTranslator>

namespace {

/** A translator that owns the bytes that it works on. */
class CKeptTranslator : public QTranslator
{
public:
    /** Loads the file; one that is damaged is left alone, with a line. */
    void Load(const QString& strPath);

private:
    QByteArray m_baFile;
};

} // namespace

void CKeptTranslator::Load(const QString& strPath)
{
    const std::optional<QByteArray> baFile = CTranslationFile::Read(strPath);
    const std::optional<QString> strDamage
        = baFile ? CTranslationFile::Damage(*baFile) : QStringLiteral("it cannot be read");
    if (strDamage) {
        qWarning().noquote() << QStringLiteral("Translation not used, %1: \"%2\"").arg(*strDamage, strPath);
        return;
    }
    m_baFile = *baFile;
    load(reinterpret_cast<const uchar*>(m_baFile.constData()), m_baFile.size());
}

CLanguageSetting& CLanguageSetting::GetInstance()
{
    static CLanguageSetting s_setting;
    return s_setting;
}

CLanguageSetting::CLanguageSetting() { InitLanguage(); }

void CLanguageSetting::InitLanguage() { SetLanguage(GetSystemLanguage()); }

QString CLanguageSetting::GetSystemLanguage()
{
    const QStringList listCode = CSystemLanguages::Read();
    const QString strCode = listCode.isEmpty() ? QStringLiteral("English") : listCode.first();
    qDebug().noquote() << "strSystemLanguage" << strCode;
    return LanguageOfCode(strCode);
}

void CLanguageSetting::SetLanguage(QString strName)
{
    if (strName.isEmpty()) {
        strName = QStringLiteral("English");
    }
    const QString strFolder = QCoreApplication::applicationDirPath();
    QString strPath
        = strFolder + QStringLiteral("/Language/TarnwickMacPE_") + strName + QStringLiteral(".qm");
    qDebug().noquote() << "strSystemLanguage" << strPath;
    if (!QFile::exists(strPath)) {
        // No slash before "Language" and no prefix in the name are kept so: docs/behaviour.md.
        strPath = strFolder + QStringLiteral("Language/English.qm");
        if (!QFile::exists(strPath)) {
            return;
        }
    }
    // Never freed: the texts of the whole run come from it. A file that does not
    // load is installed as well and translates nothing.
    auto* pTranslator = new CKeptTranslator;
    pTranslator->Load(strPath);
    QCoreApplication::installTranslator(pTranslator);
    // Numbers and dates in the texts follow their language, not the system's region.
    if (!pTranslator->language().isEmpty()) {
        QLocale::setDefault(QLocale(pTranslator->language()));
    }
}

QString CLanguageSetting::LanguageOfCode(const QString& strCode)
{
    static const struct
    {
        QLatin1String strCode;
        QLatin1String strName;
    } s_languages[] = {
        {QLatin1String("zh"), QLatin1String("Chinese")},    {QLatin1String("es"), QLatin1String("Spanish")},
        {QLatin1String("it"), QLatin1String("Italian")},    {QLatin1String("fr"), QLatin1String("French")},
        {QLatin1String("ja"), QLatin1String("Japanese")},   {QLatin1String("nl"), QLatin1String("Dutch")},
        {QLatin1String("pt"), QLatin1String("Portuguese")}, {QLatin1String("de"), QLatin1String("German")},
    };
    // Traditional Chinese is told by its script, wherever that stands in the code.
    if (strCode.contains(QLatin1String("zh")) && strCode.contains(QLatin1String("Hant"))) {
        return QStringLiteral("ChineseTW");
    }
    for (const auto& language : s_languages) {
        if (strCode.leftRef(2) == language.strCode) {
            return language.strName;
        }
    }
    return QStringLiteral("English");
}
