#include "app/CTarnwickMacPE.h"
#include "disk/platform/CVolumeBus.h"
#include "pages/CNoticeLine.h"
#include "pages/CSelFileWidget.h"
#include "support/CFakeCommands.h"
#include "support/CGate.h"
#include "support/CVolume.h"
#include "support/LogFile.h"

#include <QApplication>
#include <QTest>

#include <atomic>
#include <memory>
#include <optional>

Q_DECLARE_METATYPE(std::optional<bool>)

static const int LONG_MS = 30000;
static std::optional<bool> s_bUsb;
static QString s_strAsked;
static std::atomic<bool> s_bHangs{false};
static CGate s_end; // of the hanging
static CGate s_ended;

// Stands in for what the system says.
std::optional<bool> CVolumeBus::IsOnUsb(const QString& strPath)
{
    if (s_bHangs) {
        s_end.Pass(LONG_MS);
        s_ended.Open();
        return false;
    }
    s_strAsked = strPath;
    return s_bUsb;
}

/** Which of the volumes that arrive are offered as destinations. */
class tst_Arrivals : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void onlyACertainNoKeepsAVolumeOut_data();
    void onlyACertainNoKeepsAVolumeOut();
    void aQuestionThatHangsKeepsNobodyUp();
    void removalAsksNothing();

private:
    void Tell(ENDiskEventType enType);
    QStringList Paths() const { return m_pWindow->findChild<CSelFileWidget*>()->DiskPaths(); }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CVolume> m_pVolume;
    std::unique_ptr<CTarnwickMacPE> m_pWindow;
};

static const QString PATH = "/Volumes/ARRIVED";

void tst_Arrivals::initTestCase()
{
    UseLogFile();
    m_pCommands = std::make_unique<CFakeCommands>();
    m_pCommands->Add("bash");
    m_pCommands->AddDiskutil();
    // The first receiver stays: this system's own events do not reach the window.
    CDiskListener::GetInstance().StartListener(nullptr, nullptr);
}

void tst_Arrivals::init()
{
    NEEDS_VOLUMES();
    m_pWindow = std::make_unique<CTarnwickMacPE>();
    m_pVolume = std::make_unique<CVolume>("ARRIVED", "/dev/nvme0n1p2", 10);
    s_bUsb.reset();
    s_strAsked.clear();
}

void tst_Arrivals::cleanup()
{
    m_pWindow.reset();
    m_pVolume.reset();
}

void tst_Arrivals::Tell(ENDiskEventType enType)
{
    STDiskNotication notication{PATH, enType, 1};
    CTarnwickMacPE::DiskChange(&notication, m_pWindow.get());
}

void tst_Arrivals::onlyACertainNoKeepsAVolumeOut_data()
{
    QTest::addColumn<std::optional<bool>>("bUsb");
    QTest::addColumn<QStringList>("listPath");
    QTest::newRow("on USB") << std::optional<bool>(true) << QStringList{PATH};
    QTest::newRow("not known") << std::optional<bool>() << QStringList{PATH};
    QTest::newRow("on another bus") << std::optional<bool>(false) << QStringList();
}

void tst_Arrivals::onlyACertainNoKeepsAVolumeOut()
{
    QFETCH(std::optional<bool>, bUsb);
    s_bUsb = bUsb;
    const int nLines = LogLines().size();
    Tell(DISK_EVENT_APPEARED);
    QTEST(Paths(), "listPath");
    QCOMPARE(s_strAsked, PATH);
    const QStringList listLine = LogLines().mid(nLines).filter("not on USB, no destination: " + PATH);
    QCOMPARE(listLine.isEmpty(), !Paths().isEmpty());
    // What is kept out is told to the user, too.
    const QString strNotice = m_pWindow->findChild<CNoticeLine*>()->Text();
    QCOMPARE(strNotice.contains("ARRIVED is there now"), Paths().isEmpty());
}

void tst_Arrivals::aQuestionThatHangsKeepsNobodyUp()
{
    s_bHangs = true;
    Tell(DISK_EVENT_APPEARED);
    QCOMPARE(Paths(), QStringList{PATH});
    s_bHangs = false;
    s_end.Open();
    QVERIFY(s_ended.Pass(LONG_MS));
}

void tst_Arrivals::removalAsksNothing()
{
    Tell(DISK_EVENT_APPEARED);
    s_strAsked.clear();
    Tell(DISK_EVENT_DISAPPEARED);
    QCOMPARE(Paths(), QStringList());
    QCOMPARE(s_strAsked, QString());
}

QTEST_MAIN(tst_Arrivals)
#include "tst_Arrivals.moc"
