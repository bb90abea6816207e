#include "disk/CDestinationDiscovery.h"
#include "disk/CDiskListener.h"
#include "macos/CEventLog.h"
#include "macos/CFakeMac.h"
#include "macos/CMountBed.h"
#include "support/CFakeCommands.h"

#include <QDir>
#include <QTest>

/** Volumes that no notice of the workspace tells of, as where nobody is logged in. */
class tst_MacMounts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void whatIsMountedAtTheStartSaysNothing();
    void looksGoOn();
    void mountAndUnmount_data();
    void mountAndUnmount();
    void whoeverIsFirstTells();
    void onlyTheFolderOfVolumes();
    void aRenamedVolume();
    void aTableThatCannotBeRead();
    void aChangeWithinAnEvent();
    void looksGoOnWithinAnEvent();
    void whatASearchHasFound();

private:
    /** What is told by the next look. */
    QStringList Look()
    {
        CMountBed::Look();
        return m_log.Take();
    }

    CMountBed m_bed;
    CEventLog m_log;
};

void tst_MacMounts::initTestCase()
{
    m_bed.Mount("/Volumes/OLD");
    QVERIFY(CDiskListener::GetInstance().StartListener(&CEventLog::Receive, &m_log));
    QVERIFY(CMountBed::Timer());
    // No look of its own comes between.
    CMountBed::Timer()->setInterval(3600000);
}

void tst_MacMounts::cleanup()
{
    CMountBed::Look();
    m_log.Take();
    QCOMPARE(CFakeMac::Problems(), QStringList());
    QCOMPARE(CFakeMac::Held(), (QMap<QString, int>{{"iterator", 2}, {"port", 2}}));
}

void tst_MacMounts::whatIsMountedAtTheStartSaysNothing()
{
    QCOMPARE(Look(), QStringList());
    QCOMPARE(Look(), QStringList());
}

void tst_MacMounts::looksGoOn()
{
    QVERIFY(CMountBed::Timer()->isActive());
    CMountBed::Timer()->start(1);
    QStringList listLine;
    m_bed.Mount("/Volumes/A");
    QTRY_COMPARE((listLine += m_log.Take()), QStringList{"0 /Volumes/A 1"});
    m_bed.Unmount("/Volumes/A");
    QTRY_COMPARE((listLine += m_log.Take()), QStringList({"0 /Volumes/A 1", "1 /Volumes/A 1"}));
    QCOMPARE(m_log.Thread(), QThread::currentThreadId());
    CMountBed::Timer()->start(3600000);
}

void tst_MacMounts::mountAndUnmount_data()
{
    QTest::addColumn<QByteArray>("baPath");
    QTest::newRow("plain") << QByteArray("/Volumes/STICK");
    QTest::newRow("beyond ASCII") << QByteArray("/Volumes/B\xc3\xbc"
                                                "cher \xe5\x86\x99\xe7\x9c\x9f");
    QTest::newRow("decomposed letters") << QByteArray("/Volumes/Bu\xcc\x88"
                                                      "cher");
    QTest::newRow("not UTF-8") << QByteArray("/Volumes/B\xfc"
                                             "cher");
}

void tst_MacMounts::mountAndUnmount()
{
    QFETCH(QByteArray, baPath);
    const QString strPath = QString::fromLatin1(baPath); // the bytes, each as one character
    m_bed.Mount(baPath);
    QCOMPARE(Look(), QStringList{"0 " + strPath + " 1"});
    QCOMPARE(Look(), QStringList());
    m_bed.Unmount(baPath);
    QCOMPARE(Look(), QStringList{"1 " + strPath + " 1"});
    QCOMPARE(Look(), QStringList());
}

void tst_MacMounts::whoeverIsFirstTells()
{
    m_bed.Mount("/Volumes/A");
    CFakeMac::Mount("/Volumes/A");
    QCOMPARE(Look(), QStringList{"0 /Volumes/A 1"});
    m_bed.Unmount("/Volumes/A");
    QCOMPARE(Look(), QStringList{"1 /Volumes/A 1"});
    CFakeMac::Unmount("/Volumes/A");
    m_bed.Mount("/Volumes/A");
    QCOMPARE(Look(), QStringList{"0 /Volumes/A 1"});
    CFakeMac::Mount("/Volumes/A");
    m_bed.Unmount("/Volumes/A");
    CFakeMac::Unmount("/Volumes/A");
    QCOMPARE(Look(), QStringList{"1 /Volumes/A 1"});
    QCOMPARE(CFakeMac::TakeLog().size(), 4); // each notice is logged, told or not
}

void tst_MacMounts::onlyTheFolderOfVolumes()
{
    m_bed.Mount("/System/Volumes/Data");
    m_bed.Mount("/Volumes/OLD/inner");
    m_bed.Mount("/Volumes/.timemachine");
    QCOMPARE(Look(), QStringList());
}

void tst_MacMounts::aRenamedVolume()
{
    m_bed.Mount("/Volumes/A");
    Look();
    m_bed.Unmount("/Volumes/A");
    m_bed.Mount("/Volumes/B");
    QCOMPARE(Look(), QStringList({"1 /Volumes/A 1", "0 /Volumes/B 1"}));
    m_bed.Unmount("/Volumes/B");
}

void tst_MacMounts::aTableThatCannotBeRead()
{
    CMountBed::HideTable();
    QCOMPARE(Look(), QStringList());
    m_bed.Mount("/Volumes/A");
    QCOMPARE(Look(), QStringList{"0 /Volumes/A 1"});
    m_bed.Unmount("/Volumes/A");
}

/** The receiver may open a dialog, whose event loop runs the timer again. */
void tst_MacMounts::aChangeWithinAnEvent()
{
    m_log.OnNext([this] {
        m_bed.Unmount("/Volumes/B");
        CMountBed::Look();
    });
    m_bed.Mount("/Volumes/A");
    m_bed.Mount("/Volumes/B");
    QCOMPARE(Look(), QStringList({"0 /Volumes/A 1", "0 /Volumes/B 1", "1 /Volumes/B 1"}));
    m_bed.Unmount("/Volumes/A");
}

void tst_MacMounts::looksGoOnWithinAnEvent()
{
    bool bToldWithin = false;
    m_log.OnNext([this, &bToldWithin] {
        m_bed.Mount("/Volumes/B");
        bToldWithin = QTest::qWaitFor([this] { return m_log.Take().contains("0 /Volumes/B 1"); });
    });
    m_bed.Mount("/Volumes/A");
    CMountBed::Timer()->start(1);
    QTRY_VERIFY(bToldWithin);
    CMountBed::Timer()->start(3600000);
    m_bed.Unmount("/Volumes/A");
    m_bed.Unmount("/Volumes/B");
}

void tst_MacMounts::whatASearchHasFound()
{
    CFakeCommands commands;
    commands.AddDiskutil();
    QVERIFY(QDir().mkpath("/Volumes/A"));
    QVERIFY(QDir().mkpath("/Volumes/FOLDER"));
    m_bed.Mount("/Volumes/A", "/dev/sdb1");
    QStringList listFound;
    const std::atomic<bool> bCancelled{false};
    const auto fnFound = [&listFound](const STVolume& volume) { listFound.append(volume.strName); };
    QVERIFY(CDestinationDiscovery::Scan(fnFound, bCancelled));
    listFound.sort();
    QCOMPARE(listFound, QStringList({"A", "FOLDER"}));
    // What was a folder for the search is a volume now, and that is told.
    m_bed.Mount("/Volumes/FOLDER");
    QCOMPARE(Look(), QStringList{"0 /Volumes/FOLDER 1"});
    CFakeMac::Mount("/Volumes/A");
    QCOMPARE(m_log.Take(), QStringList());
    m_bed.Unmount("/Volumes/A");
    m_bed.Unmount("/Volumes/FOLDER");
    QCOMPARE(Look(), QStringList({"1 /Volumes/A 1", "1 /Volumes/FOLDER 1"}));
    QVERIFY(QDir().rmdir("/Volumes/A") && QDir().rmdir("/Volumes/FOLDER"));
}

QTEST_GUILESS_MAIN(tst_MacMounts)
#include "tst_MacMounts.moc"
