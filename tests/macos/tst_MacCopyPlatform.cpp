#include "copy/CCopyPlatform.h"
#include "macos/CFakeFiles.h"
#include "support/CTempTree.h"

#include <QTest>

/** What macOS's calls make of what the copy asks of a disk. */
class tst_MacCopyPlatform : public QObject
{
    Q_OBJECT

private slots:
    void init() { CFakeFiles::Reset(); }
    void flushOfAFileReachesTheDisk();

private:
    CTempTree m_tree;
};

void tst_MacCopyPlatform::flushOfAFileReachesTheDisk()
{
    const QString strFile = m_tree.Write("a", "text");
    const int nDescriptor = CCopyPlatform::OpenForWrite(strFile);
    QVERIFY(nDescriptor != -1);
    QVERIFY(CCopyPlatform::FlushFile(nDescriptor));
    QVERIFY(CFakeFiles::TakeCalls().contains("F_FULLFSYNC " + strFile));
}

QTEST_MAIN(tst_MacCopyPlatform)
#include "tst_MacCopyPlatform.moc"
