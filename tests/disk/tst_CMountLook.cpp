#include "disk/CMountLook.h"

#include <QTest>

#include <optional>

static const QByteArray COMPOSED = "/Volumes/B\xc3\xbc"
                                   "cher";
static const QByteArray DECOMPOSED = "/Volumes/Bu\xcc\x88"
                                     "cher";

/** What is left for a look to tell, beside notices and searches. */
class tst_CMountLook : public QObject
{
    Q_OBJECT

private slots:
    void whatIsThereAtTheStartIsToldByNobody();
    void whatNoNoticeHasTold();
    void onlyVolumesOfTheFolder_data();
    void onlyVolumesOfTheFolder();
    void whatANoticeHasToldIsNotToldAgain();
    void aNoticeThatComesAfterTheLookIsNotToldAgain();
    void aLateNoticeIsSwallowedOnce();
    void aLateNoticeOfAnEarlierMountIsToldAndPutRight();
    void aRenamedVolumeGoesAndComes();
    void anExchangedVolumeBetweenTwoNotices();
    void whatASearchHasFoundIsNotToldAgain();
    void aNoticeAfterTheSearchIsNotToldAgain();
    void aSearchThatHasFoundAFolder();
    void aFoundVolumeThatGoesIsTold();
    void aVolumeThatWentDuringTheSearch_data();
    void aVolumeThatWentDuringTheSearch();
    void namesThatMeanTheSame();
    void nothingIsKeptBeforeTheFirstLook();

private:
    /** The events of a look, "type path" each. */
    QByteArrayList Look(const QByteArrayList& listPoint)
    {
        QByteArrayList listLine;
        for (const STDiskEvent& event : m_look->Look(listPoint)) {
            listLine.append(QByteArray::number(event.enType) + ' ' + event.baPath);
        }
        return listLine;
    }
    /** A search during which nothing comes or goes. */
    void Finds(const QByteArrayList& listPath) { m_look->Listed(m_look->SearchBegins(), listPath, listPath); }
    bool Mounts(const QByteArray& baPath) { return m_look->Hear(DISK_EVENT_APPEARED, baPath); }
    bool Unmounts(const QByteArray& baPath) { return m_look->Hear(DISK_EVENT_DISAPPEARED, baPath); }

    std::optional<CMountLook> m_look;

private slots:
    void init()
    {
        m_look.emplace();
        m_look->Begin("/Volumes", {"/", "/Volumes/OLD"});
    }
};

using Lines = QByteArrayList;

void tst_CMountLook::whatIsThereAtTheStartIsToldByNobody()
{
    QCOMPARE(Look({"/", "/Volumes/OLD"}), Lines());
    QCOMPARE(Look({"/", "/Volumes/OLD"}), Lines());
}

void tst_CMountLook::whatNoNoticeHasTold()
{
    QCOMPARE(Look({"/", "/Volumes/OLD", "/Volumes/B", "/Volumes/A"}),
             Lines({"0 /Volumes/B", "0 /Volumes/A"}));
    QCOMPARE(Look({"/", "/Volumes/OLD", "/Volumes/B", "/Volumes/A"}), Lines());
    QCOMPARE(Look({"/", "/Volumes/NEW", "/Volumes/A"}),
             Lines({"1 /Volumes/B", "1 /Volumes/OLD", "0 /Volumes/NEW"}));
    QCOMPARE(Look({"/", "/Volumes/NEW", "/Volumes/A"}), Lines());
}

void tst_CMountLook::onlyVolumesOfTheFolder_data()
{
    QTest::addColumn<QByteArray>("baPoint");
    QTest::newRow("elsewhere") << QByteArray("/System/Volumes/Data");
    QTest::newRow("deeper") << QByteArray("/Volumes/OLD/inner");
    QTest::newRow("the folder itself") << QByteArray("/Volumes");
    QTest::newRow("the folder with a slash") << QByteArray("/Volumes/");
    QTest::newRow("begins alike") << QByteArray("/VolumesX/A");
    QTest::newRow("hidden, as no list shows it") << QByteArray("/Volumes/.timemachine");
}

void tst_CMountLook::onlyVolumesOfTheFolder()
{
    QFETCH(QByteArray, baPoint);
    QCOMPARE(Look({"/Volumes/OLD", baPoint}), Lines());
    QVERIFY(Mounts(baPoint));
    QVERIFY(Mounts(baPoint));
    QCOMPARE(Look({"/Volumes/OLD"}), Lines());
    QVERIFY(Unmounts(baPoint));
}

void tst_CMountLook::whatANoticeHasToldIsNotToldAgain()
{
    QVERIFY(Mounts("/Volumes/A"));
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines());
    QVERIFY(Unmounts("/Volumes/A"));
    QVERIFY(Unmounts("/Volumes/OLD"));
    QCOMPARE(Look({"/"}), Lines());
    QVERIFY(Mounts("/Volumes/A"));
    QVERIFY(Mounts("/Volumes/A")); // notices are told as they come
    QCOMPARE(Look({"/Volumes/A"}), Lines());
}

void tst_CMountLook::aNoticeThatComesAfterTheLookIsNotToldAgain()
{
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines{"0 /Volumes/A"});
    QVERIFY(!Mounts("/Volumes/A"));
    QCOMPARE(Look({"/Volumes/A"}), Lines{"1 /Volumes/OLD"});
    QVERIFY(!Unmounts("/Volumes/OLD"));
    QCOMPARE(Look({"/Volumes/A"}), Lines());
}

void tst_CMountLook::aLateNoticeIsSwallowedOnce()
{
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines{"0 /Volumes/A"});
    QVERIFY(!Mounts("/Volumes/A"));
    QVERIFY(Unmounts("/Volumes/A"));
    QVERIFY(Mounts("/Volumes/A"));
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines());
}

void tst_CMountLook::aLateNoticeOfAnEarlierMountIsToldAndPutRight()
{
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines{"0 /Volumes/A"});
    QCOMPARE(Look({"/Volumes/OLD"}), Lines{"1 /Volumes/A"});
    QVERIFY(Mounts("/Volumes/A"));
    QCOMPARE(Look({"/Volumes/OLD"}), Lines{"1 /Volumes/A"});
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines{"0 /Volumes/A"});
    QVERIFY(Unmounts("/Volumes/A"));
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines{"0 /Volumes/A"});
}

void tst_CMountLook::aRenamedVolumeGoesAndComes()
{
    QCOMPARE(Look({"/Volumes/NEW"}), Lines({"1 /Volumes/OLD", "0 /Volumes/NEW"}));
}

void tst_CMountLook::anExchangedVolumeBetweenTwoNotices()
{
    QVERIFY(Unmounts("/Volumes/OLD"));
    QCOMPARE(Look({"/Volumes/OLD"}), Lines{"0 /Volumes/OLD"});
    QVERIFY(!Mounts("/Volumes/OLD"));
}

void tst_CMountLook::whatASearchHasFoundIsNotToldAgain()
{
    Finds({"/Volumes/A", "/Volumes/OLD"});
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A", "/Volumes/B"}), Lines{"0 /Volumes/B"});
    QVERIFY(!Mounts("/Volumes/A"));
    QVERIFY(Mounts("/Volumes/OLD"));
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A", "/Volumes/B"}), Lines());
}

void tst_CMountLook::aNoticeAfterTheSearchIsNotToldAgain()
{
    Finds({"/Volumes/OLD"});
    QVERIFY(Mounts("/Volumes/OLD")); // which was known before the search
    Finds({"/Volumes/A"});
    QVERIFY(!Mounts("/Volumes/A"));
    QVERIFY(Mounts("/Volumes/A"));
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines());
    Finds({"/Volumes/A"});
    QVERIFY(Unmounts("/Volumes/A"));
    QVERIFY(Mounts("/Volumes/A"));
}

/** Something is mounted on it only later. */
void tst_CMountLook::aSearchThatHasFoundAFolder()
{
    m_look->Listed(m_look->SearchBegins(), {"/Volumes/A"}, {"/Volumes/OLD"});
    QCOMPARE(Look({"/Volumes/OLD"}), Lines());
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines{"0 /Volumes/A"});
}

void tst_CMountLook::aFoundVolumeThatGoesIsTold()
{
    Finds({"/Volumes/A"});
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines());
    QCOMPARE(Look({"/Volumes/OLD"}), Lines{"1 /Volumes/A"});
    // Also before a look has come across it.
    Finds({"/Volumes/A"});
    QCOMPARE(Look({"/Volumes/OLD"}), Lines{"1 /Volumes/A"});
    QVERIFY(!Unmounts("/Volumes/A"));
}

/** What the search says of it is not listed, so its next arrival must be. */
void tst_CMountLook::aVolumeThatWentDuringTheSearch()
{
    QFETCH(bool, bNotice);
    QFETCH(bool, bBack);
    QVERIFY(Mounts("/Volumes/A"));
    const quint64 nSearch = m_look->SearchBegins();
    if (bNotice) {
        QVERIFY(Unmounts("/Volumes/A"));
    } else {
        QCOMPARE(Look({"/Volumes/OLD"}), Lines{"1 /Volumes/A"});
    }
    const Lines listBack{"/Volumes/OLD", "/Volumes/A"};
    m_look->Listed(nSearch, {"/Volumes/A"}, bBack ? listBack : Lines{"/Volumes/OLD"});
    if (bNotice) {
        QVERIFY(Mounts("/Volumes/A"));
        QCOMPARE(Look(listBack), Lines());
    } else {
        QCOMPARE(Look(listBack), Lines{"0 /Volumes/A"});
        QVERIFY(!Mounts("/Volumes/A"));
    }
    // A search that begins now finds it as it is.
    QVERIFY(Unmounts("/Volumes/A"));
    Finds({"/Volumes/A"});
    QVERIFY(!Mounts("/Volumes/A"));
}

void tst_CMountLook::aVolumeThatWentDuringTheSearch_data()
{
    QTest::addColumn<bool>("bNotice");
    QTest::addColumn<bool>("bBack");
    QTest::newRow("a notice tells, and it is away at the end") << true << false;
    QTest::newRow("a notice tells, and it is back at the end") << true << true;
    QTest::newRow("a look tells, and it is away at the end") << false << false;
    QTest::newRow("a look tells, and it is back at the end") << false << true;
}

void tst_CMountLook::namesThatMeanTheSame()
{
    QVERIFY(Mounts(DECOMPOSED));
    QCOMPARE(Look({"/Volumes/OLD", COMPOSED}), Lines());
    QVERIFY(Unmounts(COMPOSED));
    QCOMPARE(Look({"/Volumes/OLD", DECOMPOSED}), Lines{"0 " + DECOMPOSED}); // with the bytes that came
    QVERIFY(!Mounts(COMPOSED));
    QCOMPARE(Look({"/Volumes/OLD", COMPOSED}), Lines());
}

void tst_CMountLook::nothingIsKeptBeforeTheFirstLook()
{
    m_look.emplace();
    QVERIFY(!m_look->HasBegun());
    Finds({"/Volumes/A"});
    QVERIFY(Mounts("/Volumes/A"));
    m_look->Begin("/Volumes", {"/Volumes/OLD"});
    QVERIFY(m_look->HasBegun());
    QCOMPARE(Look({"/Volumes/OLD", "/Volumes/A"}), Lines{"0 /Volumes/A"});
}

QTEST_GUILESS_MAIN(tst_CMountLook)
#include "tst_CMountLook.moc"
