#include "pages/CLogNotice.h"

#include "log/CLogTarnwick.h"
#include "pages/CNoticeLine.h"

#include <QFileInfo>

CLogNotice::CLogNotice(CNoticeLine* pNotice, QObject* pParent)
    : QObject(pParent)
    , m_pNotice(pNotice)
{
    g_TarnwickLog.SetPlaceWatcher([this] {
        QMetaObject::invokeMethod(
            this, [this] { Update(); }, Qt::QueuedConnection);
    });
    Update();
}

CLogNotice::~CLogNotice() { g_TarnwickLog.SetPlaceWatcher({}); }

void CLogNotice::Update()
{
    const QString strFile = g_TarnwickLog.FallbackFile();
    if (!strFile.isEmpty()) {
        //: The path of a folder.
        m_pNotice->Set(ENNotice::LOG, tr("The log is kept in %1").arg(QFileInfo(strFile).path()));
    } else if (g_TarnwickLog.HasLostLines()) {
        m_pNotice->Set(ENNotice::LOG, tr("The log cannot be written."));
    }
}
