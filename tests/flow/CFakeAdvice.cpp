#include "CFakeAdvice.h"

#include <memory>

using Lock = std::lock_guard<std::mutex>;

static std::unique_ptr<CFakeAdvice> s_pFake = std::make_unique<CFakeAdvice>();

/** A copy that shares nothing with the list that a helper goes on filling. */
static QByteArrayList Apart(const QByteArrayList& listPath)
{
    QByteArrayList listApart;
    for (const QByteArray& baPath : listPath) {
        listApart.append(QByteArray(baPath.constData(), baPath.size()));
    }
    return listApart;
}

CFakeAdvice& CFakeAdvice::Get() { return *s_pFake; }

void CFakeAdvice::Reset() { s_pFake = std::make_unique<CFakeAdvice>(); }

void CFakeAdvice::Add(const QByteArray& baPath, const STFile& stFile)
{
    const Lock lock(m_mutex);
    m_mapFile[baPath] = stFile;
}

int CFakeAdvice::OpenForCopy(const QByteArray& baPath)
{
    const Lock lock(m_mutex);
    m_mapOpen[m_nNext] = baPath;
    return m_nNext++;
}

QByteArrayList CFakeAdvice::Asked() const
{
    const Lock lock(m_mutex);
    return Apart(m_listAsked);
}

QByteArrayList CFakeAdvice::AskedFiles() const
{
    const Lock lock(m_mutex);
    return Apart(m_listAskedFile);
}

QByteArrayList CFakeAdvice::Opened() const
{
    const Lock lock(m_mutex);
    return Apart(m_listOpened);
}

QByteArrayList CFakeAdvice::Stopped() const
{
    const Lock lock(m_mutex);
    return Apart(m_listStopped);
}

int CFakeAdvice::HeldOpen() const
{
    const Lock lock(m_mutex);
    return m_nHeld;
}

int CFakeAdvice::Calls() const
{
    const Lock lock(m_mutex);
    return m_nCalls;
}

STSourceDisk CReadAdvice::DiskOf(quint64 nDevice) { return s_pFake->m_mapDisk.value(nDevice); }

STSourceFile CReadAdvice::Open(const QByteArray& baPath, quint64 nDevice)
{
    CFakeAdvice& fake = *s_pFake;
    const Lock lock(fake.m_mutex);
    ++fake.m_nCalls;
    fake.m_listOpened.append(baPath);
    const CFakeAdvice::STFile stFile = fake.m_mapFile.value(baPath, {0});
    STSourceFile stOpen;
    stOpen.nError = stFile.nError;
    stOpen.nDevice = stFile.nDevice;
    if (stFile.nError == 0 && stFile.nSize > 0 && stFile.nDevice == nDevice) {
        ++fake.m_nHeld;
        fake.m_mapOpen[fake.m_nNext] = baPath;
        stOpen = {fake.m_nNext++, 0, stFile.nDevice, 0, stFile.nSize};
    }
    return stOpen;
}

STSourceFolder CReadAdvice::List(const QByteArray& baPath, quint64 nDevice, int /*nMost*/)
{
    const Lock lock(s_pFake->m_mutex);
    ++s_pFake->m_nCalls;
    const CFakeAdvice::STFolder stFolder = s_pFake->m_mapFolder.value(baPath);
    if (stFolder.nError == 0 && stFolder.nDevice != nDevice) {
        return {0, {}, {}, true};
    }
    return {stFolder.nError, stFolder.listFile, stFolder.listFolder, stFolder.bWhole};
}

void CReadAdvice::Close(int nDescriptor)
{
    const Lock lock(s_pFake->m_mutex);
    s_pFake->m_nHeld -= s_pFake->m_mapOpen.remove(nDescriptor);
}

quint64 CReadAdvice::PlaceOf(const STSourceFile& stFile)
{
    const Lock lock(s_pFake->m_mutex);
    return s_pFake->m_mapFile.value(s_pFake->m_mapOpen.value(stFile.nDescriptor)).nPlace;
}

bool CReadAdvice::WillNeed(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    CFakeAdvice& fake = *s_pFake;
    QByteArray baPath;
    {
        const Lock lock(fake.m_mutex);
        ++fake.m_nCalls;
        baPath = fake.m_mapOpen.value(nDescriptor);
    }
    if (fake.m_fnAsk) {
        fake.m_fnAsk(baPath);
    }
    const Lock lock(fake.m_mutex);
    fake.m_listAsked.append(baPath + ' ' + QByteArray::number(nFrom) + '-'
                            + QByteArray::number(nFrom + nBytes));
    if (nFrom == 0) {
        fake.m_listAskedFile.append(baPath);
    }
    return fake.m_bTakesAdvice;
}

ENThere CReadAdvice::IsThere(int nDescriptor, qint64 /*nFrom*/)
{
    const Lock lock(s_pFake->m_mutex);
    const QByteArray baPath = s_pFake->m_mapOpen.value(nDescriptor);
    const bool bAsked = s_pFake->m_listAskedFile.contains(baPath);
    if (s_pFake->m_fnIsThere) {
        return s_pFake->m_fnIsThere(baPath, bAsked);
    }
    return bAsked ? ENThere::YES : ENThere::NO;
}

void CReadAdvice::StopReadAhead(int nDescriptor)
{
    const Lock lock(s_pFake->m_mutex);
    s_pFake->m_listStopped.append(s_pFake->m_mapOpen.value(nDescriptor));
}

qint64 CReadAdvice::FreeMemory() { return s_pFake->m_nFreeMemory; }
