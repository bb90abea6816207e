#include "journeys/CJourneyBed.h"
#include "support/CFaultyDisk.h"
#include "support/CMadeMac.h"
#include "support/CToolCompare.h"

#include <QLocale>
#include <QMap>
#include <QSet>

#include <sys/stat.h>

static const int PAGE_SELECT = 0;
static const int FILES = 2000;
static const int VOLUME_MIB = 200;
static const int COPY_MS = 60000; // for a whole copy on a busy machine
static const int SECTOR = 4096; // of a disk that breaks, in bytes
static const int MOST_TABS = 20; // stops of the tab order, and more
static const char CHOICE[] = "m_pCompleteBox";

/**
 * A whole volume is ticked, and all of it meant: what the box at the end says is on the
 * stick, as tools see it that know nothing of the program.
 */
class tst_CompleteRescue : public CJourneyBed
{
    Q_OBJECT

private slots:
    void initTestCase() { umask(022); }
    void init();
    void cleanup();

    void everythingIsOnTheStick_data();
    void everythingIsOnTheStick();
    void whatCannotBeCopiedIsToldAndAllElseIsOnTheStick();
    void filesWithBadSectorsArriveButForThose();
    void choiceIsOffAtTheStart();

private:
    QJsonObject Choice() const { return m_pJourney->Widget(CHOICE); }
    QJsonObject CopyButton() const { return m_pJourney->Widget("toolBtn", "m_pSelFilePage"); }
    bool TabTo(const QString& strName, const QString& strIn = {});
    void TickByMouse();
    void TickByKeys();
    void ConcludeCopy();
    void VerifySame() const;

    std::unique_ptr<CFaultyDisk> m_pBroken; // instead of the source
    std::unique_ptr<CMadeMac> m_pMac;
    QString m_strDetail; // of the box at the end
};

void tst_CompleteRescue::init()
{
    NEEDS_VOLUMES();
    NEEDS_COMPARE_TOOLS();
    m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", VOLUME_MIB);
    PlugInLarge();
    QVERIFY2(m_pSource->IsValid() && m_pLarge->IsValid(), "volumes can be mounted");
    m_pMac = std::make_unique<CMadeMac>(m_pSource->Path(), FILES);
    m_pMac->PlantLinksOut();
    m_pJourney = std::make_unique<CJourney>(BuildPath("pictures/complete/") + TestName());
}

void tst_CompleteRescue::cleanup()
{
    if (QTest::currentTestFailed() && m_pJourney) {
        m_pJourney->Picture("failed");
        qWarning().noquote() << m_pJourney->Errors();
    }
    m_pMac.reset();
    if (m_pBroken) {
        m_pBroken->Heal();
    }
    m_pJourney.reset();
    m_pBroken.reset();
    Clear();
}

/** Presses Tab until a widget has the focus. */
bool tst_CompleteRescue::TabTo(const QString& strName, const QString& strIn)
{
    for (int n = 0; n < MOST_TABS; ++n) {
        CJourney::PressKeys({"Tab"});
        if (CJourney::WaitFor([&] { return m_pJourney->Widget(strName, strIn).value("focus").toBool(); },
                              300)) {
            return true;
        }
    }
    return false;
}

void tst_CompleteRescue::TickByMouse()
{
    QVERIFY(m_pJourney->TickWhole(m_listVolume));
    m_pJourney->Picture("ticked");
    if (!Choice().value("checked").toBool()) {
        m_pJourney->Click(CHOICE);
        QVERIFY(CJourney::WaitFor([this] { return Choice().value("checked").toBool(); }));
    }
    m_pJourney->Picture("chosen");
    QVERIFY(CJourney::WaitFor([this] { return CopyButton().value("enabled").toBool(); }));
    m_pJourney->Click(CopyButton());
}

void tst_CompleteRescue::TickByKeys()
{
    // The first key goes to the first row of the tree, which is the volume.
    QVERIFY(CJourney::WaitFor([this] { return m_pJourney->Widget("m_pFileTree").value("focus").toBool(); }));
    CJourney::PressKeys({"space"});
    QVERIFY(CJourney::WaitFor(
        [this] { return m_pJourney->Row(m_listVolume).value("state").toInt() == Qt::Checked; }));
    QVERIFY(TabTo(CHOICE));
    CJourney::PressKeys({"space"});
    QVERIFY(CJourney::WaitFor([this] { return Choice().value("checked").toBool(); }));
    m_pJourney->Picture("chosen");
    QVERIFY(CJourney::WaitFor([this] { return CopyButton().value("enabled").toBool(); }));
    QVERIFY(TabTo("toolBtn", "m_pSelFilePage"));
    CJourney::PressKeys({"space"});
}

/** Waits for the box at the end, keeps what it says and goes back to the first page. */
void tst_CompleteRescue::ConcludeCopy()
{
    QVERIFY(m_pJourney->WaitForBox(TEXT_COMPLETED, COPY_MS));
    m_strDetail = m_pJourney->Detail();
    m_pJourney->Picture("completed");
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, "OK"));
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Page() == PAGE_SELECT; }));
    m_pJourney->Picture("afterwards");
}

/** Nothing is missing, other or there twice but what no copy can hold. */
void tst_CompleteRescue::VerifySame() const
{
    const STMadeMac& stMade = m_pMac->Made();
    const QString strCopy = Rescue() + "/Macintosh HD";
    QSet<QString> setDifferent;
    for (const QString& strLine :
         CToolCompare::RsyncDifferences(m_pMac->Path(), strCopy, stMade.bAttributes)) {
        setDifferent.insert(m_pMac->Path(strLine.section(' ', 1)));
    }
    QSet<QString> setPlanted(stMade.listLeftOut.cbegin(), stMade.listLeftOut.cend());
    setPlanted.remove(m_pMac->Path("Users/anna/Library/Mounted")); // its folder is there
    QCOMPARE(setDifferent, setPlanted);
    QCOMPARE(CToolCompare::DiffDifferences(m_pMac->Path(), strCopy).size(), stMade.listLeftOut.size());
    const STToolCount stCount = CToolCompare::Count(Rescue());
    QCOMPARE(stCount.nFiles, stMade.nFiles);
    QCOMPARE(stCount.nFolders, stMade.nFolders + 1); // the volume's own
    QCOMPARE(stCount.nLinks, stMade.nLinks);
    QCOMPARE(stCount.nBytes, stMade.nBytes);
}

void tst_CompleteRescue::everythingIsOnTheStick_data()
{
    QTest::addColumn<bool>("bKeys");
    QTest::addColumn<bool>("bEnvironment");
    QTest::newRow("mouse") << false << false;
    QTest::newRow("keyboard") << true << false;
    QTest::newRow("environment") << false << true;
}

void tst_CompleteRescue::everythingIsOnTheStick()
{
    QFETCH(bool, bKeys);
    QFETCH(bool, bEnvironment);
    if (bEnvironment) {
        m_pJourney->SetVariable("TARNWICK_COMPLETE_RESCUE", "1");
    }
    Start();
    m_pJourney->Picture("window");
    QCOMPARE(Choice().value("checked").toBool(), bEnvironment);
    bKeys ? TickByKeys() : TickByMouse();
    if (!QTest::currentTestFailed()) {
        ConcludeCopy();
    }
    if (QTest::currentTestFailed()) {
        return;
    }
    const qint64 nFiles = m_pMac->Made().nFiles;
    const QString strBegin = QLocale(QLocale::English).toString(nFiles) + " files, ";
    const QString strEnd = " are on the disk. It can be unplugged now.";
    QVERIFY2(m_strDetail.startsWith(strBegin) && m_strDetail.endsWith(strEnd), qPrintable(m_strDetail));
    VerifySame();
    // The folder of the rescue alone: there is nothing to report.
    QCOMPARE(QDir(m_pLarge->Path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
             1);
}

void tst_CompleteRescue::whatCannotBeCopiedIsToldAndAllElseIsOnTheStick()
{
    m_pMac->PlantSpecials();
    QVERIFY(m_pMac->PlantMount());
    Start();
    TickByMouse();
    if (!QTest::currentTestFailed()) {
        ConcludeCopy();
    }
    if (QTest::currentTestFailed()) {
        return;
    }
    const QStringList& listLeftOut = m_pMac->Made().listLeftOut;
    const qint64 nItems = m_pMac->Made().nFiles + m_pMac->Made().nLinks;
    const QString strAll = QLocale(QLocale::English).toString(nItems + listLeftOut.size());
    QCOMPARE(m_strDetail,
             QString("%1 of %2 items were not copied whole.").arg(listLeftOut.size()).arg(strAll));
    VerifySame();
    const QString strReport = Content(Rescue() + ".txt");
    for (const QString& strPath : listLeftOut) {
        QVERIFY2(strReport.contains(strPath), qPrintable(strReport));
    }
}

void tst_CompleteRescue::filesWithBadSectorsArriveButForThose()
{
    NEEDS_FAULTY_DISKS();
    m_pMac.reset();
    m_pSource.reset();
    m_pBroken = std::make_unique<CFaultyDisk>("Macintosh HD", "/dev/nvme0n1p1", VOLUME_MIB);
    QVERIFY(m_pBroken->IsValid());
    m_pMac = std::make_unique<CMadeMac>(m_pBroken->Behind(), FILES);
    struct STBad
    {
        QString strFile;
        int nFrom; ///< bytes
        int nBytes;
    };
    const STBad listBad[] = {{"Users/Shared/Sizes/5242957", 1 << 20, 2 * SECTOR},
                             {"Users/Shared/Sizes/5242957", 4 << 20, SECTOR},
                             {"Users/anna/Movies/holiday.mov", 2 * SECTOR, SECTOR}};
    QMap<QString, QByteArray> mapExpected; // zeros stand for what cannot be read
    for (const STBad& stBad : listBad) {
        m_pBroken->BadSectors(stBad.nFrom, stBad.nBytes, stBad.strFile);
        QByteArray& baExpected = mapExpected[stBad.strFile];
        baExpected = baExpected.isEmpty() ? Content(m_pMac->Path(stBad.strFile)) : baExpected;
        baExpected.replace(stBad.nFrom, stBad.nBytes, QByteArray(stBad.nBytes, '\0'));
    }
    Start();
    TickByMouse();
    if (!QTest::currentTestFailed()) {
        ConcludeCopy();
    }
    if (QTest::currentTestFailed()) {
        return;
    }
    const qint64 nItems = m_pMac->Made().nFiles + m_pMac->Made().nLinks;
    QCOMPARE(m_strDetail,
             QString("2 of %1 items were not copied whole.").arg(QLocale(QLocale::English).toString(nItems)));
    const QString strCopy = Rescue() + "/Macintosh HD";
    for (auto it = mapExpected.cbegin(); it != mapExpected.cend(); ++it) {
        QVERIFY2(Content(strCopy + '/' + it.key()) == it.value(), qPrintable(it.key()));
    }
    const QStringList listDifference = CToolCompare::RsyncDifferences(m_pMac->Path(), strCopy);
    QCOMPARE(listDifference.join('\n'),
             QString(">fc........ Users/Shared/Sizes/5242957\n>fc........ Users/anna/Movies/holiday.mov"));
    const QString strReport = Content(Rescue() + ".txt");
    for (const char* pszSaid :
         {"Sizes/5242957", "1048576-1056767, 4194304-4198399", "holiday.mov", "8192-12287"}) {
        QVERIFY2(strReport.contains(pszSaid), qPrintable(strReport));
    }
}

void tst_CompleteRescue::choiceIsOffAtTheStart()
{
    Start();
    QVERIFY(Choice().value("enabled").toBool());
    QVERIFY(!Choice().value("checked").toBool());
    QCOMPARE(m_pJourney->Text(CHOICE), QString("Complete rescue"));
}

QTEST_MAIN(tst_CompleteRescue)
#include "tst_CompleteRescue.moc"
