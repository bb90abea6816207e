#include "app/CTarnwickMacPE.h"
#include "disk/CDestinationDiscovery.h"
#include "disk/platform/CVolumeFolder.h"
#include "files/CFileNameCodec.h"
#include "pages/CSelFileWidget.h"
#include "support/CFakeCommands.h"
#include "support/CModalAnswerer.h"
#include "support/CVolume.h"
#include "support/Texts.h"

#include <QApplication>
#include <QStackedWidget>
#include <QTest>

#include <memory>

static const QByteArray COMPOSED = "B\xc3\xbc"
                                   "cher";
static const QByteArray DECOMPOSED = "Bu\xcc\x88"
                                     "cher";

/** Volumes whose names the notices of a Mac and its folder of volumes write with other letters. */
class tst_MacVolumeNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void namesThatMeanTheSame();
    void pluggedAndPulled_data();
    void pluggedAndPulled();
    void exactNameGoesFirst();
    void pulledWhileItIsCopiedTo_data();
    void pulledWhileItIsCopiedTo();

private:
    void Tell(const QByteArray& baName, ENDiskEventType enType);
    void AddSpellings();
    CSelFileWidget* SelectPage() const { return m_pWindow->findChild<CSelFileWidget*>(); }
    QStackedWidget* Stack() const { return m_pWindow->findChild<QStackedWidget*>("m_pStackWidget"); }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CTarnwickMacPE> m_pWindow;
};

void tst_MacVolumeNames::initTestCase()
{
    CFileNameCodec::Install();
    m_pCommands = std::make_unique<CFakeCommands>();
    m_pCommands->Add("bash");
    m_pCommands->AddDiskutil();
    // The first receiver stays: this system's own events do not reach the window.
    CDiskListener::GetInstance().StartListener(nullptr, nullptr);
}

void tst_MacVolumeNames::init()
{
    m_pWindow.reset();
    m_pSource.reset();
    NEEDS_VOLUMES();
    m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", 10);
    m_pWindow = std::make_unique<CTarnwickMacPE>();
}

/** As the workspace tells it. */
void tst_MacVolumeNames::Tell(const QByteArray& baName, ENDiskEventType enType)
{
    STDiskNotication notication{QString::fromLatin1("/Volumes/" + baName), enType, 1};
    CTarnwickMacPE::DiskChange(&notication, m_pWindow.get());
}

void tst_MacVolumeNames::AddSpellings()
{
    QTest::addColumn<QByteArray>("baListed");
    QTest::addColumn<QByteArray>("baTold");
    QTest::newRow("decomposed in the notice") << COMPOSED << DECOMPOSED;
    QTest::newRow("composed in the notice") << DECOMPOSED << COMPOSED;
    QTest::newRow("composed in both") << COMPOSED << COMPOSED;
    QTest::newRow("decomposed in both") << DECOMPOSED << DECOMPOSED;
}

void tst_MacVolumeNames::namesThatMeanTheSame()
{
    const QString strComposed = QString::fromUtf8(COMPOSED);
    const QString strDecomposed = QString::fromUtf8(DECOMPOSED);
    QVERIFY(CVolumeFolder::IsSameName(strComposed, strDecomposed));
    QVERIFY(!CVolumeFolder::IsSameName(strComposed, "Bucher"));
    QVERIFY(!CVolumeFolder::IsSameName("STICK", "stick"));
    QCOMPARE(ListedDiskPath(strDecomposed, {"STICK", strComposed}), strComposed);
    QCOMPARE(ListedDiskPath(strDecomposed, {strComposed, strDecomposed}), strDecomposed);
    QCOMPARE(ListedDiskPath("USB", {"STICK", strComposed}), QString("USB"));
}

void tst_MacVolumeNames::pluggedAndPulled_data() { AddSpellings(); }

void tst_MacVolumeNames::pluggedAndPulled()
{
    QFETCH(QByteArray, baListed);
    QFETCH(QByteArray, baTold);
    const QString strListed = "/Volumes/" + QString::fromUtf8(baListed);
    CVolume volume(QString::fromUtf8(baListed), "/dev/sdb1", 10);
    Tell(baTold, DISK_EVENT_APPEARED);
    QCOMPARE(SelectPage()->DiskPaths(), QStringList{strListed});
    Tell(baTold, DISK_EVENT_DISAPPEARED);
    QCOMPARE(SelectPage()->DiskPaths(), QStringList());

    // Once more with one that a search has found, and that is not in its folder any more.
    SelectPage()->SlotRefreshUSB();
    QCOMPARE(SelectPage()->DiskPaths(), QStringList{strListed});
    volume.Pull(true);
    Tell(baTold, DISK_EVENT_DISAPPEARED);
    QCOMPARE(SelectPage()->DiskPaths(), QStringList());
}

void tst_MacVolumeNames::exactNameGoesFirst()
{
    const CVolume composed(QString::fromUtf8(COMPOSED), "/dev/sdb1", 10);
    const CVolume decomposed(QString::fromUtf8(DECOMPOSED), "/dev/sdc1", 10);
    for (const CVolume* pVolume : {&composed, &decomposed}) {
        const QByteArray baName = QFile::encodeName(pVolume->Path()).mid(9);
        Tell(baName, DISK_EVENT_APPEARED);
        QCOMPARE(SelectPage()->DiskPaths(), QStringList{pVolume->Path()});
        Tell(baName, DISK_EVENT_DISAPPEARED);
        QCOMPARE(SelectPage()->DiskPaths(), QStringList());
    }
}

void tst_MacVolumeNames::pulledWhileItIsCopiedTo_data() { AddSpellings(); }

void tst_MacVolumeNames::pulledWhileItIsCopiedTo()
{
    QFETCH(QByteArray, baListed);
    QFETCH(QByteArray, baTold);
    CVolume volume(QString::fromUtf8(baListed), "/dev/sdb1", 10);
    Tell(baListed, DISK_EVENT_APPEARED);
    m_pWindow->show();
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(Stack()->currentIndex(), 1);
    volume.Pull(true);
    CModalAnswerer answerer("OK");
    Tell(baTold, DISK_EVENT_DISAPPEARED);
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_REMOVED);
    QCOMPARE(SelectPage()->DiskPaths(), QStringList());
}

QTEST_MAIN(tst_MacVolumeNames)
#include "tst_MacVolumeNames.moc"
