#pragma once

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QString>

#include <memory>

/**
 * The QFileInfo of a node, without what a QFileInfo costs: of a listed entry it
 * keeps its own name and the path of its folder, which it shares with the others in
 * there. Whatever is asked beyond that a QFileInfo is made for, so each function
 * says what QFileInfo's says, and what is read from the disk is read anew at each
 * call. One that was given is kept, with what it has read already.
 *
 * A copy, and the QFileInfo that it turns into, need nothing of the node.
 */
class CNodeFileInfo
{
public:
    /** Of no file, as QFileInfo(). */
    CNodeFileInfo() = default;

    /** Keeps `info` itself. */
    explicit CNodeFileInfo(const QFileInfo& info);

    /** The entry `strName` of a folder whose path ends in a separator. Reads nothing. */
    CNodeFileInfo(const QString& strFolder, const QString& strName);

    ~CNodeFileInfo() = default;
    CNodeFileInfo(const CNodeFileInfo& other);
    CNodeFileInfo(CNodeFileInfo&& other) noexcept = default;
    CNodeFileInfo& operator=(const CNodeFileInfo& other);
    CNodeFileInfo& operator=(CNodeFileInfo&& other) noexcept = default;
    CNodeFileInfo& operator=(const QFileInfo& info);

    /** A QFileInfo of its own; of one that was given, that one. */
    operator QFileInfo() const { return Info(); }

    bool operator==(const QFileInfo& other) const { return Info() == other; }
    bool operator!=(const QFileInfo& other) const { return Info() != other; }

    void setFile(const QString& strPath) { *this = QFileInfo(strPath); }
    void setFile(const QDir& dir, const QString& strPath) { *this = QFileInfo(dir, strPath); }
    bool makeAbsolute();
    void refresh();

    QString filePath() const;
    QString fileName() const;

    QString absoluteFilePath() const { return Info().absoluteFilePath(); }
    QString canonicalFilePath() const { return Info().canonicalFilePath(); }
    QString path() const { return Info().path(); }
    QString absolutePath() const { return Info().absolutePath(); }
    QString canonicalPath() const { return Info().canonicalPath(); }
    QDir dir() const { return Info().dir(); }
    QDir absoluteDir() const { return Info().absoluteDir(); }
    QString baseName() const { return Info().baseName(); }
    QString completeBaseName() const { return Info().completeBaseName(); }
    QString suffix() const { return Info().suffix(); }
    QString completeSuffix() const { return Info().completeSuffix(); }
    QString bundleName() const { return Info().bundleName(); }
    bool isNativePath() const { return Info().isNativePath(); }
    bool isRelative() const { return Info().isRelative(); }
    bool isAbsolute() const { return Info().isAbsolute(); }
    bool isRoot() const { return Info().isRoot(); }

    bool exists() const { return Info().exists(); }
    bool isFile() const { return Info().isFile(); }
    bool isDir() const { return Info().isDir(); }
    bool isSymLink() const { return Info().isSymLink(); }
    bool isSymbolicLink() const { return Info().isSymbolicLink(); }
    bool isShortcut() const { return Info().isShortcut(); }
    bool isJunction() const { return Info().isJunction(); }
    QString symLinkTarget() const { return Info().symLinkTarget(); }
    bool isHidden() const { return Info().isHidden(); }
    bool isBundle() const { return Info().isBundle(); }
    bool isReadable() const { return Info().isReadable(); }
    bool isWritable() const { return Info().isWritable(); }
    bool isExecutable() const { return Info().isExecutable(); }
    QFile::Permissions permissions() const { return Info().permissions(); }
    bool permission(QFile::Permissions permissions) const { return Info().permission(permissions); }
    QString owner() const { return Info().owner(); }
    uint ownerId() const { return Info().ownerId(); }
    QString group() const { return Info().group(); }
    uint groupId() const { return Info().groupId(); }
    qint64 size() const { return Info().size(); }
    QDateTime birthTime() const { return Info().birthTime(); }
    QDateTime metadataChangeTime() const { return Info().metadataChangeTime(); }
    QDateTime lastModified() const { return Info().lastModified(); }
    QDateTime lastRead() const { return Info().lastRead(); }
    QDateTime fileTime(QFile::FileTime enTime) const { return Info().fileTime(enTime); }

private:
    /** What is known: either pGiven, or folder and name. */
    struct STPlace
    {
        QString strFolder;
        QString strName;
        std::unique_ptr<QFileInfo> pGiven;
    };

    QFileInfo Info() const;

    std::unique_ptr<STPlace> m_pPlace; // null: of no file
};
