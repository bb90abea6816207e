#include "flow/CLateFlush.h"

#include <QTest>
#include <QVector>

#include <cerrno>
#include <fcntl.h>

static std::shared_ptr<const CDescriptor> Open()
{
    return std::make_shared<const CDescriptor>(open("/dev/null", O_WRONLY | O_CLOEXEC));
}

/** Small files that wait for a flush. */
class tst_CLateFlush : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void eachFailureIsToldToItsFile();
    void filesAreFlushedOnce();
    void fileThatIsNotWholeIsForgotten();
    void fileThatWasNeverBookedIsReplaced();
    void bookingIsOfTheNewestOnly();
    void othersTakeThemAll();
    void nobodyTakesThemWhileTheyAreFlushed();

private:
    std::shared_ptr<const CDescriptor> Add(const char* pszName);
    QVector<int> Flush(const QVector<int>& listError = {});

    CLateFlush m_late;
    QStringList m_listLost;
};

void tst_CLateFlush::init()
{
    m_late.Take();
    m_listLost.clear();
}

/** Adds a file and books it. */
std::shared_ptr<const CDescriptor> tst_CLateFlush::Add(const char* pszName)
{
    auto pFile = Open();
    m_late.Add(pFile);
    m_late.Booked(
        [this, pszName](int nError) { m_listLost.append(QString("%1: %2").arg(pszName).arg(nError)); });
    return pFile;
}

/** The descriptors that were flushed; listError has what came of them. */
QVector<int> tst_CLateFlush::Flush(const QVector<int>& listError)
{
    QVector<int> listFlushed;
    m_late.Flush([&](int nDescriptor) {
        listFlushed.append(nDescriptor);
        return listError.value(listFlushed.size() - 1);
    });
    return listFlushed;
}

void tst_CLateFlush::eachFailureIsToldToItsFile()
{
    const auto pOne = Add("one");
    const auto pTwo = Add("two");
    const auto pThree = Add("three");
    QCOMPARE(m_late.Count(), 3);
    QCOMPARE(Flush({EIO, 0, ENOSPC}), QVector<int>({pOne->Get(), pTwo->Get(), pThree->Get()}));
    QCOMPARE(m_listLost, QStringList({QString("one: %1").arg(EIO), QString("three: %1").arg(ENOSPC)}));
}

void tst_CLateFlush::filesAreFlushedOnce()
{
    std::weak_ptr<const CDescriptor> pFile = Add("one");
    QCOMPARE(Flush().size(), 1);
    QVERIFY(pFile.expired()); // closed
    QCOMPARE(m_late.Count(), 0);
    QCOMPARE(Flush(), QVector<int>());
}

void tst_CLateFlush::fileThatIsNotWholeIsForgotten()
{
    const auto pOne = Add("one");
    m_late.Add(Open());
    m_late.Booked(nullptr);
    QCOMPARE(Flush({EIO}), QVector<int>({pOne->Get()}));
    QCOMPARE(m_listLost.size(), 1);
}

void tst_CLateFlush::fileThatWasNeverBookedIsReplaced()
{
    m_late.Add(Open());
    const auto pAnew = Add("anew");
    QCOMPARE(Flush({EIO}), QVector<int>({pAnew->Get()}));
    QCOMPARE(m_listLost, QStringList(QString("anew: %1").arg(EIO)));
}

/** A large file after it, which does not wait, is booked, too. */
void tst_CLateFlush::bookingIsOfTheNewestOnly()
{
    const auto pOne = Add("one");
    m_late.Booked(nullptr);
    m_late.Booked([this](int) { m_listLost.append("another"); });
    QCOMPARE(Flush({EIO}), QVector<int>({pOne->Get()}));
    QCOMPARE(m_listLost, QStringList(QString("one: %1").arg(EIO)));
}

void tst_CLateFlush::othersTakeThemAll()
{
    const auto pOne = Add("one");
    const auto pNotBooked = Open();
    m_late.Add(pNotBooked);
    const std::optional<CLateFlush::Files> listFile = m_late.Take();
    QVERIFY(listFile.has_value());
    QCOMPARE(int(listFile->size()), 2);
    QCOMPARE(listFile->at(0).get(), pOne.get());
    QCOMPARE(listFile->at(1).get(), pNotBooked.get());
    m_late.Booked(nullptr);
    QCOMPARE(Flush(), QVector<int>());
    QVERIFY(m_late.Take().has_value());
}

void tst_CLateFlush::nobodyTakesThemWhileTheyAreFlushed()
{
    Add("one");
    bool bTaken = true;
    m_late.Flush([&](int) {
        bTaken = m_late.Take().has_value();
        return 0;
    });
    QVERIFY(!bTaken);
    QVERIFY(m_late.Take().has_value());
}

QTEST_GUILESS_MAIN(tst_CLateFlush)
#include "tst_CLateFlush.moc"
