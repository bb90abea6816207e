#include "copy/CCloudStandIn.h"

#include <cstring>

// Its bytes are little more than the name of the file, which has 255 at most.
static const qint64 MOST_BYTES = 4096;

static const QLatin1Char BEGIN('.');
static const QLatin1String END(".icloud");
static const char CONTENT[] = {'b', 'p', 'l', 'i', 's', 't', '0', '0'};

QString CCloudStandIn::NameOf(const QString& strName, qint64 nBytes)
{
    const int nName = strName.size() - 1 - END.size();
    const bool bMay = nName > 0 && nBytes <= MOST_BYTES && strName.startsWith(BEGIN) && strName.endsWith(END);
    return bMay ? strName.mid(1, nName) : QString();
}

bool CCloudStandIn::IsOne(const char* pBytes, qint64 nBytes)
{
    return nBytes >= qint64(sizeof(CONTENT)) && std::memcmp(pBytes, CONTENT, sizeof(CONTENT)) == 0;
}
