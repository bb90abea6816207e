#include "standin/CFakeSys.h"

/** Text of a relative link from a device's folder to an entry of the root. */
static QString UpFrom(const QString& strPath, const QString& strTarget)
{
    const int nLevels = strPath.count(QLatin1Char('/')) + 2;
    return QStringLiteral("../").repeated(nLevels) + strTarget;
}

static QString Name(const QString& strPath) { return strPath.mid(strPath.lastIndexOf(QLatin1Char('/')) + 1); }

CFakeSys::CFakeSys()
{
    m_tree.MkDir(QStringLiteral("class/block"));
    m_tree.MkDir(QStringLiteral("dev/block"));
}

void CFakeSys::Device(const QString& strPath, const QString& strSubsystem)
{
    m_tree.MkDir(QStringLiteral("bus/") + strSubsystem);
    m_tree.MkDir(QStringLiteral("devices/") + strPath);
    m_tree.Link(QStringLiteral("devices/") + strPath + QStringLiteral("/subsystem"),
                UpFrom(strPath, QStringLiteral("bus/") + strSubsystem));
}

void CFakeSys::Disk(const QString& strPath, const QString& strNumber, qint64 nSectors, bool bRemovable)
{
    Block(strPath, strNumber, nSectors);
    m_tree.Write(QStringLiteral("devices/") + strPath + QStringLiteral("/removable"),
                 bRemovable ? "1\n" : "0\n");
}

void CFakeSys::Partition(const QString& strPath, const QString& strNumber, qint64 nSectors)
{
    Block(strPath, strNumber, nSectors);
    m_tree.Write(QStringLiteral("devices/") + strPath + QStringLiteral("/partition"), "1\n");
}

void CFakeSys::Slave(const QString& strPath, const QString& strSlavePath)
{
    const QString strFolder = strPath + QStringLiteral("/slaves");
    m_tree.MkDir(QStringLiteral("devices/") + strFolder);
    m_tree.Link(QStringLiteral("devices/") + strFolder + QLatin1Char('/') + Name(strSlavePath),
                UpFrom(strFolder, QStringLiteral("devices/") + strSlavePath));
}

void CFakeSys::MapperName(const QString& strPath, const QString& strName)
{
    m_tree.Write(QStringLiteral("devices/") + strPath + QStringLiteral("/dm/name"), strName.toUtf8() + '\n');
}

void CFakeSys::UsbStick(const QString& strName, int nMinor)
{
    const QString strUsb = QStringLiteral("pci0000:00/0000:00:14.0/usb1/1-%1").arg(nMinor);
    const QString strScsi = strUsb + QStringLiteral("/1-1:1.0/host9/target9:0:0/9:0:0:0");
    Device(strUsb, QStringLiteral("usb"));
    Device(strScsi, QStringLiteral("scsi"));
    const QString strDisk = strScsi + QStringLiteral("/block/") + strName;
    Disk(strDisk, QStringLiteral("8:%1").arg(nMinor), 4096, true);
    Partition(strDisk + QLatin1Char('/') + strName + QLatin1Char('1'), QStringLiteral("8:%1").arg(nMinor + 1),
              2048);
}

QString CFakeSys::Root() const { return m_tree.Path(); }

QString CFakeSys::Path(const QString& strPath) const
{
    return m_tree.Path(QStringLiteral("devices/") + strPath);
}

void CFakeSys::Block(const QString& strPath, const QString& strNumber, qint64 nSectors)
{
    Device(strPath, QStringLiteral("block"));
    const QString strFolder = QStringLiteral("devices/") + strPath;
    m_tree.Write(strFolder + QStringLiteral("/dev"), strNumber.toLatin1() + '\n');
    m_tree.Write(strFolder + QStringLiteral("/size"), QByteArray::number(nSectors) + '\n');
    m_tree.Link(QStringLiteral("class/block/") + Name(strPath), QStringLiteral("../../") + strFolder);
    m_tree.Link(QStringLiteral("dev/block/") + strNumber, QStringLiteral("../../") + strFolder);
}
