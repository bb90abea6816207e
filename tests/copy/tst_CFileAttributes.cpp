#include "copy/CFileAttributes.h"
#include "support/CTempTree.h"

#include <QFile>
#include <QtTest>

#include <cerrno>
#include <memory>
#include <sys/xattr.h>

/** Extended attributes of files where the disk holds them. */
class tst_CFileAttributes : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_pTree.reset(); }

    void valuesArriveAsTheyAre_data();
    void valuesArriveAsTheyAre();
    void onlyTheUsersAreNamed();
    void aLinkIsNotFollowed();
    void whatIsNotThereGivesErrno();
    void nameOfCopy_data();
    void nameOfCopy();

private:
    std::unique_ptr<CTempTree> m_pTree;
    QByteArray m_baFile;
};

void tst_CFileAttributes::init()
{
    m_pTree = std::make_unique<CTempTree>();
    m_baFile = QFile::encodeName(m_pTree->Write("file"));
    if (lsetxattr(m_baFile.constData(), "user.first", "1", 1, 0) != 0) {
        QSKIP("no extended attributes here");
    }
}

void tst_CFileAttributes::valuesArriveAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("baValue");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("bytes") << QByteArray("a\0\xff", 3);
    QTest::newRow("long") << QByteArray(3000, 'x');
}

void tst_CFileAttributes::valuesArriveAsTheyAre()
{
    QFETCH(QByteArray, baValue);
    QVERIFY(CFileAttributes::Set(m_baFile, "user.x", baValue));
    QCOMPARE(CFileAttributes::Value(m_baFile, "user.x").value_or("none"), baValue);
    char szValue[4000] = {};
    const ssize_t nSize = lgetxattr(m_baFile.constData(), "user.x", szValue, sizeof(szValue));
    QCOMPARE(QByteArray(szValue, int(nSize)), baValue);
}

void tst_CFileAttributes::onlyTheUsersAreNamed()
{
    if (lsetxattr(m_baFile.constData(), "trusted.x", "1", 1, 0) != 0) {
        QSKIP("only the administrator may set others");
    }
    QCOMPARE(CFileAttributes::Names(m_baFile).value_or(QVector<QByteArray>()),
             QVector<QByteArray>{"user.first"});
}

void tst_CFileAttributes::aLinkIsNotFollowed()
{
    const QByteArray baLink = QFile::encodeName(m_pTree->Link("link", "file"));
    QVERIFY(CFileAttributes::Names(baLink).has_value());
    QVERIFY(CFileAttributes::Names(baLink)->isEmpty());
}

void tst_CFileAttributes::whatIsNotThereGivesErrno()
{
    QVERIFY(!CFileAttributes::Names(m_baFile + "x"));
    QCOMPARE(errno, ENOENT);
    QVERIFY(!CFileAttributes::Value(m_baFile, "user.none"));
    QCOMPARE(errno, ENODATA);
}

void tst_CFileAttributes::nameOfCopy_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QByteArray>("baCopy");
    QTest::newRow("ours") << QByteArray("user.osx.a") << QByteArray("user.osx.a");
    QTest::newRow("a Mac's") << QByteArray("osx.com.apple.FinderInfo")
                             << QByteArray("user.com.apple.FinderInfo");
}

void tst_CFileAttributes::nameOfCopy()
{
    QFETCH(QByteArray, baName);
    QTEST(CFileAttributes::NameOfCopy(baName), "baCopy");
}

QTEST_APPLESS_MAIN(tst_CFileAttributes)
#include "tst_CFileAttributes.moc"
