#include "caffeinate/COptions.h"

#include <QtTest>

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
        QTest::newRow(*pArguments == '\0' ? "(none)" : pArguments)
            << QString::fromLatin1(pArguments) << QString::fromLatin1(pWhat) << nSeconds;
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
    const auto options = Parse(strArguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QVERIFY(options.has_value());
    QTEST(QString::fromStdString(options->strWhat), "strWhat");
    QTEST(options->seconds ? qint64(*options->seconds) : qint64(-1), "nSeconds");
}

void tst_COptions::notUnderstood_data()
{
    QTest::addColumn<QStringList>("listArgument");
    const QString strTime = QStringLiteral("-t");
    QTest::newRow("unknown flag") << QStringList{QStringLiteral("-x")};
    QTest::newRow("unknown flag among others") << QStringList{QStringLiteral("-ux")};
    QTest::newRow("long flag") << QStringList{QStringLiteral("--help")};
    QTest::newRow("flag without its time") << QStringList{QStringLiteral("-u"), strTime};
    QTest::newRow("empty time") << QStringList{strTime, QString()};
    QTest::newRow("time of zero") << QStringList{strTime, QStringLiteral("0")};
    QTest::newRow("negative time") << QStringList{strTime, QStringLiteral("-1")};
    QTest::newRow("time with a unit") << QStringList{strTime, QStringLiteral("5s")};
    QTest::newRow("time with a blank") << QStringList{strTime, QStringLiteral(" 5")};
    QTest::newRow("time with a fraction") << QStringList{strTime, QStringLiteral("1.5")};
    QTest::newRow("time one too large") << QStringList{strTime, QStringLiteral("4294967296")};
    QTest::newRow("time far too large") << QStringList{strTime, QString(100, QLatin1Char('9'))};
    QTest::newRow("command to run") << QStringList{QStringLiteral("-u"), QStringLiteral("true")};
    QTest::newRow("flag behind a command") << QStringList{QStringLiteral("true"), QStringLiteral("-u")};
}

void tst_COptions::notUnderstood()
{
    QFETCH(QStringList, listArgument);
    QVERIFY(!Parse(listArgument).has_value());
}

QTEST_GUILESS_MAIN(tst_COptions)
#include "tst_COptions.moc"
