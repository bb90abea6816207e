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

QSet<QString> CMountLook::KeysOf(const QByteArrayList& listPoint) const
{
    QSet<QString> setKey;
    for (const QByteArray& baPoint : listPoint) {
        setKey.insert(KeyOf(baPoint));
    }
    setKey.remove(QString());
    return setKey;
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
    const QSet<QString> setNow = KeysOf(listPoint);
    for (auto it = m_mapKnown.begin(); it != m_mapKnown.end();) {
        if (setNow.contains(it.key())) {
            ++it;
            continue;
        }
        listEvent.append({DISK_EVENT_DISAPPEARED, it.value()});
        m_hashAhead.insert(it.key(), DISK_EVENT_DISAPPEARED);
        m_hashGone.insert(it.key(), ++m_nGone);
        it = m_mapKnown.erase(it);
    }
    for (const QByteArray& baPoint : listPoint) {
        const QString strKey = KeyOf(baPoint);
        if (strKey.isEmpty() || m_mapKnown.contains(strKey)) {
            continue;
        }
        listEvent.append({DISK_EVENT_APPEARED, baPoint});
        m_mapKnown.insert(strKey, baPoint);
        m_hashAhead.insert(strKey, DISK_EVENT_APPEARED);
    }
    return listEvent;
}

bool CMountLook::Hear(ENDiskEventType enType, const QByteArray& baPath)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QString strKey = KeyOf(baPath);
    if (strKey.isEmpty()) {
        return true;
    }
    const auto itAhead = m_hashAhead.constFind(strKey);
    const bool bAhead = itAhead != m_hashAhead.constEnd() && *itAhead == enType;
    m_hashAhead.remove(strKey);
    if (enType == DISK_EVENT_DISAPPEARED) {
        m_mapKnown.remove(strKey);
        m_hashGone.insert(strKey, ++m_nGone);
    } else {
        m_mapKnown.insert(strKey, baPath);
    }
    return !bAhead;
}

bool CMountLook::HasBegun()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_strPrefix.isEmpty();
}

quint64 CMountLook::SearchBegins()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_nGone;
}

void CMountLook::Listed(quint64 nSearch, const QByteArrayList& listPath, const QByteArrayList& listPoint)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QSet<QString> setNow = KeysOf(listPoint);
    for (const QByteArray& baPath : listPath) {
        const QString strKey = KeyOf(baPath);
        if (setNow.contains(strKey) && !m_mapKnown.contains(strKey) && m_hashGone.value(strKey) <= nSearch) {
            m_mapKnown.insert(strKey, baPath);
            m_hashAhead.insert(strKey, DISK_EVENT_APPEARED);
        }
    }
}
