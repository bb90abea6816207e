#include "app/CMessageRelay.h"

#include "log/CLogTarnwick.h"

#include <QString>

static QtMessageHandler s_pfnBefore = nullptr;

static void Relay(QtMsgType enType, const QMessageLogContext& context, const QString& strText)
{
    if (s_pfnBefore) {
        s_pfnBefore(enType, context, strText);
    }
    static thread_local bool s_bLogging = false;
    if (s_bLogging) {
        return;
    }
    s_bLogging = true;
    QString strLine = strText;
    // A file name may hold line breaks; one message stays one line.
    strLine.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    g_TarnwickLog.LogExt(strLine);
    s_bLogging = false;
}

void CMessageRelay::Install() { s_pfnBefore = qInstallMessageHandler(&Relay); }
