#include "files/CFileName.h"

#include <QFile>

// The program's own codec of file names is asked, once it is installed.

QByteArray CFileName::Encode(const QString& strName) { return QFile::encodeName(strName); }

QString CFileName::Decode(const QByteArray& baName) { return QFile::decodeName(baName); }
