#pragma once

#include <QObject>
#include <QString>

/**
 * Chooses the language of the interface once, at start, from the system's list
 * of preferred languages, and installs its translation file.
 */
class CLanguageSetting : public QObject
{
    Q_OBJECT

public:
    /**
     * The one instance. The first call creates it, which installs the
     * translation; GUI thread, after the application object, before any text is set.
     */
    static CLanguageSetting& GetInstance();

    /** Installs the translation of the system's language. GUI thread. */
    void InitLanguage();

    /**
     * Name of the system's language, one of the ten that LanguageOfCode() knows.
     * A missing or unreadable preference file gives "English".
     */
    QString GetSystemLanguage();

    /**
     * Installs the translation of the language on top of what is installed, with its way
     * to write numbers and dates; an empty name stands for "English". Without its file nothing is installed
     * and the texts stay English. GUI thread.
     */
    void SetLanguage(QString strName);

    /** Name of the language of a code such as "pt-BR"; "English" when there is none. Any thread. */
    static QString LanguageOfCode(const QString& strCode);

private:
    CLanguageSetting();
};
