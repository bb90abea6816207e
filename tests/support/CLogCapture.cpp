#include "support/CLogCapture.h"

#include <QMutexLocker>

static CLogCapture* s_pCapture = nullptr;

CLogCapture::CLogCapture()
{
    s_pCapture = this;
    m_pfnOld = qInstallMessageHandler(&CLogCapture::Handle);
}

CLogCapture::~CLogCapture()
{
    qInstallMessageHandler(m_pfnOld);
    s_pCapture = nullptr;
}

QStringList CLogCapture::Lines() const
{
    const QMutexLocker locker(&m_mutex);
    return m_listLine;
}

bool CLogCapture::Has(const QString& strLine) const { return Lines().contains(strLine); }

bool CLogCapture::HasPart(const QString& strPart) const { return !Lines().filter(strPart).isEmpty(); }

void CLogCapture::Handle(QtMsgType, const QMessageLogContext&, const QString& strLine)
{
    const QMutexLocker locker(&s_pCapture->m_mutex);
    s_pCapture->m_listLine.append(strLine);
}
