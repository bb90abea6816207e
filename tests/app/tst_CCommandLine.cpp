#include "app/CCommandLine.h"

#include <QRegularExpression>
#include <QTest>

#include <vector>

class tst_CCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void answers_data();
    void answers();
    void leavesTheRestToQt_data();
    void leavesTheRestToQt();
    void answerThatCannotBeWrittenIsAnError();

private:
    static std::optional<int> Ask(const QByteArrayList& listArgument, std::FILE* pOut);
};

std::optional<int> tst_CCommandLine::Ask(const QByteArrayList& listArgument, std::FILE* pOut)
{
    std::vector<const char*> arguments{"TarnwickMacPE"};
    for (const QByteArray& baArgument : listArgument) {
        arguments.push_back(baArgument.constData());
    }
    return CCommandLine::Answer(int(arguments.size()), arguments.data(), pOut);
}

static QByteArray Written(std::FILE* pOut)
{
    QByteArray baText(4096, '\0');
    std::rewind(pOut);
    baText.resize(int(std::fread(baText.data(), 1, size_t(baText.size()), pOut)));
    std::fclose(pOut);
    return baText;
}

void tst_CCommandLine::answers_data()
{
    QTest::addColumn<QByteArrayList>("listArgument");
    QTest::addColumn<QString>("strPattern");

    const QString strVersion = "^TarnwickMacPE \\d+\\.\\d+\\.\\d+\n$";
    const QString strHelp = "^Usage: TarnwickMacPE (.*\n)+.*--help.*\n.*--version.*\n(.*\n)+$";
    QTest::newRow("version") << QByteArrayList{"--version"} << strVersion;
    QTest::newRow("version, short") << QByteArrayList{"-v"} << strVersion;
    QTest::newRow("help") << QByteArrayList{"--help"} << strHelp;
    QTest::newRow("help, short") << QByteArrayList{"-h"} << strHelp;
    QTest::newRow("behind an option of Qt") << QByteArrayList{"-platform", "offscreen", "-v"} << strVersion;
    QTest::newRow("the first of both") << QByteArrayList{"-h", "-v"} << strHelp;
}

void tst_CCommandLine::answers()
{
    QFETCH(QByteArrayList, listArgument);
    QFETCH(QString, strPattern);
    std::FILE* pOut = std::tmpfile();
    QVERIFY(pOut);
    const std::optional<int> status = Ask(listArgument, pOut);
    const QByteArray baText = Written(pOut);
    QVERIFY(status && *status == 0);
    QVERIFY2(QRegularExpression(strPattern).match(baText).hasMatch(), baText.constData());
}

void tst_CCommandLine::leavesTheRestToQt_data()
{
    QTest::addColumn<QByteArrayList>("listArgument");

    QTest::newRow("nothing") << QByteArrayList{};
    QTest::newRow("an option of Qt") << QByteArrayList{"-platform", "offscreen"};
    QTest::newRow("nearly") << QByteArrayList{"--versions", "-version", "help", ""};
}

void tst_CCommandLine::leavesTheRestToQt()
{
    QFETCH(QByteArrayList, listArgument);
    std::FILE* pOut = std::tmpfile();
    QVERIFY(pOut);
    const std::optional<int> status = Ask(listArgument, pOut);
    QCOMPARE(Written(pOut), QByteArray());
    QVERIFY(!status);
}

void tst_CCommandLine::answerThatCannotBeWrittenIsAnError()
{
    std::FILE* pOut = std::fopen("/dev/null", "r");
    QVERIFY(pOut);
    QCOMPARE(Ask({"--version"}, pOut).value_or(-1), 1);
    std::fclose(pOut);
}

QTEST_MAIN(tst_CCommandLine)
#include "tst_CCommandLine.moc"
