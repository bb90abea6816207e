#include "disk/CMountLook.h"

#include "files/CFileName.h"

CMountLook& CMountLook::GetInstance()
{
    static CMountLook s_look;
    return s_look;
}

/** What stands for a volume, whatever way its letters are written; empty for all other paths. */
QString CMountLook::KeyOf(const QByteArray& baPath) const
{
    const QString strPath = CFileName::Decode(baPath);
    const QString strName = strPath.mid(m_strPrefix.size());
    const bool bVolume = !m_strPrefix.isEmpty() && strPath.startsWith(m_strPrefix) && !strName.isEmpty()
        && !strName.contains(QLatin1Char('/')) && !strName.startsWith(QLatin1Char('.'));
    return bVolume ? strName.normalized(QString::NormalizationForm_C) : QString();
}

void CMountLook::Begin(const QByteArray& baFolder, const QByteArrayList& listPoint)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_strPrefix = CFileName::Decode(baFolder) + QLatin1Char('/');
    for (const QByteArray& baPoint : listPoint) {
        m_mapKnown.insert(KeyOf(baPoint), baPoint);
    }
    m_mapKnown.remove(QString());
}

QVector<STDiskEvent> CMountLook::Look(const QByteArrayList& listPoint)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QVector<STDiskEvent> listEvent;
    QSet<QString> setNow;
    for (const QByteArray& baPoint : listPoint) {
        setNow.insert(KeyOf(baPoint));
    }
    for (auto it = m_mapKnown.begin(); it != m_mapKnown.end();) {
        if (setNow.contains(it.key())) {
            ++it;
            continue;
        }
        listEvent.append({DISK_EVENT_DISAPPEARED, it.value()});
        m_hashAhead.insert(it.key(), DISK_EVENT_DISAPPEARED);
        it = m_mapKnown.erase(it);
    }
    for (const QByteArray& baPoint : listPoint) {
        const QString strKey = KeyOf(baPoint);
        if (strKey.isEmpty() || m_mapKnown.contains(strKey)) {
            continue;
        }
        if (!m_setListed.contains(strKey)) {
            listEvent.append({DISK_EVENT_APPEARED, baPoint});
        }
        m_mapKnown.insert(strKey, baPoint);
        m_hashAhead.insert(strKey, DISK_EVENT_APPEARED);
    }
    m_setListed.clear();
    return listEvent;
}

bool CMountLook::Hear(ENDiskEventType enType, const QByteArray& baPath)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QString strKey = KeyOf(baPath);
    if (strKey.isEmpty()) {
        return true;
    }
    const bool bListed = m_setListed.remove(strKey) && !m_mapKnown.contains(strKey);
    const auto itAhead = m_hashAhead.constFind(strKey);
    const bool bAhead = itAhead != m_hashAhead.constEnd() && *itAhead == enType;
    m_hashAhead.remove(strKey);
    if (enType == DISK_EVENT_DISAPPEARED) {
        m_mapKnown.remove(strKey);
        return !bAhead;
    }
    m_mapKnown.insert(strKey, baPath);
    return !bAhead && !bListed;
}

bool CMountLook::HasBegun()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_strPrefix.isEmpty();
}

void CMountLook::Listed(const QByteArray& baPath)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QString strKey = KeyOf(baPath);
    if (!strKey.isEmpty()) {
        m_setListed.insert(strKey);
    }
}
