#include "caffeinate/COptions.h"

#include <QTest>

#include <vector>

static std::optional<STOptions> Parse(const QStringList& listArgument)
{
    std::vector<QByteArray> listText = {"caffeinate"};
    for (const QString& strArgument : listArgument) {
        listText.push_back(strArgument.toUtf8());
    }
    std::vector<char*> listPointer;
    for (QByteArray& baText : listText) {
        listPointer.push_back(baText.data());
    }
    listPointer.push_back(nullptr);
    return COptions::Parse(int(listText.size()), listPointer.data());
}

class tst_COptions : public QObject
{
    Q_OBJECT

private slots:
    void understood_data();
    void understood();
    void notUnderstood_data();
    void notUnderstood();
};

void tst_COptions::understood_data()
{
    QTest::addColumn<QString>("strArguments");
    QTest::addColumn<QString>("strWhat");
    QTest::addColumn<qint64>("nSeconds"); // -1 is no time
    const auto row = [](const char* pArguments, const char* pWhat, qint64 nSeconds) {
        QTest::newRow(*pArguments == '\0' ? "(none)" : pArguments) << pArguments << pWhat << nSeconds;
    };
    row("-u -t 2592000", "sleep:idle", 2592000);
    row("-ut 7", "sleep:idle", 7);
    row("-t7 -u", "sleep:idle", 7);
    row("-u", "sleep:idle", 5);
    row("", "idle", -1);
    row("-t 7", "idle", 7);
    row("-d", "idle", -1);
    row("-i", "idle", -1);
    row("-m", "idle", -1);
    row("-s", "sleep", -1);
    row("-s -t 1", "sleep", 1);
    row("-is", "sleep:idle", -1);
    row("-s -d", "sleep:idle", -1);
    row("-sm", "sleep:idle", -1);
    row("-dimsu", "sleep:idle", 5);
    row("-u -u -t 1 -t 2", "sleep:idle", 2);
    row("-t 0007", "idle", 7);
    row("-t 4294967295", "idle", 4294967295);
    row("-i --", "idle", -1);
}

void tst_COptions::understood()
{
    QFETCH(QString, strArguments);
    const auto options = Parse(strArguments.split(' ', Qt::SkipEmptyParts));
    QVERIFY(options.has_value());
    QTEST(QString::fromStdString(options->strWhat), "strWhat");
    QTEST(options->seconds ? qint64(*options->seconds) : qint64(-1), "nSeconds");
}

void tst_COptions::notUnderstood_data()
{
    QTest::addColumn<QStringList>("listArgument");
    const auto row = [](const char* pszName, const QStringList& listArgument) {
        QTest::newRow(pszName) << listArgument;
    };
    row("unknown flag", {"-x"});
    row("unknown flag among others", {"-ux"});
    row("long flag", {"--help"});
    row("flag without its time", {"-u", "-t"});
    row("empty time", {"-t", ""});
    row("time of zero", {"-t", "0"});
    row("negative time", {"-t", "-1"});
    row("time with a unit", {"-t", "5s"});
    row("time with a blank", {"-t", " 5"});
    row("time with a fraction", {"-t", "1.5"});
    row("time one too large", {"-t", "4294967296"});
    row("time far too large", {"-t", QString(100, '9')});
    row("command to run", {"-u", "true"});
    row("flag behind a command", {"true", "-u"});
}

void tst_COptions::notUnderstood()
{
    QFETCH(QStringList, listArgument);
    QVERIFY(!Parse(listArgument).has_value());
}

QTEST_GUILESS_MAIN(tst_COptions)
#include "tst_COptions.moc"
