#include "flow/CReadAhead.h"

CReadAhead::CReadAhead() = default;

CReadAhead::~CReadAhead() = default;

bool CReadAhead::WantsMore() const { return false; }

void CReadAhead::Expect(const QVector<STExpectedFile>& /*listFile*/) { }

void CReadAhead::SourceOpened(const QString& /*strPath*/, int /*nDescriptor*/) { }

void CReadAhead::SourceRead(qint64 /*nResult*/, qint64 /*nUs*/) { }
