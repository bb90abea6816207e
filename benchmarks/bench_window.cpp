// How long the window leaves a user without an answer, in a private place with
// volumes of its own and on a real X server:
//
//     cmake --build --preset release --target benchmark
//
// Each story lets the real program do something large while a probe asks for a sign
// of life. Prints a table; a pause of more than 100 ms is right only where a
// folder is listed on the GUI thread, under a wait cursor.

#include "CLatencyProbe.h"
#include "app/CStartUp.h"
#include "app/CTarnwickMacPE.h"
#include "disk/CDiskListener.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CSelFileWidget.h"
#include "support/CFakeCommands.h"
#include "support/CVolume.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CFileTreeView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPixmapCache>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

static const int FLAT_FILES = 100000;
static const int MANY_FOLDERS = 2000;
static const int FILES_A_FOLDER = 20;
static const int SMALL_FILES = 20000;
static const int LARGE_FILES = 3;
static const qint64 LARGE_BYTES = qint64(100) * 1024 * 1024;
static const int SLOW_FOLDERS = 12;
static const int SLOW_MS = 300;
static const double MOST_MS = 100;
static const double MOST_PAINT_MS = 5;
static const int REPAINTS = 200;

static const char SOURCE[] = "/Volumes/Photos";
static const char SLOW_LIST_FILE[] = "/tmp/slow-list";

namespace {

/** One line of the table. */
struct STStory
{
    QString strName;
    STLatency stLatency;
    double rBusy = 0; // percent of its time that the GUI thread had work
    int nListed = 0; // rows that were announced in it
    bool bCursor = true; // a wait cursor was up at each of them
};

/** What one repaint took. */
struct STRepaint
{
    double rMs = 0;
    double rBusyMs = 0; // of it on the processor: an idle machine has hardly any difference
};

} // namespace

static void Check(bool bDone, const QString& strWhat)
{
    if (!bDone) {
        std::fprintf(stderr, "cannot make %s\n", qPrintable(strWhat));
        std::exit(EXIT_FAILURE);
    }
}

static void WriteFile(const QString& strPath, qint64 nBytes)
{
    QFile file(strPath);
    Check(file.open(QIODevice::WriteOnly), strPath);
    const QByteArray baBlock(int(std::min<qint64>(nBytes, 1024 * 1024)), 'x');
    for (qint64 nLeft = nBytes; nLeft > 0; nLeft -= baBlock.size()) {
        Check(file.write(baBlock) == baBlock.size(), strPath);
    }
}

static void WriteFiles(const QString& strFolder, const char* pszName, int nCount, qint64 nBytes)
{
    QDir().mkpath(strFolder);
    for (int i = 0; i < nCount; ++i) {
        WriteFile(QStringLiteral("%1/%2 %3.jpg")
                      .arg(strFolder, QString::fromUtf8(pszName))
                      .arg(i, 6, 10, QLatin1Char('0')),
                  nBytes);
    }
}

static void FillSource()
{
    const QString strSource = QString::fromLatin1(SOURCE);
    WriteFiles(strSource + QStringLiteral("/One/Flat"), "IMG", FLAT_FILES, 0);
    for (int i = 0; i < MANY_FOLDERS; ++i) {
        WriteFiles(QStringLiteral("%1/Two/Many/Folder %2").arg(strSource).arg(i), "IMG", FILES_A_FOLDER, 0);
    }
    WriteFiles(strSource + QStringLiteral("/Three/Small"), "small", SMALL_FILES, 2048);
    WriteFiles(strSource + QStringLiteral("/Three/Large"), "large", LARGE_FILES, LARGE_BYTES);
    for (int i = 0; i < SLOW_FOLDERS; ++i) {
        WriteFiles(QStringLiteral("%1/Four/Slow/Folder %2/Inner").arg(strSource).arg(i), "IMG", 3, 100);
    }
    for (const char* pszName :
         {"Ferien", "Отпуск", "休暇の写真", "휴가 사진", "תמונות", "صور", "वीडियो", "ภาพถ่าย"}) {
        WriteFiles(strSource + QStringLiteral("/Five/Names"), pszName, 5, 10);
    }
}

/** Processor time of this thread. */
static double BusyMs()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

static void Spin(int nMs)
{
    QElapsedTimer timer;
    timer.start();
    QTimer wake;
    wake.start(std::max(1, nMs / 4));
    while (!timer.hasExpired(nMs)) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

static void SpinUntil(const std::function<bool()>& fnDone)
{
    QTimer wake;
    wake.start(10);
    while (!fnDone()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

static void SlowListing(bool bSlow)
{
    QFile::remove(QString::fromLatin1(SLOW_LIST_FILE));
    if (bSlow) {
        QFile file(QString::fromLatin1(SLOW_LIST_FILE));
        Check(file.open(QIODevice::WriteOnly) && file.write(QByteArray::number(SLOW_MS)) > 0,
              file.fileName());
    }
}

namespace {

/** The program under way, and what is done to it. */
class CStories : public QObject
{
public:
    CStories();
    void Run();

private:
    void Tell(
        const QString& strName, const std::function<void()>& fnDo,
        const std::function<bool()>& fnDone = [] { return true; });
    void Rest();
    void Open();
    void Tick();
    void Scroll();
    void Rescan();
    void ChooseDisk();
    void Copy();
    void Paint();
    void PrintTable() const;
    static void PrintPaint(const char* pszName, const std::vector<STRepaint>& listRepaint);

    QModelIndex At(const QString& strPath) const;
    void SetTick(const QString& strPath, Qt::CheckState enState);
    void Key(int nKey);
    STRepaint Repaint();
    std::vector<STRepaint> RepaintEverywhere(bool bCold);
    static void Mode(const char* pszMode, bool bOn);

    CTarnwickMacPE* m_pWindow = nullptr;
    CSelFileWidget* m_pSelect = nullptr;
    CFileTreeView* m_pView = nullptr;
    CDirModel* m_pModel = CDirModel::GetInstence();
    std::unique_ptr<CLatencyProbe> m_pProbe;
    std::vector<STStory> m_listStory;
    STStory m_stNow;
};

} // namespace

CStories::CStories()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets()) {
        if (auto* pWindow = qobject_cast<CTarnwickMacPE*>(pWidget)) {
            m_pWindow = pWindow;
        }
    }
    m_pSelect = m_pWindow->findChild<CSelFileWidget*>();
    m_pView = m_pWindow->findChild<CFileTreeView*>();
    connect(m_pModel, &CDirModel::rowsInserted, this, [this] {
        const QCursor* pCursor = QGuiApplication::overrideCursor();
        m_stNow.bCursor = m_stNow.bCursor && pCursor && pCursor->shape() == Qt::WaitCursor;
        ++m_stNow.nListed;
    });
}

void CStories::Run()
{
    // Nobody is there to answer the message box at the end of a copy.
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [] {
        if (QWidget* pBox = QApplication::activeModalWidget()) {
            pBox->close();
        }
    });
    closer.start(50);
    Spin(500);
    m_pProbe = std::make_unique<CLatencyProbe>(m_pWindow);
    Rest();
    Open();
    Paint();
    Tick();
    Scroll();
    Rescan();
    ChooseDisk();
    Copy();
    PrintTable();
    m_pProbe.reset();
}

void CStories::Tell(const QString& strName, const std::function<void()>& fnDo,
                    const std::function<bool()>& fnDone)
{
    m_stNow = STStory{strName, STLatency(), 0, 0, true};
    QElapsedTimer timer;
    timer.start();
    const double rBefore = BusyMs();
    m_pProbe->Begin();
    Spin(50);
    fnDo();
    SpinUntil(fnDone);
    Spin(200);
    m_stNow.stLatency = m_pProbe->End();
    m_stNow.rBusy = (BusyMs() - rBefore) * 100 / double(std::max<qint64>(1, timer.elapsed()));
    m_listStory.push_back(m_stNow);
    std::fprintf(stderr, "%-52s %8.1f ms\n", qPrintable(strName), m_stNow.stLatency.Worst());
}

QModelIndex CStories::At(const QString& strPath) const
{
    QModelIndex index = m_pModel->index(0, 0);
    for (const QString& strPart : strPath.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        const QModelIndex parent = index;
        index = QModelIndex();
        for (int i = 0; i < m_pModel->rowCount(parent) && !index.isValid(); ++i) {
            const QModelIndex child = m_pModel->index(i, 0, parent);
            index = child.data().toString() == strPart ? child : QModelIndex();
        }
        Check(index.isValid(), strPath);
    }
    return index;
}

void CStories::SetTick(const QString& strPath, Qt::CheckState enState)
{
    m_pModel->setData(At(strPath), enState, Qt::CheckStateRole);
    m_pSelect->SlotCheckFileSelected();
}

void CStories::Key(int nKey)
{
    const QString strText = nKey < 128 ? QString(QChar(nKey)) : QString();
    QKeyEvent press(QEvent::KeyPress, nKey, Qt::NoModifier, strText);
    QKeyEvent release(QEvent::KeyRelease, nKey, Qt::NoModifier, strText);
    QCoreApplication::sendEvent(m_pView, &press);
    QCoreApplication::sendEvent(m_pView, &release);
    Spin(5);
}

void CStories::Rest()
{
    Tell(QStringLiteral("at rest, for comparison"), [] { Spin(2000); });
}

void CStories::Open()
{
    const auto fnOpen = [this](const QString& strPath) { m_pView->expand(At(strPath)); };
    Tell(QStringLiteral("open a volume"), [&] { fnOpen(QString()); });
    Tell(QStringLiteral("open a folder around 2,000 folders"), [&] { fnOpen(QStringLiteral("Two")); });
    Tell(QStringLiteral("open the 2,000 folders of 20 files"), [&] { fnOpen(QStringLiteral("Two/Many")); });
    Tell(QStringLiteral("open one of the 2,000"), [&] { fnOpen(QStringLiteral("Two/Many/Folder 1000")); });
    Tell(QStringLiteral("open a folder around 100,000 files"), [&] { fnOpen(QStringLiteral("One")); });
    Tell(QStringLiteral("open the 100,000 files"), [&] { fnOpen(QStringLiteral("One/Flat")); });
    Tell(QStringLiteral("close and open them again"), [&] {
        m_pView->collapse(At(QStringLiteral("One/Flat")));
        Spin(50);
        fnOpen(QStringLiteral("One/Flat"));
    });
    SlowListing(true);
    Tell(QStringLiteral("open a folder of 12, 300 ms each"), [&] {
        fnOpen(QStringLiteral("Four"));
        fnOpen(QStringLiteral("Four/Slow"));
    });
    SlowListing(false);
    fnOpen(QStringLiteral("Three"));
    fnOpen(QStringLiteral("Five"));
    fnOpen(QStringLiteral("Five/Names"));
    Spin(200);
}

void CStories::Tick()
{
    const auto fnTick = [this](const QString& strPath) {
        for (int i = 0; i < 10; ++i) {
            SetTick(strPath, i % 2 == 0 ? Qt::Checked : Qt::Unchecked);
            Spin(20);
        }
    };
    Tell(QStringLiteral("tick and untick the 100,000 files"), [&] { fnTick(QStringLiteral("One/Flat")); });
    Tell(QStringLiteral("tick and untick one of them"), [&] {
        const QModelIndex index = m_pModel->index(FLAT_FILES / 2, 0, At(QStringLiteral("One/Flat")));
        for (int i = 0; i < 10; ++i) {
            m_pModel->setData(index, i % 2 == 0 ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
            Spin(20);
        }
    });
    Tell(QStringLiteral("tick and untick the whole volume"), [&] { fnTick(QString()); });
}

void CStories::Scroll()
{
    m_pView->setFocus();
    m_pView->setCurrentIndex(m_pModel->index(0, 0, At(QStringLiteral("One/Flat"))));
    Tell(QStringLiteral("page through the 100,000 files"), [&] {
        for (int i = 0; i < 200; ++i) {
            Key(Qt::Key_PageDown);
        }
    });
    Tell(QStringLiteral("End and Home"), [&] {
        for (int i = 0; i < 20; ++i) {
            Key(i % 2 == 0 ? Qt::Key_End : Qt::Key_Home);
        }
    });
    Tell(QStringLiteral("type a letter that no name begins with"), [&] {
        for (int i = 0; i < 5; ++i) {
            Key(Qt::Key_Q);
        }
    });
    Tell(QStringLiteral("drag the scroll bar"), [&] {
        QScrollBar* pBar = m_pView->verticalScrollBar();
        for (int i = 0; i <= 200; ++i) {
            pBar->setValue(int(qint64(pBar->maximum()) * i / 200));
            Spin(5);
        }
    });
}

/** Makes "diskutil" take a second or hang. */
void CStories::Mode(const char* pszMode, bool bOn)
{
    const QString strFile = QStringLiteral("/tmp/diskutil-%1").arg(QString::fromLatin1(pszMode));
    QFile::remove(strFile);
    if (bOn) {
        WriteFile(strFile, 0);
    }
}

void CStories::Rescan()
{
    auto* pLabel = m_pWindow->findChild<QWidget*>(QStringLiteral("RefreshLab"));
    int nEnded = 0;
    connect(m_pSelect, &CSelFileWidget::SignalStopMovie, this, [&nEnded] { ++nEnded; });
    const auto fnClick = [pLabel] { QMetaObject::invokeMethod(pLabel, "SignalLabelClicked"); };
    Mode("slow", true);
    Tell(QStringLiteral("look for disks, a second each"), fnClick, [&nEnded] { return nEnded == 1; });
    Mode("slow", false);
    Mode("hang", true);
    Tell(
        QStringLiteral("look for disks, the command hangs; again"),
        [&] {
            fnClick();
            Spin(2000);
            Mode("hang", false);
            fnClick();
        },
        [&nEnded] { return nEnded == 3; });
    disconnect(m_pSelect, &CSelFileWidget::SignalStopMovie, this, nullptr);
}

void CStories::ChooseDisk()
{
    auto* pList = m_pWindow->findChild<QListWidget*>();
    Check(pList && pList->count() == 2, QStringLiteral("the list of sticks"));
    Tell(QStringLiteral("choose another disk"), [&] {
        for (int i = 0; i < 100; ++i) {
            m_pSelect->SlotListWidgetItemClick(pList->item(i % 2));
            Spin(5);
        }
    });
    Tell(QStringLiteral("a disk goes and comes"), [&] {
        for (int i = 0; i < 20; ++i) {
            STDiskNotication stEvent;
            stEvent.strDevicePath = QStringLiteral("/Volumes/STICK B");
            stEvent.enType = i % 2 == 0 ? DISK_EVENT_DISAPPEARED : DISK_EVENT_APPEARED;
            m_pWindow->OnDiskChange(&stEvent);
            Spin(5);
        }
    });
}

void CStories::Copy()
{
    auto* pButton = m_pSelect->findChild<QPushButton*>(QStringLiteral("toolBtn"));
    auto* pCopyPage = m_pWindow->findChild<CCopyFileWidget*>();
    bool bStarted = false;
    bool bEnded = false;
    connect(m_pSelect, &CSelFileWidget::SignalCopyFile, this, [&bStarted] { bStarted = true; });
    connect(pCopyPage, &CCopyFileWidget::SignalCopyFileFinish, this, [&bEnded] { bEnded = true; });
    const auto fnCount = [&](const char* pszName) {
        bStarted = bEnded = false;
        Tell(
            QString::fromLatin1(pszName), [&] { pButton->click(); }, [&] { return bStarted; });
    };
    const auto fnCopy = [&](const char* pszName) {
        Tell(
            QString::fromLatin1(pszName), [] {}, [&] { return bEnded; });
    };
    SetTick(QStringLiteral("Four/Slow"), Qt::Checked);
    for (int i = 0; i < SLOW_FOLDERS; ++i) {
        // Listed no further than their one folder each, whose files the count has to find.
        Check(m_pModel->rowCount(At(QStringLiteral("Four/Slow/Folder %1").arg(i))) == 1, "the slow folders");
    }
    SetTick(QStringLiteral("Three/Small"), Qt::Checked);
    SlowListing(true);
    fnCount("count sizes, 300 ms a folder");
    SlowListing(false);
    QProcess load;
    load.start(QStringLiteral("sh"),
               {QStringLiteral("-c"),
                QStringLiteral(
                    "while :; do cp -r '/Volumes/Photos/Three/Small' /tmp/load; rm -rf /tmp/load; done")});
    fnCopy("copy 20,000 small files beside a \"cp -r\"");
    SetTick(QStringLiteral("Three/Small"), Qt::Unchecked);
    SetTick(QStringLiteral("Three/Large"), Qt::Checked);
    fnCount("count sizes beside a \"cp -r\"");
    fnCopy("copy 3 files of 100 MiB beside a \"cp -r\"");
    load.kill();
    load.waitForFinished();
    disconnect(m_pSelect, &CSelFileWidget::SignalCopyFile, this, nullptr);
    disconnect(pCopyPage, &CCopyFileWidget::SignalCopyFileFinish, this, nullptr);
}

STRepaint CStories::Repaint()
{
    const double rBefore = BusyMs();
    QElapsedTimer timer;
    timer.start();
    m_pView->viewport()->repaint();
    return {double(timer.nsecsElapsed()) / 1e6, BusyMs() - rBefore};
}

std::vector<STRepaint> CStories::RepaintEverywhere(bool bCold)
{
    std::vector<STRepaint> listRepaint;
    QScrollBar* pBar = m_pView->verticalScrollBar();
    for (int i = 0; i < REPAINTS; ++i) {
        pBar->setValue(int(qint64(pBar->maximum()) * i / REPAINTS));
        Spin(2);
        if (bCold) {
            QPixmapCache::clear();
        }
        listRepaint.push_back(Repaint());
    }
    return listRepaint;
}

void CStories::Paint()
{
    m_pView->scrollTo(At(QStringLiteral("Five/Names")), QAbstractItemView::PositionAtTop);
    QPixmapCache::clear();
    const std::vector<STRepaint> listFirst{Repaint()};
    const std::vector<STRepaint> listCold = RepaintEverywhere(true);
    const std::vector<STRepaint> listWarm = RepaintEverywhere(false);
    m_pView->scrollTo(At(QStringLiteral("Five/Names")), QAbstractItemView::PositionAtTop);
    std::vector<STRepaint> listScripts;
    for (int i = 0; i < REPAINTS; ++i) {
        listScripts.push_back(Repaint());
    }
    std::printf("\nMilliseconds for a screenful of the tree, %d rows, at most %.0f\n",
                m_pView->viewport()->height() / std::max(1, m_pView->visualRect(At(QString())).height()),
                MOST_PAINT_MS);
    std::printf("%-46s %8s %8s %8s %10s\n", "", "median", "99 %", "worst", "processor");
    PrintPaint("names of eight scripts, the very first time", listFirst);
    PrintPaint("names of eight scripts, warm", listScripts);
    PrintPaint("200 places, picture cache emptied each time", listCold);
    PrintPaint("200 places, warm", listWarm);
    std::fflush(stdout);
}

void CStories::PrintPaint(const char* pszName, const std::vector<STRepaint>& listRepaint)
{
    std::vector<double> listMs;
    double rBusyMs = 0;
    for (const STRepaint& stRepaint : listRepaint) {
        listMs.push_back(stRepaint.rMs);
        rBusyMs = std::max(rBusyMs, stRepaint.rBusyMs);
    }
    std::sort(listMs.begin(), listMs.end());
    std::printf("%-46s %8.2f %8.2f %8.2f %10.2f\n", pszName, listMs[listMs.size() / 2],
                listMs[(listMs.size() - 1) * 99 / 100], listMs.back(), rBusyMs);
}

static const char* Verdict(const STStory& stStory)
{
    if (stStory.stLatency.Worst() <= MOST_MS) {
        return "within 100 ms";
    }
    if (stStory.nListed == 0) {
        return "TOO LONG";
    }
    return stStory.bCursor ? "lists on this thread, wait cursor" : "lists on this thread, NO wait cursor";
}

void CStories::PrintTable() const
{
    std::printf("\nMilliseconds without an answer\n%-46s %8s %8s %8s %8s %9s\n", "", "event", "click",
                "paint", "99 %", "answers");
    for (const STStory& stStory : m_listStory) {
        const STLatency& st = stStory.stLatency;
        std::printf("%-46s %8.1f %8.1f %8.1f %8.1f %8d %4.0f %%  %s\n", qPrintable(stStory.strName),
                    st.rWorst[PROBE_KIND_EVENT], st.rWorst[PROBE_KIND_CLICK], st.rWorst[PROBE_KIND_PAINT],
                    st.r99, st.nAnswered, stStory.rBusy, Verdict(stStory));
    }
    std::fflush(stdout);
}

static const char DISKUTIL[] = R"(
[ ! -e /tmp/diskutil-slow ] || sleep 1
[ ! -e /tmp/diskutil-hang ] || sleep 1000
bus=SATA
case $3 in /dev/sdb1 | /dev/sdc1) bus=USB ;; esac
printf '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict><key>BusProtocol</key><string>%s</string></dict></plist>\n' "$bus"
)";

// Start-up builds the window and runs the event loop; the stories are told inside it.
static void TellStories()
{
    QTimer::singleShot(0, QCoreApplication::instance(), [] {
        {
            CStories stories;
            stories.Run();
        }
        QCoreApplication::exit();
    });
}
Q_COREAPP_STARTUP_FUNCTION(TellStories)

int main(int argc, char** argv)
{
    qputenv("TARNWICK_SLOW_LIST", SLOW_LIST_FILE);
    const CVolume source(QStringLiteral("Photos"), QStringLiteral("/dev/sda1"), 2000);
    const CVolume stickA(QStringLiteral("STICK A"), QStringLiteral("/dev/sdb1"), 2000);
    const CVolume stickB(QStringLiteral("STICK B"), QStringLiteral("/dev/sdc1"), 2000);
    Check(source.IsValid() && stickA.IsValid() && stickB.IsValid(), QStringLiteral("the volumes"));
    FillSource();
    CFakeCommands commands;
    commands.Add(QStringLiteral("diskutil"), QString::fromLatin1(DISKUTIL));
    commands.Add(QStringLiteral("caffeinate"));
    return CStartUp::Run(argc, argv);
}
