#include "tree/CNodeFileInfo.h"

CNodeFileInfo::CNodeFileInfo(const QFileInfo& info)
    : m_pPlace(new STPlace{QString(), QString(), std::make_unique<QFileInfo>(info)})
{
}

CNodeFileInfo::CNodeFileInfo(const QString& strFolder, const QString& strName)
    : m_pPlace(new STPlace{strFolder, strName, nullptr})
{
}

CNodeFileInfo::CNodeFileInfo(const CNodeFileInfo& other) { *this = other; }

CNodeFileInfo& CNodeFileInfo::operator=(const CNodeFileInfo& other)
{
    if (!other.m_pPlace) {
        m_pPlace.reset();
    } else if (other.m_pPlace->pGiven) {
        *this = *other.m_pPlace->pGiven;
    } else {
        *this = CNodeFileInfo(other.m_pPlace->strFolder, other.m_pPlace->strName);
    }
    return *this;
}

CNodeFileInfo& CNodeFileInfo::operator=(const QFileInfo& info) { return *this = CNodeFileInfo(info); }

void CNodeFileInfo::refresh()
{
    if (m_pPlace && m_pPlace->pGiven) {
        m_pPlace->pGiven->refresh();
    }
}

bool CNodeFileInfo::makeAbsolute()
{
    QFileInfo info = Info();
    const bool bChanged = info.makeAbsolute();
    if (bChanged) {
        *this = info;
    }
    return bChanged;
}

QString CNodeFileInfo::filePath() const
{
    if (!m_pPlace) {
        return QString();
    }
    return m_pPlace->pGiven ? m_pPlace->pGiven->filePath() : m_pPlace->strFolder + m_pPlace->strName;
}

QString CNodeFileInfo::fileName() const
{
    if (!m_pPlace) {
        return QString();
    }
    return m_pPlace->pGiven ? m_pPlace->pGiven->fileName() : m_pPlace->strName;
}

QFileInfo CNodeFileInfo::Info() const
{
    if (!m_pPlace) {
        return QFileInfo();
    }
    return m_pPlace->pGiven ? *m_pPlace->pGiven : QFileInfo(m_pPlace->strFolder + m_pPlace->strName);
}
