#include "CCallCounter.h"
#include "support/CCopyBed.h"
#include "support/CVolume.h"

#include <QDir>

static const int FEW = 200;
static const int MANY = 400;
static const int SIZE = 4096;

/** What one small file among many asks of the system, as its share of what its copy asks. */
class tst_CallsOfAFile : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void smallFile_data();
    void smallFile();

private:
    std::optional<CCallCounter::Calls> CallsOf(int nFiles, bool bComplete);

    std::unique_ptr<CVolume> m_pDisk;
    std::unique_ptr<CVolume> m_pStick;
};

void tst_CallsOfAFile::init()
{
    NEEDS_VOLUMES();
    m_pDisk = std::make_unique<CVolume>("Disk", "/dev/disk8s1", 16);
    m_pStick = std::make_unique<CVolume>("Stick", "/dev/disk9s1", 16);
}

void tst_CallsOfAFile::cleanup()
{
    Clear();
    m_pStick.reset();
    m_pDisk.reset();
}

/** The calls of a copy of so many files, on the thread that copies; nothing where they cannot be counted. */
std::optional<CCallCounter::Calls> tst_CallsOfAFile::CallsOf(int nFiles, bool bComplete)
{
    Make();
    m_strDest = m_pStick->Path(QString::number(nFiles));
    m_pNodes->Root()->m_bComplete = bComplete;
    const QString strFolder = m_pDisk->Path(QString::number(nFiles));
    for (int nFile = 0; nFile < nFiles; ++nFile) {
        WriteFile(strFolder + QString("/photo %1.jpg").arg(nFile, 4, 10, QChar('0')), Pattern(SIZE));
    }
    m_pNodes->AddListed(strFolder);
    return CCallCounter::Count([this, nFiles] {
        Run(qint64(nFiles) * SIZE);
        return Account().nFiles == nFiles && Account().IsWhole();
    });
}

void tst_CallsOfAFile::smallFile_data()
{
    QTest::addColumn<bool>("bComplete");
    QTest::addColumn<double>("nMost"); // what is asked for once in many files counts by its share
    QTest::newRow("ticked") << false << 12.5;
    QTest::newRow("complete") << true << 14.5;
}

void tst_CallsOfAFile::smallFile()
{
    QFETCH(bool, bComplete);
    QFETCH(double, nMost);
    const std::optional<CCallCounter::Calls> mapFew = CallsOf(FEW, bComplete);
    const std::optional<CCallCounter::Calls> mapMany = mapFew ? CallsOf(MANY, bComplete) : std::nullopt;
    if (!mapMany) {
        QSKIP("no process may be watched here");
    }
    double nOfAFile = 0;
    QString strCalls = "calls of a file, by their numbers:";
    for (auto itCall = mapMany->cbegin(); itCall != mapMany->cend(); ++itCall) {
        const double nShare = double(itCall.value() - mapFew->value(itCall.key())) / (MANY - FEW);
        nOfAFile += nShare;
        strCalls += nShare > 0 ? QString(" %1 x %2").arg(itCall.key()).arg(nShare) : QString();
    }
    QVERIFY2(nOfAFile > 0, "nothing was counted");
    QVERIFY2(nOfAFile <= nMost, qPrintable(QString("%1 ").arg(nOfAFile) + strCalls));
}

QTEST_GUILESS_MAIN(tst_CallsOfAFile)
#include "tst_CallsOfAFile.moc"
