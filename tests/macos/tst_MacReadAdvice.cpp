#include "flow/CReadAdvice.h"

#include <QByteArrayList>
#include <QMap>
#include <QTest>
#include <QVector>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/sysctl.h>

static QByteArrayList s_listCall;
static bool s_bTaken = true;
static QVector<struct statfs> s_listVolume;
static QMap<QByteArray, unsigned> s_mapNumber;
static bool s_bWaits = false; // for disks

extern "C" int FakeFcntl(int nDescriptor, int nCall, ...)
{
    va_list arguments;
    va_start(arguments, nCall);
    const QByteArray baFile = QByteArray::number(nDescriptor) + ": ";
    if (nCall == F_RDADVISE) {
        const auto* pAdvice = va_arg(arguments, const struct radvisory*);
        s_listCall.append(baFile + "read " + QByteArray::number(qint64(pAdvice->ra_offset)) + '+'
                          + QByteArray::number(pAdvice->ra_count));
    } else if (nCall == F_LOG2PHYS_EXT) {
        auto* pPlace = va_arg(arguments, struct log2phys*);
        s_listCall.append(baFile + "place of " + QByteArray::number(qint64(pPlace->l2p_devoffset)));
        pPlace->l2p_devoffset = 123456789;
    } else if (nCall == F_RDAHEAD) {
        s_listCall.append(baFile + "read ahead " + QByteArray::number(va_arg(arguments, int)));
    }
    va_end(arguments);
    return s_bTaken ? 0 : -1;
}

int getfsstat(struct statfs* pVolumes, int nBytes, int nFlags)
{
    s_bWaits = s_bWaits || nFlags != MNT_NOWAIT;
    const int nCount = qMin(nBytes / int(sizeof(struct statfs)), s_listVolume.count());
    std::copy_n(s_listVolume.constBegin(), nCount, pVolumes);
    return nCount;
}

int sysctlbyname(const char* pName, void* pOld, std::size_t* /*pOldBytes*/, void*, std::size_t)
{
    if (!s_mapNumber.contains(pName)) {
        return -1;
    }
    std::memcpy(pOld, &s_mapNumber[pName], sizeof(unsigned));
    return 0;
}

/** What macOS is told and asked of reads to come. */
class tst_MacReadAdvice : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void calls();
    void refused();
    void disks_data();
    void disks();
    void freeMemory();
};

void tst_MacReadAdvice::init()
{
    s_listCall.clear();
    s_bTaken = true;
    s_listVolume.clear();
    s_mapNumber = {{"vm.page_free_count", 1000}, {"vm.pagesize", 16384}};
}

void tst_MacReadAdvice::cleanup() { QVERIFY(!s_bWaits); }

void tst_MacReadAdvice::calls()
{
    QVERIFY(CReadAdvice::WillNeed(7, 131072, 4096));
    QCOMPARE(CReadAdvice::PlaceOf({7, 0, 1, 55, 4096}), quint64(123456789));
    CReadAdvice::StopReadAhead(8);
    QCOMPARE(CReadAdvice::IsThere(7, 0), ENThere::UNKNOWN);
    QCOMPARE(s_listCall, QByteArrayList({"7: read 131072+4096", "7: place of 0", "8: read ahead 0"}));
}

void tst_MacReadAdvice::refused()
{
    s_bTaken = false;
    QVERIFY(!CReadAdvice::WillNeed(7, 0, 4096));
    QCOMPARE(CReadAdvice::PlaceOf({7, 0, 1, 55, 4096}), quint64(55)); // its number
}

void tst_MacReadAdvice::disks_data()
{
    QTest::addColumn<QByteArray>("baType");
    QTest::addColumn<unsigned>("nFlags");
    QTest::addColumn<quint64>("nDevice");
    QTest::addColumn<bool>("bKeeps");
    QTest::newRow("disk") << QByteArray("apfs") << unsigned(MNT_LOCAL) << quint64(5) << true;
    QTest::newRow("another device") << QByteArray("apfs") << unsigned(MNT_LOCAL) << quint64(6) << false;
    QTest::newRow("network") << QByteArray("smbfs") << 0U << quint64(5) << false;
    QTest::newRow("driver in user space")
        << QByteArray("macfuse") << unsigned(MNT_LOCAL) << quint64(5) << false;
}

void tst_MacReadAdvice::disks()
{
    QFETCH(QByteArray, baType);
    QFETCH(unsigned, nFlags);
    QFETCH(quint64, nDevice);
    QFETCH(bool, bKeeps);
    struct statfs stVolume = {};
    stVolume.f_fsid.val[0] = 5;
    stVolume.f_flags = nFlags;
    qstrncpy(stVolume.f_fstypename, baType.constData(), sizeof(stVolume.f_fstypename));
    s_listVolume.append(stVolume);
    QCOMPARE(CReadAdvice::DiskOf(nDevice).bKeeps, bKeeps);
    QVERIFY(!CReadAdvice::DiskOf(nDevice).bInMemory);
    QVERIFY(!CReadAdvice::DiskOf(nDevice).bSeeks.has_value());
}

void tst_MacReadAdvice::freeMemory()
{
    QCOMPARE(CReadAdvice::FreeMemory(), qint64(16384000));
    s_mapNumber.remove("vm.pagesize");
    QCOMPARE(CReadAdvice::FreeMemory(), qint64(0));
}

QTEST_GUILESS_MAIN(tst_MacReadAdvice)
#include "tst_MacReadAdvice.moc"
