#include "ask/CAskRequest.h"

#include "ask/CKeyboardLayouts.h"

#include <QHash>

#include <functional>

using Setter = std::function<bool(STAskRequest&, const QString&)>;

static std::optional<ENAskScreen> ScreenOf(const QString& strWord)
{
    static const QHash<QString, ENAskScreen> s_screens{
        {QStringLiteral("wait"), ENAskScreen::WAIT},     {QStringLiteral("password"), ENAskScreen::PASSWORD},
        {QStringLiteral("source"), ENAskScreen::SOURCE}, {QStringLiteral("end"), ENAskScreen::END},
        {QStringLiteral("again"), ENAskScreen::AGAIN},   {QStringLiteral("missing"), ENAskScreen::MISSING},
    };
    const auto it = s_screens.find(strWord);
    return it == s_screens.end() ? std::nullopt : std::make_optional(*it);
}

static bool SetKind(STAskRequest& stRequest, const QString& strValue)
{
    static const QHash<QString, ENEncryption> s_kinds{
        {QStringLiteral("LUKS"), ENEncryption::LUKS},
        {QStringLiteral("BitLocker"), ENEncryption::BITLOCKER},
        {QStringLiteral("FileVault"), ENEncryption::FILE_VAULT},
    };
    const auto it = s_kinds.find(strValue);
    if (it == s_kinds.end()) {
        return false;
    }
    stRequest.enKind = *it;
    return true;
}

static bool SetSize(STAskRequest& stRequest, const QString& strValue)
{
    bool bNumber = false;
    stRequest.nSize = strValue.toLongLong(&bNumber);
    return bNumber && stRequest.nSize >= 0;
}

static bool SetTry(STAskRequest& stRequest, const QString& strValue)
{
    bool bNumber = false;
    stRequest.nTry = strValue.toInt(&bNumber);
    return bNumber && stRequest.nTry >= 1 && stRequest.nTry <= CAskRequest::MOST_TRIES;
}

// One that is not in the list is in use all the same: the session has set it.
static bool SetLayout(STAskRequest& stRequest, const QString& strValue)
{
    stRequest.strLayout = strValue;
    return CKeyboardLayouts::IsName(strValue);
}

/** Null for what is no option without a value. */
static bool STAskRequest::*FlagOf(const QString& strOption)
{
    static const QHash<QString, bool STAskRequest::*> s_flags{
        {QStringLiteral("--reads-medium"), &STAskRequest::bReadsMedium},
        {QStringLiteral("--unsaved"), &STAskRequest::bUnsaved},
        {QStringLiteral("--writable"), &STAskRequest::bWritable},
    };
    return s_flags.value(strOption, nullptr);
}

static const QHash<QString, Setter>& Setters()
{
    static const QHash<QString, Setter> s_setters{
        {QStringLiteral("--name"),
         [](STAskRequest& stRequest, const QString& strValue) {
             stRequest.strName = strValue;
             return true;
         }},
        {QStringLiteral("--disk"),
         [](STAskRequest& stRequest, const QString& strValue) {
             stRequest.strDisk = strValue;
             return true;
         }},
        {QStringLiteral("--systems"),
         [](STAskRequest& stRequest, const QString& strValue) {
             stRequest.strSystems = strValue;
             return true;
         }},
        {QStringLiteral("--kind"), &SetKind},
        {QStringLiteral("--size"), &SetSize},
        {QStringLiteral("--try"), &SetTry},
        {QStringLiteral("--layout"), &SetLayout},
    };
    return s_setters;
}

static STParsedRequest Wrong(const QString& strError) { return {std::nullopt, strError}; }

STParsedRequest CAskRequest::Parse(const QStringList& listArgument)
{
    if (listArgument.isEmpty()) {
        return Wrong(QStringLiteral("nothing to ask: wait, password, source, missing, end or again"));
    }
    const std::optional<ENAskScreen> enScreen = ScreenOf(listArgument.first());
    if (!enScreen) {
        return Wrong(QStringLiteral("unknown question: ") + listArgument.first());
    }
    STAskRequest stRequest;
    stRequest.enScreen = *enScreen;
    for (int n = 1; n < listArgument.size(); ++n) {
        const QString& strOption = listArgument.at(n);
        if (bool STAskRequest::*const pFlag = FlagOf(strOption)) {
            stRequest.*pFlag = true;
            continue;
        }
        const auto it = Setters().find(strOption);
        if (it == Setters().end()) {
            return Wrong(QStringLiteral("unknown option: ") + strOption);
        }
        if (++n == listArgument.size()) {
            return Wrong(QStringLiteral("no value for ") + strOption);
        }
        if (!(*it)(stRequest, listArgument.at(n))) {
            return Wrong(QStringLiteral("wrong value for %1: %2").arg(strOption, listArgument.at(n)));
        }
    }
    return {stRequest, QString()};
}
