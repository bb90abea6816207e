#include "files/CFileName.h"
#include "files/CFileNameCodec.h"

QByteArray CFileName::Encode(const QString& strName) { return CFileNameCodec::ToBytes(strName); }

QString CFileName::Decode(const QByteArray& baName) { return CFileNameCodec::FromBytes(baName); }
