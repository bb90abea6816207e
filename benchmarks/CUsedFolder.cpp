#include "CUsedFolder.h"

#include "Measure.h"

#include <QDir>
#include <QFile>
#include <QHash>

#include <cmath>
#include <fcntl.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

static const qint64 KB = 1000;
static const qint64 MB = 1000 * KB;
static const int FILES_OF_FOLDER = 50;

static const quint32 MOST_EXTENTS = 64;

static const int FILES_WITHOUT_GAP = 4;

// So many at a time are given their place on the disk.
static const int BATCH = 25;

static const int HOME_NOTES = 560;
static const int HOME_DOCUMENTS = 190;
static const int HOME_PHOTOS = 50;
static const qint64 HOME_BYTES = 154 * MB;

static QString Folder(const QString& strPath) { return strPath.left(strPath.lastIndexOf('/')); }

static void WriteFile(const QString& strPath, qint64 nSize)
{
    static const QByteArray s_baBlock = [] {
        std::minstd_rand random;
        QByteArray baBlock(MB, 0);
        std::generate(baBlock.begin(), baBlock.end(), [&random] { return char(random()); });
        return baBlock;
    }();
    QFile file(strPath);
    // One that is emptied first is brought to the disk when it is closed, alone.
    bool bDone = file.open(QIODevice::ReadWrite | QIODevice::Unbuffered);
    for (qint64 nLeft = nSize; bDone && nLeft > 0; nLeft -= s_baBlock.size()) {
        const qint64 nPart = qMin<qint64>(nLeft, s_baBlock.size());
        bDone = file.write(s_baBlock.constData(), nPart) == nPart;
    }
    Require(bDone, strPath);
}

namespace {

/** Bytes of the disk, from the first to before the last. */
struct STStretch
{
    quint64 nFrom = 0;
    quint64 nEnd = 0;
};

}

/** Where the file's bytes lie; none on a file system that does not tell. */
static QVector<STStretch> StretchesOf(const QString& strPath)
{
    const int nFile = open(QFile::encodeName(strPath).constData(), O_RDONLY | O_CLOEXEC);
    QByteArray baMap(sizeof(fiemap) + MOST_EXTENTS * sizeof(fiemap_extent), 0);
    fiemap* pMap = reinterpret_cast<fiemap*>(baMap.data());
    pMap->fm_length = FIEMAP_MAX_OFFSET;
    pMap->fm_extent_count = MOST_EXTENTS;
    const bool bTold = ioctl(nFile, FS_IOC_FIEMAP, pMap) == 0;
    close(nFile);
    QVector<STStretch> listStretch;
    for (quint32 nExtent = 0; bTold && nExtent < pMap->fm_mapped_extents; ++nExtent) {
        const fiemap_extent& stExtent = pMap->fm_extents[nExtent];
        listStretch.append({stExtent.fe_physical, stExtent.fe_physical + stExtent.fe_length});
    }
    return listStretch;
}

static void BringToDisk(const QString& strFolder)
{
    const int nFolder = open(QFile::encodeName(strFolder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    Require(nFolder != -1 && syncfs(nFolder) == 0, strFolder);
    close(nFolder);
}

/** Any number of the range, not those of std::uniform_int_distribution, which each library has its own of. */
qint64 CUsedFolder::Random(qint64 nLeast, qint64 nMost)
{
    const double nPart = double(m_random() - std::minstd_rand::min())
        / double(std::minstd_rand::max() - std::minstd_rand::min() + 1.0);
    return nLeast + qint64(nPart * double(nMost - nLeast + 1));
}

void CUsedFolder::AddEvenly(int nFiles, qint64 nLeast, qint64 nMost, const QString& strName)
{
    for (int nFile = 0; nFile < nFiles; ++nFile) {
        Add(strName.arg(nFile / FILES_OF_FOLDER, 3, 10, QLatin1Char('0')).arg(nFile, 4, 10, QLatin1Char('0')),
            Random(nLeast, nMost));
    }
}

CUsedFolder CUsedFolder::Home()
{
    CUsedFolder folder;
    // Most are small, so each size from 500 bytes to 64 kB is as likely as its double.
    for (int nFile = 0; nFile < HOME_NOTES; ++nFile) {
        const double nSize = 500 * std::pow(2.0, double(folder.Random(0, 7000)) / 1000);
        folder.Add(QStringLiteral("Library/Application Support/Program %1/Profiles/Default/item %2.plist")
                       .arg(nFile / 40)
                       .arg(nFile),
                   qint64(nSize));
    }
    folder.AddEvenly(HOME_DOCUMENTS, 64 * KB, 512 * KB, QStringLiteral("Documents/Year %1/letter %2.pdf"));
    for (int nPhoto = 1; nPhoto < HOME_PHOTOS; ++nPhoto) {
        folder.Add(QStringLiteral("Pictures/Holidays/Week %1/IMG_%2.jpg").arg(nPhoto / 10).arg(nPhoto),
                   folder.Random(1500 * KB, 2500 * KB), nPhoto);
    }
    folder.Add(QStringLiteral("Pictures/Holidays/film.mov"), HOME_BYTES - folder.Bytes());
    return folder;
}

CUsedFolder CUsedFolder::Alike(int nFiles, qint64 nSize) { return Between(nFiles, nSize, nSize); }

CUsedFolder CUsedFolder::Between(int nFiles, qint64 nLeast, qint64 nMost)
{
    CUsedFolder folder;
    folder.AddEvenly(nFiles, nLeast, nMost, QStringLiteral("Folder %1/document %2.txt"));
    return folder;
}

/** Any order of the folders, and of the files within each. */
QVector<CUsedFolder::STFile> CUsedFolder::Shuffled()
{
    QVector<STFile> listFile = m_listFile;
    for (int nFile = listFile.size() - 1; nFile > 0; --nFile) {
        listFile.swapItemsAt(nFile, int(Random(0, nFile)));
    }
    QHash<QString, int> mapTurn;
    for (const STFile& stFile : qAsConst(listFile)) {
        mapTurn.insert(Folder(stFile.strPath), mapTurn.value(Folder(stFile.strPath), mapTurn.size()));
    }
    std::stable_sort(listFile.begin(), listFile.end(), [&](const STFile& stOne, const STFile& stOther) {
        const int nOne = mapTurn.value(Folder(stOne.strPath));
        const int nOther = mapTurn.value(Folder(stOther.strPath));
        return nOne < nOther || (nOne == nOther && stOne.nImported < stOther.nImported);
    });
    return listFile;
}

qint64 CUsedFolder::Bytes() const
{
    qint64 nBytes = 0;
    for (const STFile& stFile : m_listFile) {
        nBytes += stFile.nSize;
    }
    return nBytes;
}

void CUsedFolder::Make(const QString& strFolder)
{
    for (const STFile& stFile : Shuffled()) {
        const QString strPath = strFolder + '/' + stFile.strPath;
        Require(QDir().mkpath(Folder(strPath)), strPath);
        WriteFile(strPath, 0);
    }
    BringToDisk(strFolder);
    const QVector<STFile> listWritten = Shuffled();
    QStringList listBetween;
    for (int nFile = 0; nFile < listWritten.size(); ++nFile) {
        const QString strPath = strFolder + '/' + listWritten.at(nFile).strPath;
        WriteFile(strPath, listWritten.at(nFile).nSize);
        if (nFile % FILES_WITHOUT_GAP == 0) {
            listBetween.append(strPath + ".old");
            // Of the same size, or it lies elsewhere.
            WriteFile(listBetween.constLast(), listWritten.at(nFile).nSize);
        }
        if (nFile % BATCH == 0) {
            BringToDisk(strFolder);
        }
    }
    BringToDisk(strFolder);
    for (const QString& strBetween : listBetween) {
        Require(QFile::remove(strBetween), strBetween);
    }
    BringToDisk(strFolder);
}

int CUsedFolder::Stretches(const QString& strFolder) const
{
    QVector<STStretch> listAll;
    for (const STFile& stFile : m_listFile) {
        listAll += StretchesOf(strFolder + '/' + stFile.strPath);
    }
    std::sort(listAll.begin(), listAll.end(),
              [](const STStretch& stOne, const STStretch& stOther) { return stOne.nFrom < stOther.nFrom; });
    int nStretches = 0;
    quint64 nEnd = 0;
    for (const STStretch& stEach : listAll) {
        nStretches += stEach.nFrom != nEnd ? 1 : 0;
        nEnd = stEach.nEnd;
    }
    return nStretches;
}
