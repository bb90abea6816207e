#include "support/CTempTree.h"

#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

static void Require(bool bDone, const QString& strWhat)
{
    if (!bDone) {
        qFatal("fixture failed: %s", qPrintable(strWhat));
    }
}

CTempTree::CTempTree() { Require(m_dir.isValid(), m_dir.errorString()); }

QString CTempTree::Path(const QString& strRelative) const
{
    return strRelative.isEmpty() ? m_dir.path() : m_dir.path() + '/' + strRelative;
}

QString CTempTree::Write(const QString& strRelative, const QByteArray& baContent)
{
    const QString strPath = Path(strRelative);
    WriteFile(strPath, baContent);
    return strPath;
}

void CTempTree::Fill(const QStringList& listEntry)
{
    for (const QString& strEntry : listEntry) {
        strEntry.endsWith('/') ? MkDir(strEntry) : Write(strEntry);
    }
}

void CTempTree::FillNumbered(const QString& strPattern, int nFirst, int nLast)
{
    for (int i = nFirst; i <= nLast; ++i) {
        Write(strPattern.arg(i));
    }
}

QString CTempTree::MkDir(const QString& strRelative)
{
    const QString strPath = Path(strRelative);
    Require(QDir().mkpath(strPath), strPath);
    return strPath;
}

QString CTempTree::Link(const QString& strRelative, const QString& strTarget)
{
    const QString strPath = Path(strRelative);
    Require(QDir().mkpath(QFileInfo(strPath).path()), strPath);
    Require(symlink(QFile::encodeName(strTarget).constData(), QFile::encodeName(strPath).constData()) == 0,
            strPath);
    return strPath;
}

void CTempTree::WriteBytesName(const QByteArray& baName, const QByteArray& baContent)
{
    const QByteArray baPath = QFile::encodeName(m_dir.path()) + '/' + baName;
    FILE* pFile = fopen(baPath.constData(), "wb");
    Require(pFile != nullptr, QString::fromLatin1(baPath));
    const bool bWritten
        = fwrite(baContent.constData(), 1, size_t(baContent.size()), pFile) == size_t(baContent.size());
    Require(fclose(pFile) == 0 && bWritten, QString::fromLatin1(baPath));
}

QByteArray CTempTree::Read(const QString& strRelative) const { return Content(Path(strRelative)); }

bool CTempTree::Has(const QString& strRelative) const
{
    const QFileInfo info(Path(strRelative));
    return info.exists() || info.isSymLink();
}
