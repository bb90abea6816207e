#include "copy/CMadeRescue.h"
#include "files/CFileName.h"
#include "macos/CFakeFiles.h"

#include <QTextCodec>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/** What Qt makes of file names on a Mac: it composes what it lists and decomposes what it opens. */
class CMacCodec : public QTextCodec
{
public:
    QByteArray name() const override { return "MacFileNames"; }
    int mibEnum() const override { return 0x6d6163; }

protected:
    QString convertToUnicode(const char* pBytes, int nLength, ConverterState*) const override
    {
        return QString::fromUtf8(pBytes, nLength).normalized(QString::NormalizationForm_C);
    }
    QByteArray convertFromUnicode(const QChar* pChars, int nLength, ConverterState*) const override
    {
        return QString(pChars, nLength).normalized(QString::NormalizationForm_D).toUtf8();
    }
};

} // namespace

static const QByteArrayList NAMES = {
    "\xef\xa8\x90", // U+FA10, which is another character when it is composed
    "\xef\xa4\x80", // U+F900
    "\xef\xa9\xa0x", // U+FA60
    "cafe\xcc\x81", // decomposed
    "caf\xc3\xa9", // composed
    "\xed\x95\x9c", // a syllable of Korean, composed
};

/** Names that Qt does not give back on a Mac as it got them; this system's disks want each byte. */
class tst_MacFileNames : public CMadeRescue
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bytesComeBack();
    void qtAloneDoesNot();
    void everythingArrives_data();
    void everythingArrives();
    void conflictsKeepTheName_data();
    void conflictsKeepTheName();
    void linkThatLeadsBackIsSeen();
    void folderThatCannotBeMadeTellsItsSizes();
    void volumeOfSuchANameIsCounted();
    void spaceOfSuchAVolume();

private:
    QByteArray Below(const QByteArray& baEntry) const { return m_pSource->Path().toUtf8() + '/' + baEntry; }
    QByteArray Copied(const QByteArray& baEntry) const { return m_baDest + "/Macintosh HD/" + baEntry; }
    void PlantAll();

    CMacCodec* m_pCodec = new CMacCodec; // Qt owns it
    QByteArray m_baDest;
    qint64 m_nBytes = 0; // of what was planted
};

static void Write(const QByteArray& baPath, const QByteArray& baContent)
{
    for (int nSlash = baPath.indexOf('/', 1); nSlash > 0; nSlash = baPath.indexOf('/', nSlash + 1)) {
        mkdir(baPath.left(nSlash).constData(), 0755);
    }
    const int nFile = open(baPath.constData(), O_WRONLY | O_CREAT | O_EXCL, 0644);
    if (nFile == -1 || write(nFile, baContent.constData(), size_t(baContent.size())) != baContent.size()) {
        qFatal("fixture failed: %s", baPath.constData());
    }
    close(nFile);
}

static QByteArray Read(const QByteArray& baPath)
{
    const int nFile = open(baPath.constData(), O_RDONLY);
    char bytes[4096];
    const ssize_t nRead = nFile == -1 ? -1 : read(nFile, bytes, sizeof(bytes));
    close(nFile);
    return nRead < 0 ? QByteArray("<cannot be read>") : QByteArray(bytes, int(nRead));
}

/** All below a folder by the system's calls alone, one line each; links as what they lead to if bFollow. */
static QByteArrayList Listing(const QByteArray& baFolder, bool bFollow, const QByteArray& baPrefix = {})
{
    QByteArrayList listLine;
    DIR* pFolder = opendir(baFolder.constData());
    while (const dirent* pEntry = pFolder != nullptr ? readdir(pFolder) : nullptr) {
        const QByteArray baName = pEntry->d_name;
        const QByteArray baPath = baFolder + '/' + baName;
        struct stat stRaw = {};
        if (baName == "." || baName == ".." || lstat(baPath.constData(), &stRaw) != 0) {
            continue;
        }
        const bool bLink = S_ISLNK(stRaw.st_mode);
        if (bLink && bFollow) {
            stat(baPath.constData(), &stRaw);
        }
        const QByteArray baShown = baPrefix + baName.toPercentEncoding();
        if (S_ISDIR(stRaw.st_mode)) {
            listLine.append(baShown + '/');
            listLine += bLink ? QByteArrayList() : Listing(baPath, bFollow, baShown + '/');
        } else if (S_ISLNK(stRaw.st_mode)) {
            char text[4096];
            const ssize_t nLength = readlink(baPath.constData(), text, sizeof(text));
            listLine.append(baShown + " -> " + QByteArray(text, int(nLength)).toPercentEncoding());
        } else {
            listLine.append(baShown + " = " + Read(baPath));
        }
    }
    if (pFolder != nullptr) {
        closedir(pFolder);
    }
    std::sort(listLine.begin(), listLine.end());
    return listLine;
}

void tst_MacFileNames::init()
{
    NEEDS_VOLUMES();
    CFakeFiles::Reset();
    MakeDisks(50);
    m_baDest = m_pStick->Path().toUtf8() + "/Tarnwick " + NAMES.join('+');
    m_strDest = CFileName::Decode(m_baDest);
    Write(Below("not ticked"), {});
    QTextCodec::setCodecForLocale(m_pCodec);
}

void tst_MacFileNames::cleanup()
{
    CFileNameCodec::Install();
    ClearVolume();
}

/** Each name of a folder with files and links of each name. */
void tst_MacFileNames::PlantAll()
{
    m_nBytes = 0;
    for (const QByteArray& baFolder : NAMES) {
        for (const QByteArray& baFile : NAMES) {
            const QByteArray baContent = baFolder.toHex() + ' ' + baFile.toHex();
            Write(Below("all/" + baFolder + '/' + baFile + ".txt"), baContent);
            const QByteArray baLink = Below("all/" + baFolder + "/link " + baFile);
            QCOMPARE(symlink((baFile + ".txt").constData(), baLink.constData()), 0);
            m_nBytes += baContent.size();
        }
    }
}

void tst_MacFileNames::bytesComeBack()
{
    for (const QByteArray& baName : NAMES) {
        QCOMPARE(CFileName::Encode(CFileName::Decode(baName)), baName);
    }
}

/** Else the other tests would tell nothing. */
void tst_MacFileNames::qtAloneDoesNot()
{
    Write(Below(NAMES.at(0)), "text");
    QVERIFY(!QFileInfo::exists(CFileName::Decode(Below(NAMES.at(0)))));
    QVERIFY(CCopyPlatform::Exists(CFileName::Decode(Below(NAMES.at(0)))));
    QVERIFY(QFile::encodeName(QFile::decodeName(NAMES.at(0))) != NAMES.at(0));
}

void tst_MacFileNames::everythingArrives_data()
{
    QTest::addColumn<bool>("bComplete");
    QTest::addColumn<int>("nOpened");
    QTest::newRow("ticked, never opened") << false << 1;
    QTest::newRow("ticked, opened") << false << 4;
    QTest::newRow("everything") << true << 1;
    QTest::newRow("everything, opened") << true << 4;
}

void tst_MacFileNames::everythingArrives()
{
    QFETCH(bool, bComplete);
    QFETCH(int, nOpened);
    PlantAll();
    Tick({"all"}, nOpened);
    CountAndCopy(bComplete);
    QCOMPARE(Said(false), QStringList());
    QCOMPARE(Said(true), QStringList());
    QVERIFY(Account().IsWhole());
    const QByteArrayList listThere = Listing(Copied("all"), false);
    QCOMPARE(listThere.size(), NAMES.size() * (1 + 2 * NAMES.size()));
    QCOMPARE(listThere.join('\n'), Listing(Below("all"), !bComplete).join('\n'));
    QCOMPARE(m_nCounted, bComplete ? m_nBytes : 2 * m_nBytes); // what links lead to is copied as well
    QCOMPARE(Listing(m_pStick->Path().toUtf8(), false).first(),
             m_baDest.mid(m_baDest.lastIndexOf('/') + 1).toPercentEncoding() + '/');
}

void tst_MacFileNames::conflictsKeepTheName_data()
{
    QTest::addColumn<bool>("bComplete");
    QTest::newRow("ticked") << false;
    QTest::newRow("everything") << true;
}

/** Something is at the destination already, in the very folders and of the very names. */
void tst_MacFileNames::conflictsKeepTheName()
{
    QFETCH(bool, bComplete);
    QStringList listTicked;
    QByteArrayList listExpected;
    for (const QByteArray& baName : NAMES) {
        Write(Below(baName + '/' + baName + ".txt"), "new");
        Write(Below(baName + "/not ticked"), {});
        Write(Copied(baName + '/' + baName + ".txt"), "old");
        const QString strName = CFileName::Decode(baName);
        listTicked.append(strName + '/' + strName + ".txt");
        const QByteArray baShown = baName.toPercentEncoding();
        listExpected << baShown + '/' << baShown + '/' + baShown + ".txt = old"
                     << baShown + '/' + baShown + "_1txt = new";
    }
    std::sort(listExpected.begin(), listExpected.end());
    Tick(listTicked, 2);
    CountAndCopy(bComplete);
    QCOMPARE(Said(false), QStringList());
    QCOMPARE(Listing(m_baDest + "/Macintosh HD", false).join('\n'), listExpected.join('\n'));
}

void tst_MacFileNames::linkThatLeadsBackIsSeen()
{
    for (const QByteArray& baName : NAMES) {
        Write(Below(baName + "/inside/file"), "text");
        QCOMPARE(symlink(("../../" + baName).constData(), Below(baName + "/inside/" + baName).constData()),
                 0);
        const QString strName = CFileName::Decode(baName);
        Tick({strName}, 4);
        CDirNode* pInside = m_pNodes->Root()->m_listChild.last();
        for (const QString& strStep : {strName, QString("inside"), strName}) {
            CDirNode* pNext = nullptr;
            for (CDirNode* pChild : qAsConst(pInside->m_listChild)) {
                pNext = pChild->m_strName == strStep ? pChild : pNext;
            }
            QVERIFY2(pNext != nullptr, qPrintable(strStep));
            pInside = pNext;
        }
        QVERIFY(pInside->m_bLink && pInside->m_bDir);
        QVERIFY(pInside->LeadsBack());
        m_pNodes->Clear();
    }
}

/** A file has the folder's name there. */
void tst_MacFileNames::folderThatCannotBeMadeTellsItsSizes()
{
    const QByteArray baName = NAMES.at(0);
    const QString strName = CFileName::Decode(baName);
    Write(Below(baName + '/' + baName), "12345");
    Write(Copied(baName), {});
    Tick({strName}, 3);
    CountAndCopy(false);
    QCOMPARE(Said(false), QStringList({m_pSource->Path(strName), m_pSource->Path(strName + '/' + strName)}));
    QCOMPARE(Account().listItem.at(1).nExpected, 5);
    QCOMPARE(Account().listItem.at(0).enProblem, ENCopyProblem::TARGET_FOLDER);
}

void tst_MacFileNames::volumeOfSuchANameIsCounted()
{
    const QString strVolume = CFileName::Decode(Below(NAMES.at(0)));
    Write(Below(NAMES.at(0) + "/file"), "12345");
    QVERIFY(CDirListing::KindOf(strVolume).bDir);
    QVERIFY(!CDirListing::KindOf(strVolume).bLink);
    QCOMPARE(symlink(NAMES.at(0).constData(), Below(NAMES.at(1)).constData()), 0);
    QVERIFY(CDirListing::KindOf(CFileName::Decode(Below(NAMES.at(1)))).bLink);
    QVERIFY(CDirListing::KindOf(CFileName::Decode(Below(NAMES.at(1)))).bDir);
    QVERIFY(!CDirListing::KindOf(CFileName::Decode(Below(NAMES.at(2)))).bDir);
}

/** The whole disk is counted by what it holds. */
void tst_MacFileNames::spaceOfSuchAVolume()
{
    CFakeFiles::Reset();
    const QString strVolume = CFileName::Decode(Below(NAMES.at(0)));
    const STDiskSpace stSpace = CCopyPlatform::GetDiskSpace(strVolume);
    QCOMPARE(stSpace.nTotalBytes, 4096LL * 1000);
    QCOMPARE(stSpace.nFreeBytes, 4096LL * 100);
    QVERIFY(!stSpace.bReadOnly);
    QVERIFY(!CFakeFiles::TakeCalls().filter("statfs").isEmpty());
    CFakeFiles::Fail("statfs", "", EIO);
    QCOMPARE(CCopyPlatform::GetDiskSpace(strVolume).nTotalBytes, -1);
}

QTEST_GUILESS_MAIN(tst_MacFileNames)
#include "tst_MacFileNames.moc"
