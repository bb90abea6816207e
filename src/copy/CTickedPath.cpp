#include "copy/CTickedPath.h"

#include "files/CFileName.h"

#include <utility>

CTickedPath::CTickedPath(std::function<bool()> fnGoesOn)
    : m_fnGoesOn(std::move(fnGoesOn))
{
}

ENPathEnd CTickedPath::GoTo(const STTickedItem& stItem)
{
    m_pFound.reset();
    if (!m_pRoot || m_strVolume != stItem.strVolume) {
        m_pAbove.reset();
        m_strVolume = stItem.strVolume;
        m_pRoot = std::make_unique<CVolumeRoot>(m_strVolume);
    }
    if (m_pRoot->Error() != 0) {
        return ENPathEnd::FAILED;
    }
    const QByteArray baBelow = CFileName::Encode(stItem.strPath.mid(m_strVolume.size()));
    const int nName = baBelow.lastIndexOf('/') + 1;
    if (!m_pAbove || m_baAbove != baBelow.left(nName)) {
        m_baAbove = baBelow.left(nName);
        m_pAbove = std::make_unique<CVolumePath>(*m_pRoot, m_fnGoesOn);
        m_enAbove = m_pAbove->GoTo(m_baAbove);
    }
    if (m_enAbove != ENPathEnd::FOUND) {
        return m_enAbove;
    }
    m_pFound = std::make_unique<CVolumePath>(*m_pRoot, m_pAbove->Folder(), m_fnGoesOn);
    return m_pFound->GoTo(baBelow.mid(nName));
}

int CTickedPath::Error() const
{
    if (m_pRoot->Error() != 0) {
        return m_pRoot->Error();
    }
    return m_pFound ? m_pFound->Error() : m_pAbove->Error();
}
