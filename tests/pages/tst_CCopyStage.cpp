#include "pages/CCopyStage.h"

#include <QStringList>
#include <QTest>

/** Every event in every situation that copies and worker can be in. */
class tst_CCopyStage : public QObject
{
    Q_OBJECT

private slots:
    void transitions_data();
    void transitions();
};

static bool Tell(CCopyStage& stage, const QString& strEvent)
{
    if (strEvent == "begin") {
        return stage.Begin();
    }
    if (strEvent == "finish") {
        return stage.Finish();
    }
    if (strEvent == "worker ended") {
        return stage.WorkerEnded();
    }
    if (strEvent == "worker left") {
        return stage.LeaveWorker();
    }
    if (strEvent == "stop") {
        return stage.Stop();
    }
    return stage.Remove();
}

// The stage and whose the worker is, as the rows have them.
static QString Described(const CCopyStage& stage)
{
    static const char* const STAGES[] = {"none", "waiting", "copying", "refused", "ended", "removed"};
    const char* const pWorker = stage.IsWorkerOfEarlierCopy() ? "earlier" : "own";
    return QString("%1 %2").arg(STAGES[int(stage.Stage())], stage.IsWorkerBusy() ? pWorker : "free");
}

void tst_CCopyStage::transitions_data()
{
    QTest::addColumn<QString>("strBefore"); // events that lead to the row's name
    QTest::addColumn<QString>("begin"); // the events; "!" where there is something to do
    QTest::addColumn<QString>("finish");
    QTest::addColumn<QString>("worker ended");
    QTest::addColumn<QString>("stop");
    QTest::addColumn<QString>("remove");
    QTest::addColumn<QString>("worker left");
    const auto row = [](const char* pName, const char* pBefore, const QStringList& listAfter) {
        QTestData& data = QTest::newRow(pName) << QString(pBefore);
        for (const QString& strAfter : listAfter) {
            data << strAfter;
        }
    };
    row("none free", "",
        {"copying own!", "ended free!", "none free", "none free", "removed free!", "none free"});
    row("copying own", "begin",
        {"waiting earlier", "ended own!", "refused free", "copying own", "removed own!", "ended free"});
    row("waiting earlier", "begin,begin",
        {"waiting earlier", "waiting earlier", "copying own!", "ended earlier!", "removed earlier!",
         "copying own!"});
    row("refused free", "begin,worker ended",
        {"copying own!", "ended free!", "refused free", "ended free!", "removed free!", "refused free"});
    row("ended own", "begin,finish",
        {"waiting earlier", "ended own!", "ended free", "ended own", "removed own!", "ended free"});
    row("ended earlier", "begin,begin,stop",
        {"waiting earlier", "ended earlier", "ended free", "ended earlier", "removed earlier!",
         "ended free"});
    row("ended free", "begin,finish,worker ended",
        {"copying own!", "ended free!", "ended free", "ended free", "removed free!", "ended free"});
    row("removed own", "begin,remove",
        {"waiting earlier", "removed own!", "removed free", "removed own", "removed own", "removed free"});
    row("removed earlier", "begin,begin,remove",
        {"waiting earlier", "removed earlier", "removed free", "removed earlier", "removed earlier",
         "removed free"});
    row("removed free", "remove",
        {"copying own!", "removed free!", "removed free", "removed free", "removed free", "removed free"});
}

void tst_CCopyStage::transitions()
{
    QFETCH(QString, strBefore);
    for (const char* pEvent : {"begin", "finish", "worker ended", "stop", "remove", "worker left"}) {
        CCopyStage stage;
        for (const QString& strEvent : strBefore.split(',', Qt::SkipEmptyParts)) {
            Tell(stage, strEvent);
        }
        QCOMPARE(Described(stage), QString(QTest::currentDataTag()));
        const bool bToDo = Tell(stage, pEvent);
        QTEST(Described(stage) + (bToDo ? "!" : ""), pEvent);
    }
}

QTEST_APPLESS_MAIN(tst_CCopyStage)
#include "tst_CCopyStage.moc"
