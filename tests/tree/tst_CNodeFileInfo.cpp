#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"
#include "tree/CDirNode.h"
#include "tree/CNodeFileInfo.h"

#include <QTest>

#include <functional>
#include <memory>

/** What is asked of a file, in the order of ANSWERS, in words. */
template <typename Info> static QStringList Answers(const Info& info)
{
    const auto fnYes = [](bool bYes) { return bYes ? QString("yes") : QString("no"); };
    const auto fnTime = [](const QDateTime& time) { return time.toString(Qt::ISODateWithMs); };
    return {info.filePath(),
            info.fileName(),
            info.absoluteFilePath(),
            info.canonicalFilePath(),
            info.path(),
            info.absolutePath(),
            info.canonicalPath(),
            info.dir().path(),
            info.absoluteDir().path(),
            info.baseName(),
            info.completeBaseName(),
            info.suffix(),
            info.completeSuffix(),
            info.bundleName(),
            fnYes(info.isNativePath()),
            fnYes(info.isRelative()),
            fnYes(info.isAbsolute()),
            fnYes(info.isRoot()),
            fnYes(info.exists()),
            fnYes(info.isFile()),
            fnYes(info.isDir()),
            fnYes(info.isSymLink()),
            fnYes(info.isSymbolicLink()),
            fnYes(info.isShortcut()),
            fnYes(info.isJunction()),
            info.symLinkTarget(),
            fnYes(info.isHidden()),
            fnYes(info.isBundle()),
            fnYes(info.isReadable()),
            fnYes(info.isWritable()),
            fnYes(info.isExecutable()),
            QString::number(info.permissions()),
            fnYes(info.permission(QFile::ReadOther)),
            info.owner(),
            QString::number(info.ownerId()),
            info.group(),
            QString::number(info.groupId()),
            QString::number(info.size()),
            fnTime(info.birthTime()),
            fnTime(info.metadataChangeTime()),
            fnTime(info.lastModified()),
            fnTime(info.lastRead()),
            fnTime(info.fileTime(QFile::FileModificationTime))};
}

class tst_CNodeFileInfo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void cleanup() { m_pTree.reset(); }

    void answersAsQFileInfo_data();
    void answersAsQFileInfo();
    void ofNoFile();
    void copiesNeedNoNode();
    void givenKeepsWhatItHasRead();
    void listedReadsAnew();
    void assignment();
    void becomesAbsolute();
    void sameFile();
    void standsForAQFileInfo();

private:
    CNodeFileInfo Listed(const QString& strEntry) const { return {m_pTree->Path() + '/', strEntry}; }

    std::unique_ptr<CTempTree> m_pTree;
};

void tst_CNodeFileInfo::init()
{
    m_pTree = std::make_unique<CTempTree>();
    m_pTree->Write("archive.tar.gz", "12345");
    m_pTree->Fill({"README", ".hidden", "folder.d/file"});
    m_pTree->Link("to folder", "folder.d");
    m_pTree->Link("broken", "nowhere");
    m_pTree->WriteBytesName("caf\xe9.txt", "1");
}

void tst_CNodeFileInfo::answersAsQFileInfo_data()
{
    QTest::addColumn<QByteArray>("baName");
    for (const QByteArray baName :
         {"archive.tar.gz", "README", ".hidden", "folder.d", "to folder", "broken", "gone", "caf\xe9.txt"}) {
        QTest::newRow(baName.toPercentEncoding().constData()) << baName;
    }
}

void tst_CNodeFileInfo::answersAsQFileInfo()
{
    QFETCH(QByteArray, baName);
    const QString strName = QFile::decodeName(baName);
    const QFileInfo info(m_pTree->Path(strName));
    const QStringList listExpected = Answers(info);
    QCOMPARE(Answers(Listed(strName)), listExpected);
    QCOMPARE(Answers(CNodeFileInfo(info)), listExpected);
    const QFileInfo relative(QDir::current().relativeFilePath(m_pTree->Path(strName)));
    QVERIFY(relative.isRelative());
    QCOMPARE(Answers(CNodeFileInfo(relative)), Answers(relative));
}

void tst_CNodeFileInfo::ofNoFile()
{
    const CNodeFileInfo none;
    QCOMPARE(Answers(none), Answers(QFileInfo()));
    QCOMPARE(Answers(CNodeFileInfo(none)), Answers(QFileInfo()));
}

void tst_CNodeFileInfo::copiesNeedNoNode()
{
    auto pFolder = std::make_unique<CDirNode>(QFileInfo(m_pTree->Path()), nullptr);
    pFolder->LoadChild();
    const CDirNode& child = *pFolder->Child(3);
    QCOMPARE(child.m_strName, QString("archive.tar.gz"));
    const QFileInfo info = child.m_fileInfo;
    const CNodeFileInfo copy = child.m_fileInfo;
    const std::function<qint64()> fnSize = [copy] { return copy.size(); };
    pFolder->RemoveAllBelow();
    pFolder.reset();
    QCOMPARE(info, QFileInfo(m_pTree->Path("archive.tar.gz")));
    QCOMPARE(copy.filePath(), m_pTree->Path("archive.tar.gz"));
    QCOMPARE(fnSize(), qint64(5));
}

void tst_CNodeFileInfo::givenKeepsWhatItHasRead()
{
    CNodeFileInfo given(QFileInfo(m_pTree->Path("archive.tar.gz")));
    QCOMPARE(given.size(), qint64(5));
    m_pTree->Write("archive.tar.gz", "1234567");
    const CNodeFileInfo copy(given);
    const QFileInfo info = given;
    QCOMPARE(given.size(), qint64(5));
    QCOMPARE(copy.size(), qint64(5));
    QCOMPARE(info.size(), qint64(5));
    given.refresh();
    QCOMPARE(given.size(), qint64(7));
    QCOMPARE(info.size(), qint64(5));
}

void tst_CNodeFileInfo::listedReadsAnew()
{
    const CNodeFileInfo listed = Listed("archive.tar.gz");
    const QFileInfo info = listed;
    QCOMPARE(info.size(), qint64(5));
    m_pTree->Write("archive.tar.gz", "1234567");
    QCOMPARE(listed.size(), qint64(7));
    QCOMPARE(info.size(), qint64(5));
}

void tst_CNodeFileInfo::assignment()
{
    const QString strReadMe = m_pTree->Path("README");
    CNodeFileInfo info;
    info = Listed("README");
    QCOMPARE(info.filePath(), strReadMe);
    info = QFileInfo("relative/file");
    QCOMPARE(info.filePath(), QString("relative/file"));
    const CNodeFileInfo& same = info;
    info = same;
    QCOMPARE(info.filePath(), QString("relative/file"));
    info.setFile(strReadMe);
    QCOMPARE(info.filePath(), strReadMe);
    info.refresh();
    const CNodeFileInfo none;
    info = none;
    QVERIFY(info.filePath().isEmpty());
    info = CNodeFileInfo(QFileInfo(strReadMe));
    CNodeFileInfo copy = Listed("broken");
    copy = info;
    QCOMPARE(copy.fileName(), QString("README"));
}

void tst_CNodeFileInfo::sameFile()
{
    const QFileInfo info(m_pTree->Path("README"));
    QVERIFY(Listed("README") == info);
    QVERIFY(info == Listed("README"));
    QVERIFY(Listed("README") == CNodeFileInfo(info));
    QVERIFY(Listed("README") != Listed("archive.tar.gz"));
    QVERIFY(!(Listed("README") != info));
}

void tst_CNodeFileInfo::becomesAbsolute()
{
    CNodeFileInfo info(QFileInfo("relative"));
    QVERIFY(info.makeAbsolute());
    QCOMPARE(info.filePath(), QFileInfo("relative").absoluteFilePath());
    QVERIFY(!info.makeAbsolute());
    CNodeFileInfo listed = Listed("README");
    QVERIFY(!listed.makeAbsolute());
    QCOMPARE(listed.filePath(), m_pTree->Path("README"));
    listed.setFile(QDir(m_pTree->Path()), "folder.d");
    QCOMPARE(listed.filePath(), m_pTree->Path("folder.d"));
}

// Wherever a QFileInfo is taken.
void tst_CNodeFileInfo::standsForAQFileInfo()
{
    const QFileInfo expected(m_pTree->Path("README"));
    const CNodeFileInfo listed = Listed("README");
    QCOMPARE(listed, expected);
    QCOMPARE(expected, QFileInfo(listed));
    const QFileInfo& reference = listed;
    QCOMPARE(reference, expected);
    QFileInfo assigned;
    assigned = listed;
    QCOMPARE(assigned, expected);
    const QFileInfo chosen = assigned.exists() ? listed : QFileInfo();
    QCOMPARE(chosen, expected);
    QFileInfoList listInfo{listed};
    listInfo << listed;
    listInfo.append(listed);
    QCOMPARE(listInfo, QFileInfoList({expected, expected, expected}));
    const auto fnName
        = [](const QFileInfo& first, QFileInfo second) { return first.fileName() + second.suffix(); };
    QCOMPARE(fnName(listed, listed), QString("README"));
    QString strText;
    QDebug(&strText) << listed;
    QVERIFY(strText.contains("README"));
    const CDirNode node(listed, nullptr);
    QCOMPARE(node.m_fileInfo, expected);
}

QTEST_GUILESS_MAIN(tst_CNodeFileInfo)
#include "tst_CNodeFileInfo.moc"
