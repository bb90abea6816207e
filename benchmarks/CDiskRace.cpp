#include "CDiskRace.h"

#include "Measure.h"
#include "copy/CCopyFileThread.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <sys/mount.h>
#include <unistd.h>

static const char MEMORY_OPTIONS[] = "size=12g";

// What the tar at the one end packs goes unchanged to that at the other.
static const char TAR[] = R"(tar -C "$1/.." -cf - source | tar -C "$2" -xf -)";

static double Milliseconds(const QElapsedTimer& timer) { return double(timer.nsecsElapsed()) / 1e6; }

static STDiskWork Since(const STDiskWork& stBefore, const STDiskWork& stNow)
{
    return {stNow.nRequests - stBefore.nRequests, stNow.nSeeks - stBefore.nSeeks,
            stNow.nBytes - stBefore.nBytes, stNow.nBusyMs - stBefore.nBusyMs};
}

static STDiskWork Work(const std::unique_ptr<CSlowDisk>& pDisk)
{
    return pDisk ? pDisk->Work() : STDiskWork();
}

CDiskRace::CDiskRace(const STRaceCourse& stCourse, bool bComplete)
    : m_folder(stCourse.folder)
    , m_stCourse(stCourse)
{
    Require(m_dir.isValid()
                && mount("memory", QFile::encodeName(m_dir.path()).constData(), "tmpfs", 0, MEMORY_OPTIONS)
                    == 0,
            "memory at " + m_dir.path());
    if (m_stCourse.stSource) {
        m_pSource = std::make_unique<CSlowDisk>(m_dir.path(), "source", *m_stCourse.stSource);
    }
    if (m_stCourse.stStick) {
        m_pStick = std::make_unique<CSlowDisk>(m_dir.path(), "stick", *m_stCourse.stStick);
    }
    Require(QDir().mkpath(Source()) && QDir().mkpath(Stick()), m_dir.path());
    m_folder.Make(Source());
    m_nStretches = m_folder.Stretches(Source());
    if (bComplete) {
        m_nodes.Root()->m_bComplete = true;
        m_nodes.Add(Source());
    } else {
        m_nodes.AddListed(Source());
    }
}

CDiskRace::~CDiskRace()
{
    m_pSource.reset();
    m_pStick.reset();
    umount2(QFile::encodeName(m_dir.path()).constData(), MNT_DETACH);
}

QStringList CDiskRace::Entrants() { return {"engine", "cp -a", "rsync -a", "tar"}; }

QString CDiskRace::Source() const { return (m_pSource ? m_pSource->Path() : m_dir.path()) + "/source"; }

QString CDiskRace::Stick() const { return m_pStick ? m_pStick->Path() : m_dir.path() + "/stick"; }

/** Nothing of the last copy is there, not even in the cache. */
void CDiskRace::Prepare()
{
    if (m_pStick) {
        m_pStick->Format();
    } else {
        Require(QDir(Stick()).removeRecursively() && QDir().mkpath(Stick()), Stick());
    }
    if (m_pSource) {
        m_pSource->MountAnew();
    }
    for (const auto* ppDisk : {&m_pSource, &m_pStick}) {
        if (*ppDisk) {
            (*ppDisk)->SetSlow(true);
        }
    }
}

STRaceRun CDiskRace::Run(int nEntrant)
{
    Prepare();
    const STDiskWork stSource = Work(m_pSource);
    const STDiskWork stStick = Work(m_pStick);
    STRaceRun stRun = nEntrant == 0 ? RunEngine() : RunPeer(nEntrant);
    stRun.stSource = Since(stSource, Work(m_pSource));
    stRun.stStick = Since(stStick, Work(m_pStick));
    return stRun;
}

STRaceRun CDiskRace::RunEngine()
{
    STRaceRun stRun;
    STCopyAccount stAccount;
    QElapsedTimer timer;
    int nShown = -1;
    double nShownAt = 0;
    const auto fnStep = [&] {
        stRun.nLongestStep = qMax(stRun.nLongestStep, Milliseconds(timer) - nShownAt);
        nShownAt = Milliseconds(timer);
    };
    CCopyFileThread worker;
    QObject::connect(
        &worker, &CCopyFileThread::SignalCopyCopyInfo, &worker,
        [&](const QString&, int nPercent) {
            stRun.nHanded = Milliseconds(timer);
            if (nPercent != nShown) {
                fnStep();
                nShown = nPercent;
            }
        },
        Qt::DirectConnection);
    QObject::connect(
        &worker, &CCopyFileThread::SignalCopyAccount, &worker,
        [&stAccount](const STCopyAccount& stEnd) { stAccount = stEnd; }, Qt::DirectConnection);
    worker.SetCopyParam(m_folder.Bytes(), m_nodes.Root(), Target(), COPY_STATUS_RUN);
    timer.start();
    worker.start(QThread::TimeCriticalPriority);
    worker.wait();
    stRun.nOnDisk = Milliseconds(timer);
    fnStep();
    Require(stAccount.IsWhole() && stAccount.nFiles == m_folder.Files(), "the copy is not whole");
    return stRun;
}

STRaceRun CDiskRace::RunPeer(int nEntrant) const
{
    const QString strName = Entrants().at(nEntrant);
    Require(QDir().mkdir(Target()), Target());
    STRaceRun stRun;
    QElapsedTimer timer;
    timer.start();
    if (strName == "tar") {
        ::Run("sh", {"-c", TAR, "tar", Source(), Target()});
    } else {
        ::Run(strName.split(' ').constFirst(), {"-a", "--", Source(), Target()});
    }
    stRun.nHanded = Milliseconds(timer);
    ::Run("sync", {"-f", Target()});
    stRun.nOnDisk = Milliseconds(timer);
    return stRun;
}

static double BytesMs(qint64 nBytes, const STDiskModel& stModel)
{
    return double(nBytes) * 1000 / double(stModel.nBytesPerSecond);
}

double CDiskRace::LeastSourceMs() const
{
    const std::optional<STDiskModel>& stModel = m_stCourse.stSource;
    return stModel ? BytesMs(m_folder.Bytes(), *stModel) + m_nStretches * stModel->nSeekUs / 1000.0 : 0;
}

double CDiskRace::LeastStickMs() const
{
    return m_stCourse.stStick ? BytesMs(m_folder.Bytes(), *m_stCourse.stStick) : 0;
}

int CDiskRace::RunCommand(const QStringList& listCommand)
{
    Prepare();
    qputenv("SOURCE", QFile::encodeName(Source()));
    qputenv("STICK", QFile::encodeName(Stick()));
    if (m_pSource && m_pStick) {
        qputenv("SOURCE_CONTROL", QFile::encodeName(m_pSource->Control(QString())));
        qputenv("STICK_CONTROL", QFile::encodeName(m_pStick->Control(QString())));
    }
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.start(listCommand.constFirst(), listCommand.mid(1));
    process.waitForFinished(-1);
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : EXIT_FAILURE;
}
