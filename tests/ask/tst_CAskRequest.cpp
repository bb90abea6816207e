#include "ask/CAskRequest.h"

#include <QTest>

Q_DECLARE_METATYPE(ENAskScreen)

class tst_CAskRequest : public QObject
{
    Q_OBJECT

private slots:
    void screens_data();
    void screens();
    void valuesArrive();
    void flagsArriveOneByOne();
    void valuesAreTakenAsTheyAre();
    void wrongLine_data();
    void wrongLine();
};

void tst_CAskRequest::screens_data()
{
    QTest::addColumn<QString>("strWord");
    QTest::addColumn<ENAskScreen>("enScreen");
    QTest::newRow("wait") << QString("wait") << ENAskScreen::WAIT;
    QTest::newRow("password") << QString("password") << ENAskScreen::PASSWORD;
    QTest::newRow("source") << QString("source") << ENAskScreen::SOURCE;
    QTest::newRow("end") << QString("end") << ENAskScreen::END;
    QTest::newRow("again") << QString("again") << ENAskScreen::AGAIN;
    QTest::newRow("missing") << QString("missing") << ENAskScreen::MISSING;
}

void tst_CAskRequest::screens()
{
    QFETCH(QString, strWord);
    const STParsedRequest stParsed = CAskRequest::Parse({strWord});
    QVERIFY2(stParsed.stRequest, qPrintable(stParsed.strError));
    QFETCH(ENAskScreen, enScreen);
    QVERIFY(stParsed.stRequest->enScreen == enScreen);
    QCOMPARE(stParsed.stRequest->nTry, 1);
    QCOMPARE(stParsed.stRequest->nSize, qint64(-1));
    QCOMPARE(stParsed.stRequest->strLayout, QString("us"));
    QVERIFY(!stParsed.stRequest->bReadsMedium && !stParsed.stRequest->bUnsaved
            && !stParsed.stRequest->bWritable);
}

void tst_CAskRequest::valuesArrive()
{
    const auto stRequest = CAskRequest::Parse({"password", "--name", "Daten", "--kind", "FileVault", "--size",
                                               "500107862016", "--disk", "Apple SSD", "--try", "3",
                                               "--layout", "ch(fr)", "--systems", "macOS", "--reads-medium"})
                               .stRequest;
    QVERIFY(stRequest);
    QCOMPARE(stRequest->strName, QString("Daten"));
    QVERIFY(stRequest->enKind == ENEncryption::FILE_VAULT);
    QCOMPARE(stRequest->nSize, qint64(500107862016));
    QCOMPARE(stRequest->strDisk, QString("Apple SSD"));
    QCOMPARE(stRequest->nTry, 3);
    QCOMPARE(stRequest->strLayout, QString("ch(fr)"));
    QCOMPARE(stRequest->strSystems, QString("macOS"));
    QVERIFY(stRequest->bReadsMedium);
}

void tst_CAskRequest::flagsArriveOneByOne()
{
    const auto fnFlags = [](const char* pFlag) {
        const auto stRequest = CAskRequest::Parse({"end", pFlag}).stRequest;
        return stRequest ? QVector<bool>{stRequest->bReadsMedium, stRequest->bUnsaved, stRequest->bWritable}
                         : QVector<bool>();
    };
    QCOMPARE(fnFlags("--reads-medium"), (QVector<bool>{true, false, false}));
    QCOMPARE(fnFlags("--unsaved"), (QVector<bool>{false, true, false}));
    QCOMPARE(fnFlags("--writable"), (QVector<bool>{false, false, true}));
}

// A disk may be called like an option, or not at all.
void tst_CAskRequest::valuesAreTakenAsTheyAre()
{
    const auto stRequest = CAskRequest::Parse({"source", "--name", "--size", "--disk", ""}).stRequest;
    QVERIFY(stRequest);
    QCOMPARE(stRequest->strName, QString("--size"));
    QCOMPARE(stRequest->strDisk, QString());
}

void tst_CAskRequest::wrongLine_data()
{
    QTest::addColumn<QStringList>("listArgument");
    QTest::addColumn<QString>("strError");
    const auto row = [](const QStringList& listArgument, const char* pError) {
        QTest::newRow(qPrintable("line: " + listArgument.join(' '))) << listArgument << QString(pError);
    };
    row({}, "nothing to ask: wait, password, source, missing, end or again");
    row({"--help"}, "unknown question: --help");
    row({"Wait"}, "unknown question: Wait");
    row({"wait", "more"}, "unknown option: more");
    row({"wait", "--password", "x"}, "unknown option: --password");
    row({"password", "--name"}, "no value for --name");
    row({"password", "--kind", "luks"}, "wrong value for --kind: luks");
    row({"password", "--size", "1 GB"}, "wrong value for --size: 1 GB");
    row({"password", "--size", "-1"}, "wrong value for --size: -1");
    row({"password", "--try", "0"}, "wrong value for --try: 0");
    row({"password", "--try", "4"}, "wrong value for --try: 4");
    row({"password", "--layout", ""}, "wrong value for --layout: ");
    row({"password", "--layout", "../us"}, "wrong value for --layout: ../us");
    row({"password", "--layout", "us\n"}, "wrong value for --layout: us\n");
}

void tst_CAskRequest::wrongLine()
{
    QFETCH(QStringList, listArgument);
    const STParsedRequest stParsed = CAskRequest::Parse(listArgument);
    QVERIFY(!stParsed.stRequest);
    QTEST(stParsed.strError, "strError");
}

QTEST_APPLESS_MAIN(tst_CAskRequest)
#include "tst_CAskRequest.moc"
