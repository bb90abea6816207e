#include "copy/CCloudStandIn.h"
#include "copy/CCopyText.h"
#include "copy/CMadeRescue.h"

static const QByteArray LIST = QByteArray("bplist00\xd3\x01\x02", 11) + QByteArray(170, 'x');
static const QString SENTENCE = "Its contents are only in iCloud, not on this Mac.";

/** Files that macOS leaves in the place of others, which it keeps in iCloud. */
class tst_CCloudStandIn : public CMadeRescue
{
    Q_OBJECT

private slots:
    void cleanup() { ClearVolume(); }

    void names_data();
    void names();
    void contents();
    void missingFileIsNamed_data();
    void missingFileIsNamed();

private:
    QStringList Told() const;
};

void tst_CCloudStandIn::names_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<qint64>("nBytes");
    QTest::addColumn<QString>("strFile");
    QTest::newRow("a photo") << ".photo.jpg.icloud" << qint64(180) << "photo.jpg";
    QTest::newRow("one letter") << ".a.icloud" << qint64(180) << "a";
    QTest::newRow("a hidden file") << "..hidden.icloud" << qint64(180) << ".hidden";
    QTest::newRow("shown") << "photo.jpg.icloud" << qint64(180) << "";
    QTest::newRow("another end") << ".photo.jpg.cloud" << qint64(180) << "";
    QTest::newRow("no name") << ".icloud" << qint64(180) << "";
    QTest::newRow("the largest") << ".photo.jpg.icloud" << qint64(4096) << "photo.jpg";
    QTest::newRow("too large") << ".photo.jpg.icloud" << qint64(4097) << "";
}

void tst_CCloudStandIn::names()
{
    QFETCH(QString, strName);
    QFETCH(qint64, nBytes);
    QTEST(CCloudStandIn::NameOf(strName, nBytes), "strFile");
}

void tst_CCloudStandIn::contents()
{
    QVERIFY(CCloudStandIn::IsOne(LIST.constData(), LIST.size()));
    QVERIFY(CCloudStandIn::IsOne(LIST.constData(), 8));
    QVERIFY(!CCloudStandIn::IsOne(LIST.constData(), 7));
    QVERIFY(!CCloudStandIn::IsOne(nullptr, 0));
    QVERIFY(!CCloudStandIn::IsOne("bplist15", 8));
}

/** The account's items that are not whole, as "path below the volume: why". */
QStringList tst_CCloudStandIn::Told() const
{
    QStringList listTold;
    for (const STCopyItem& stItem : Account().listItem) {
        if (!stItem.bNote) {
            listTold.append(stItem.strPath.mid(m_pSource->Path().size() + 1) + ": "
                            + CCopyText::Reason(stItem));
        }
    }
    listTold.sort();
    return listTold;
}

void tst_CCloudStandIn::missingFileIsNamed_data()
{
    QTest::addColumn<bool>("bComplete");
    QTest::newRow("ticked") << false;
    QTest::newRow("everything") << true;
}

void tst_CCloudStandIn::missingFileIsNamed()
{
    QFETCH(bool, bComplete);
    NEEDS_VOLUMES();
    MakeDisks(50);
    WriteFile(m_pSource->Path("not ticked"));
    WriteFile(m_pSource->Path("photos/.away.jpg.icloud"), LIST);
    WriteFile(m_pSource->Path("photos/.here.jpg.icloud"), LIST);
    WriteFile(m_pSource->Path("photos/here.jpg"), Pattern(1000));
    WriteFile(m_pSource->Path("photos/.note.txt.icloud"), "a text");
    WriteFile(m_pSource->Path("photos/.empty.icloud"));
    WriteFile(m_pSource->Path("photos/.large.icloud"), LIST + Pattern(5000));
    QVERIFY(QFile::link(".away.jpg.icloud", m_pSource->Path("photos/.link.icloud")));
    Tick({"photos"}, 1);
    CountAndCopy(bComplete);

    QCOMPARE(Told(), QStringList("photos/away.jpg: " + SENTENCE));
    const STCopyAccount stAccount = Account();
    QCOMPARE(stAccount.nProblems, 1);
    QCOMPARE(stAccount.nFiles, bComplete ? 6 : 7);
    QVERIFY(!stAccount.IsWhole());
    QCOMPARE(Content(Arrived("photos/.away.jpg.icloud")), LIST);
    QVERIFY(!QFileInfo::exists(Arrived("photos/away.jpg")));
    QCOMPARE(ProblemLines(),
             QStringList(
                 Problem(m_pSource->Path("photos/away.jpg"), "only in iCloud (0 of unknown bytes copied)")));
    QCOMPARE(ReportLines().filter(SENTENCE).size(), 1);
}

QTEST_GUILESS_MAIN(tst_CCloudStandIn)
#include "tst_CCloudStandIn.moc"
