#include "pages/CDiskSpace.h"

QString CDiskSpace::GigabyteText(qint64 nBytes)
{
    // Single precision, on purpose (docs/behaviour.md): a wider type would make
    // 0.01 of 5,000,000 bytes, which are 0.00 here.
    const float fGigabytes = static_cast<float>(qMax<qint64>(0, nBytes)) / 1e9F;
    return QString::number(static_cast<double>(fGigabytes), 'f', 2);
}
