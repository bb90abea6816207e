#include "disk/platform/linux/CMountWatch.h"
#include "support/CVolume.h"
#include "support/ProcessUse.h"
#include "support/VolumeNames.h"

#include <QDir>
#include <QEventLoop>
#include <QTest>
#include <QTimer>

/** Real mounts, reported through the event loop. */
class tst_CMountWatch : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void reportsMountAndUnmount_data() { AddVolumeNames(); }
    void reportsMountAndUnmount();
    void reportsEntriesOfAFolderThatIsALink_data() { AddVolumeNames(); }
    void reportsEntriesOfAFolderThatIsALink();
    void folderMayComeLater();
    void saysNothingOfWhatIsMountedAtTheStart();
    void saysNothingOfMountsElsewhere();
    void saysNothingOfOtherOptions();
    void moveIsARemovalAndAnArrival();
    void stableVolumeIsNotReportedWhileOthersComeAndGo();
    void costsNothingWhileNothingHappens();
    void keepsTheOrderWhenTheReceiverRunsAnEventLoop();

private:
    QByteArrayList m_listSeen;
    CMountWatch::FnDeliver Recorder()
    {
        return [this](const STDiskEvent& event) {
            m_listSeen.append((event.enType == DISK_EVENT_APPEARED ? "+" : "-") + event.baPath);
        };
    }
};

void tst_CMountWatch::init()
{
    NEEDS_VOLUMES();
    m_listSeen.clear();
}

void tst_CMountWatch::reportsMountAndUnmount()
{
    QFETCH(QByteArray, baName);
    CMountWatch watch("/Volumes", Recorder());
    QVERIFY(watch.Start());
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/" + baName));
    QTRY_COMPARE(m_listSeen, QByteArrayList{"+/Volumes/" + baName});
    QVERIFY(CVolume::Unmount("/Volumes/" + baName));
    QTRY_COMPARE(m_listSeen, (QByteArrayList{"+/Volumes/" + baName, "-/Volumes/" + baName}));
}

/** The table of mounts knows the real path only. */
void tst_CMountWatch::reportsEntriesOfAFolderThatIsALink()
{
    QVERIFY(CVolume::ClearAndLink("/run/media"));
    reportsMountAndUnmount();
}

void tst_CMountWatch::folderMayComeLater()
{
    CMountWatch watch("/run/later", Recorder());
    QVERIFY(watch.Start());
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/stray"));
    QCoreApplication::processEvents();
    QVERIFY(CVolume::Unmount("/stray"));
    QVERIFY(QDir().mkpath("/run/later"));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/run/later/STICK"));
    QTRY_COMPARE(m_listSeen, QByteArrayList{"+/run/later/STICK"});
    QVERIFY(CVolume::Unmount("/run/later/STICK"));
}

void tst_CMountWatch::saysNothingOfWhatIsMountedAtTheStart()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/OLD"));
    CMountWatch watch("/Volumes", Recorder());
    QVERIFY(watch.Start());
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/NEW"));
    QTRY_COMPARE(m_listSeen, QByteArrayList{"+/Volumes/NEW"});
}

void tst_CMountWatch::saysNothingOfMountsElsewhere()
{
    CMountWatch watch("/Volumes", Recorder());
    QVERIFY(watch.Start());
    QTemporaryDir dir;
    const QByteArray baElsewhere = QFile::encodeName(dir.path());
    QVERIFY(CVolume::Mount("/dev/disk7s1", baElsewhere));
    QVERIFY(CVolume::Unmount(baElsewhere));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/STICK"));
    QVERIFY(CVolume::Mount("/dev/disk9s1", "/Volumes/STICK/inside"));
    QTRY_COMPARE(m_listSeen, QByteArrayList{"+/Volumes/STICK"});
    QVERIFY(CVolume::Unmount("/Volumes/STICK/inside"));
    QVERIFY(CVolume::Unmount("/Volumes/STICK"));
    QTRY_COMPARE(m_listSeen, (QByteArrayList{"+/Volumes/STICK", "-/Volumes/STICK"}));
}

void tst_CMountWatch::saysNothingOfOtherOptions()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    CMountWatch watch("/Volumes", Recorder());
    QVERIFY(watch.Start());
    QVERIFY(CVolume::MakeReadOnly("/Volumes/STICK"));
    QCoreApplication::processEvents();
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/SENTINEL"));
    QTRY_COMPARE(m_listSeen, QByteArrayList{"+/Volumes/SENTINEL"});
}

void tst_CMountWatch::moveIsARemovalAndAnArrival()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    CMountWatch watch("/Volumes", Recorder());
    QVERIFY(watch.Start());
    QVERIFY(CVolume::Move("/Volumes/A", "/Volumes/B"));
    QTRY_COMPARE(m_listSeen, (QByteArrayList{"-/Volumes/A", "+/Volumes/B"}));
}

void tst_CMountWatch::stableVolumeIsNotReportedWhileOthersComeAndGo()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STABLE"));
    CMountWatch watch("/Volumes", Recorder());
    QVERIFY(watch.Start());
    for (int i = 0; i < 100; ++i) {
        const QByteArray baPoint = "/Volumes/guest" + QByteArray::number(i);
        QVERIFY(CVolume::Mount("/dev/disk8s1", baPoint));
        QCoreApplication::processEvents();
        QVERIFY(CVolume::Unmount(baPoint));
    }
    QTRY_COMPARE(m_listSeen.size(), 200);
    QVERIFY(!m_listSeen.contains("-/Volumes/STABLE"));
    QVERIFY(!m_listSeen.contains("+/Volumes/STABLE"));
}

void tst_CMountWatch::costsNothingWhileNothingHappens()
{
    CMountWatch watch("/Volumes", Recorder());
    QVERIFY(watch.Start());
    QEventLoop loop;
    QTimer::singleShot(400, &loop, &QEventLoop::quit);
    const qint64 nBefore = ProcessorTimeMs();
    loop.exec();
    const qint64 nSpent = ProcessorTimeMs() - nBefore;
    QVERIFY2(nSpent < 100, qPrintable(QString::number(nSpent)));
}

void tst_CMountWatch::keepsTheOrderWhenTheReceiverRunsAnEventLoop()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    QEventLoop loopOfDialog;
    QTimer::singleShot(5000, &loopOfDialog, &QEventLoop::quit);
    CMountWatch watch("/Volumes", [this, &loopOfDialog](const STDiskEvent& event) {
        Recorder()(event);
        if (m_listSeen.size() == 1) {
            // While the receiver's dialog is open, the volume that has just come goes again.
            QVERIFY(CVolume::Unmount("/Volumes/B"));
            loopOfDialog.exec();
        } else if (m_listSeen.size() == 3) {
            loopOfDialog.quit();
        }
    });
    QVERIFY(watch.Start());
    QVERIFY(CVolume::Move("/Volumes/A", "/Volumes/B"));
    QTRY_COMPARE(m_listSeen, (QByteArrayList{"-/Volumes/A", "+/Volumes/B", "-/Volumes/B"}));
}

QTEST_GUILESS_MAIN(tst_CMountWatch)
#include "tst_CMountWatch.moc"
