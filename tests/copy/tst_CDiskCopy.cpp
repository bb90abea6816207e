#include "support/CCopyBed.h"
#include "support/CMadeMac.h"
#include "support/CToolCompare.h"

#include <QFile>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/** Copies of a folder that is ticked as a whole, listed or not. */
class tst_CDiskCopy : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clear(); }

    void aWholeVolumeIsTheSameAfterwards();

private:
    /** Ticks "src/" + strName as a whole; the tree knows nothing of what is in it. */
    void Tick(const QString& strName) { m_pNodes->Add(Source(strName)); }

    QStringList Items() const;
};

void tst_CDiskCopy::init()
{
    Make();
    m_pNodes->Root()->m_bComplete = true;
}

/** The lines of the account, as "place: kind detail". */
QStringList tst_CDiskCopy::Items() const
{
    QStringList listItem;
    for (const STCopyItem& stItem : Account().listItem) {
        listItem.append(
            QString("%1: %2 %3").arg(stItem.strPath).arg(int(stItem.enProblem)).arg(stItem.strDetail));
    }
    return listItem;
}

void tst_CDiskCopy::aWholeVolumeIsTheSameAfterwards()
{
    NEEDS_COMPARE_TOOLS();
    CMadeMac mac(m_pTree->MkDir("src/Mac"), CMadeMac::LEAST_FILES);
    mac.PlantLinksOut();
    Tick("Mac");
    Run(mac.Made().nBytes);
    QCOMPARE(Items(), QStringList());
    QCOMPARE(Account().nBytes, mac.Made().nBytes);
    QCOMPARE(Account().nFiles, mac.Made().nFiles + mac.Made().nLinks);
    QCOMPARE(CToolCompare::RsyncDifferences(Source("Mac"), Copy("Mac"), mac.Made().bAttributes),
             QStringList());
    QCOMPARE(CToolCompare::DiffDifferences(Source("Mac"), Copy("Mac")), QStringList());
}

QTEST_GUILESS_MAIN(tst_CDiskCopy)
#include "tst_CDiskCopy.moc"
