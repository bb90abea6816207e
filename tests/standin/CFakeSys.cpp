#include "standin/CFakeSys.h"

/** Text of a relative link from a device's folder to an entry of the root. */
static QString UpFrom(const QString& strPath, const QString& strTarget)
{
    const int nLevels = strPath.count('/') + 2;
    return QString("../").repeated(nLevels) + strTarget;
}

static QString Name(const QString& strPath) { return strPath.mid(strPath.lastIndexOf('/') + 1); }

CFakeSys::CFakeSys()
{
    m_tree.MkDir("class/block");
    m_tree.MkDir("dev/block");
}

void CFakeSys::Device(const QString& strPath, const QString& strSubsystem)
{
    m_tree.MkDir("bus/" + strSubsystem);
    m_tree.MkDir("devices/" + strPath);
    m_tree.Link("devices/" + strPath + "/subsystem", UpFrom(strPath, "bus/" + strSubsystem));
}

void CFakeSys::Disk(const QString& strPath, const QString& strNumber, qint64 nSectors, bool bRemovable)
{
    Block(strPath, strNumber, nSectors);
    m_tree.Write("devices/" + strPath + "/removable", bRemovable ? "1\n" : "0\n");
}

void CFakeSys::Partition(const QString& strPath, const QString& strNumber, qint64 nSectors)
{
    Block(strPath, strNumber, nSectors);
    m_tree.Write("devices/" + strPath + "/partition", "1\n");
}

void CFakeSys::Slave(const QString& strPath, const QString& strSlavePath)
{
    const QString strFolder = strPath + "/slaves";
    m_tree.MkDir("devices/" + strFolder);
    m_tree.Link("devices/" + strFolder + '/' + Name(strSlavePath),
                UpFrom(strFolder, "devices/" + strSlavePath));
}

void CFakeSys::MapperName(const QString& strPath, const QString& strName)
{
    m_tree.Write("devices/" + strPath + "/dm/name", strName.toUtf8() + '\n');
}

void CFakeSys::UsbStick(const QString& strName, int nMinor)
{
    const QString strUsb = QString("pci0000:00/0000:00:14.0/usb1/1-%1").arg(nMinor);
    const QString strScsi = strUsb + "/1-1:1.0/host9/target9:0:0/9:0:0:0";
    Device(strUsb, "usb");
    Device(strScsi, "scsi");
    const QString strDisk = strScsi + "/block/" + strName;
    Disk(strDisk, QString("8:%1").arg(nMinor), 4096, true);
    Partition(strDisk + '/' + strName + '1', QString("8:%1").arg(nMinor + 1), 2048);
}

QString CFakeSys::Root() const { return m_tree.Path(); }

QString CFakeSys::Path(const QString& strPath) const { return m_tree.Path("devices/" + strPath); }

void CFakeSys::Block(const QString& strPath, const QString& strNumber, qint64 nSectors)
{
    Device(strPath, "block");
    const QString strFolder = "devices/" + strPath;
    m_tree.Write(strFolder + "/dev", strNumber.toLatin1() + '\n');
    m_tree.Write(strFolder + "/size", QByteArray::number(nSectors) + '\n');
    m_tree.Link("class/block/" + Name(strPath), "../../" + strFolder);
    m_tree.Link("dev/block/" + strNumber, "../../" + strFolder);
}
