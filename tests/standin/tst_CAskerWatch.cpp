#include "caffeinate/CAskerWatch.h"

#include <QTest>

#include <fstream>
#include <iterator>
#include <unistd.h>

class tst_CAskerWatch : public QObject
{
    Q_OBJECT

private slots:
    void isShell_data()
    {
        QTest::addColumn<QByteArray>("baName");
        QTest::addColumn<bool>("bShell");
        for (const char* pName : {"sh", "bash", "dash", "ash", "ksh", "zsh", "busybox", "-bash", "-sh"}) {
            QTest::newRow(pName) << QByteArray(pName) << true;
        }
        for (const char* pName :
             {"TarnwickMacPE", "bashful", "rbashx", "sshd", "init", "--sh", "-", "/bin/sh", "SH"}) {
            QTest::newRow(pName) << QByteArray(pName) << false;
        }
        QTest::newRow("(empty)") << QByteArray() << false;
    }

    void isShell()
    {
        QFETCH(QByteArray, baName);
        QTEST(CAskerWatch::IsShell(baName.toStdString()), "bShell");
    }

    void parentOf_data()
    {
        QTest::addColumn<QByteArray>("baStat");
        QTest::addColumn<int>("nParent");
        QTest::newRow("plain") << QByteArray("123 (bash) S 45 123 1 0") << 45;
        QTest::newRow("blank in the name") << QByteArray("123 (my shell) S 45 1") << 45;
        QTest::newRow("brackets in the name") << QByteArray("123 (a) R 7 (b)) S 45 1") << 45;
        QTest::newRow("line end in the name") << QByteArray("123 (a\nb) S 45 1") << 45;
        QTest::newRow("outside of this view") << QByteArray("123 (bash) S 0 1") << 0;
        QTest::newRow("empty") << QByteArray() << 0;
        QTest::newRow("cut short") << QByteArray("123 (bash) S") << 0;
        QTest::newRow("cut shorter") << QByteArray("123 (bash") << 0;
    }

    void parentOf()
    {
        QFETCH(QByteArray, baStat);
        QTEST(int(CAskerWatch::ParentOf(baStat.toStdString())), "nParent");
    }

    void parentOfThisProcess()
    {
        std::ifstream file("/proc/self/stat");
        const std::string strStat((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        QCOMPARE(CAskerWatch::ParentOf(strStat), getppid());
    }
};

QTEST_GUILESS_MAIN(tst_CAskerWatch)
#include "tst_CAskerWatch.moc"
