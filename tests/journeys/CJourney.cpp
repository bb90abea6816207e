#include "journeys/CJourney.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPixmap>
#include <QSaveFile>
#include <QScreen>
#include <QTest>

#include <csignal>
#include <sys/types.h>

CJourney::CJourney(const QString& strPictures)
    : m_strPictures(strPictures)
    , m_environment(QProcessEnvironment::systemEnvironment())
{
    QDir().mkpath(strPictures);
    m_environment.insert("LD_PRELOAD", TARNWICK_PROBE_LIBRARY);
    m_environment.insert("TARNWICK_PROBE", m_dir.filePath("probe"));
    m_environment.insert("TARNWICK_SLOW", m_dir.filePath("slow"));
    m_environment.insert("TARNWICK_SLOW_LIST", m_dir.filePath("slow-list"));
    m_environment.insert("TARNWICK_FLUSH", m_dir.filePath("flush"));
    m_environment.insert("TARNWICK_HANG", m_dir.filePath("hang"));
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
}

CJourney::~CJourney()
{
    if (IsRunning()) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

void CJourney::Launch(const QString& strExecutable, const QStringList& listArgument)
{
    m_process.setProcessEnvironment(m_environment);
    m_process.setStandardErrorFile(m_dir.filePath("errors"));
    m_process.start(strExecutable, listArgument);
}

bool CJourney::WaitForWidget(const QString& strName, int nMs)
{
    return WaitFor(
        [&] {
            if (m_socket.state() == QLocalSocket::UnconnectedState) {
                m_socket.connectToServer(m_environment.value("TARNWICK_PROBE"));
            }
            return m_socket.state() == QLocalSocket::ConnectedState && Shows(strName);
        },
        nMs);
}

bool CJourney::Start(const QString& strExecutable, const QStringList& listArgument)
{
    Launch(strExecutable, listArgument);
    return WaitForWidget("CTarnwickMacPE");
}

bool CJourney::IsRunning() const { return m_process.state() != QProcess::NotRunning; }

bool CJourney::WaitForEnd(int nMs) { return !IsRunning() || m_process.waitForFinished(nMs); }

bool CJourney::HasEnded() const
{
    // "PID (NAME) STATE …": a leader that is a zombie has left its threads behind.
    QFile file(QString("/proc/%1/stat").arg(m_process.processId()));
    return !IsRunning() || !file.open(QIODevice::ReadOnly) || file.readAll().contains(") Z ");
}

int CJourney::ExitCode() const
{
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QString CJourney::Errors() const
{
    QFile file(m_dir.filePath("errors"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QJsonObject CJourney::Ask(const QJsonObject& objQuestion, int nMs)
{
    QElapsedTimer timer;
    timer.start();
    m_socket.write(QJsonDocument(objQuestion).toJson(QJsonDocument::Compact) + '\n');
    const auto fnIsOver = [this] {
        return m_socket.canReadLine() || m_socket.state() != QLocalSocket::ConnectedState || HasEnded();
    };
    const bool bAnswered = WaitFor(fnIsOver, nMs);
    if (HasEnded()) {
        return {};
    }
    m_nLongestAnswerMs = qMax(m_nLongestAnswerMs, timer.elapsed());
    if (!bAnswered) {
        return {};
    }
    return QJsonDocument::fromJson(m_socket.readLine()).object();
}

QJsonObject CJourney::Widget(const QString& strName, const QString& strIn)
{
    return Ask({{"ask", "widget"}, {"name", strName}, {"in", strIn}});
}

QString CJourney::Text(const QString& strName, const QString& strIn)
{
    return Widget(strName, strIn).value("text").toString();
}

bool CJourney::Shows(const QString& strName) { return Widget(strName).value("visible").toBool(); }

int CJourney::Page() { return Widget("m_pStackWidget").value("currentIndex").toInt(-1); }

int CJourney::Progress() { return Widget("m_pProgress").value("value").toInt(-1); }

QJsonObject CJourney::Modal() { return Ask({{"ask", "modal"}}); }

QString CJourney::Detail() { return Modal().value("detail").toString(); }

QJsonObject CJourney::Row(const QStringList& listPath)
{
    return Ask({{"ask", "row"}, {"path", QJsonArray::fromStringList(listPath)}});
}

QJsonObject CJourney::List() { return Ask({{"ask", "list"}}); }

QStringList CJourney::ListTexts()
{
    QStringList listText;
    const QJsonArray arrItem = List().value("items").toArray();
    for (const QJsonValue& item : arrItem) {
        listText.append(item.toObject().value("text").toString());
    }
    return listText;
}

static void Input(const QStringList& listArgument) { QProcess::execute("xdotool", listArgument); }

void CJourney::PressKeys(const QStringList& listKey) { Input(QStringList{"key"} + listKey); }

void CJourney::HoldKey(const QString& strKey, bool bDown) { Input({bDown ? "keydown" : "keyup", strKey}); }

void CJourney::ClickAt(const QPoint& pt)
{
    Input({"mousemove", QString::number(pt.x()), QString::number(pt.y())});
    const bool bOver = WaitFor(
        [&] {
            const QJsonObject obj = Ask({{"ask", "pointer"}});
            const QPoint ptNow(obj.value("x").toInt(), obj.value("y").toInt());
            return obj.value("over").toBool() && (ptNow - pt).manhattanLength() <= 4;
        },
        5000);
    if (!bOver) {
        qWarning("the pointer does not arrive at %d, %d", pt.x(), pt.y());
    }
    Input({"click", "1"});
}

static QRect RectOf(const QJsonObject& obj)
{
    return {obj.value("x").toInt(), obj.value("y").toInt(), obj.value("w").toInt(), obj.value("h").toInt()};
}

void CJourney::Click(const QJsonObject& objRect) { ClickAt(RectOf(objRect).center()); }

void CJourney::Click(const QString& strName, const QString& strIn) { Click(Widget(strName, strIn)); }

// Clicks into a row, a number of points beside where its name's column begins.
void CJourney::ClickInRow(const QStringList& listPath, int nPoints)
{
    const QJsonObject objRow = Row(listPath);
    const QRect rect = RectOf(objRow);
    ClickAt({rect.left() + qRound(nPoints * objRow.value("ratio").toDouble()), rect.center().y()});
}

bool CJourney::Open(const QStringList& listPath)
{
    ClickInRow(listPath, -10);
    return WaitFor([&] { return Row(listPath).value("expanded").toBool(); });
}

bool CJourney::TickWhole(const QStringList& listPath)
{
    ClickInRow(listPath, 7);
    return WaitFor([&] { return Row(listPath).value("state").toInt() == Qt::Checked; });
}

bool CJourney::OpenList(const QString& strName)
{
    Click(strName);
    return WaitFor([this] { return List().value("visible").toBool(); });
}

bool CJourney::ChooseDisk(const QString& strDisk)
{
    const int nItem = ListTexts().indexOf(strDisk);
    if (nItem < 0) {
        return false;
    }
    Click(List().value("items").toArray().at(nItem).toObject());
    return WaitFor([&] { return Text("m_pUSBTitleLab") == strDisk; });
}

bool CJourney::WaitForBox(const QString& strText, int nMs)
{
    return WaitFor([&] { return Modal().value("text").toString() == strText; }, nMs);
}

bool CJourney::AnswerBox(const QString& strText, const QString& strButton, int nMs)
{
    if (!WaitForBox(strText, nMs)) {
        return false;
    }
    // The window manager may still move a box that has just come up.
    QJsonObject objButton;
    const bool bStands = WaitFor([&] {
        const QJsonObject objNow = Modal().value("buttons").toObject().value(strButton).toObject();
        const bool bSame = objNow == objButton && !objNow.isEmpty();
        objButton = objNow;
        return bSame;
    });
    if (!bStands) {
        return false;
    }
    Click(objButton);
    return WaitFor([&] { return HasEnded() || Modal().value("text").toString() != strText; });
}

bool CJourney::WaitFor(const std::function<bool()>& fnDone, int nMs) { return QTest::qWaitFor(fnDone, nMs); }

void CJourney::Picture(const QString& strName)
{
    const QString strNumber = QString::number(++m_nPicture).rightJustified(2, '0');
    const QString strFile = QString("%1/%2-%3.png").arg(m_strPictures, strNumber, strName);
    QGuiApplication::primaryScreen()->grabWindow(0).save(strFile);
}

// In one step, as the program may be reading it.
static void WriteNumber(const QString& strFile, int nNumber)
{
    QSaveFile file(strFile);
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray::number(nNumber)) < 0 || !file.commit()) {
        qFatal("fixture failed: %s", qPrintable(strFile));
    }
}

static void WriteDelay(const QString& strFile, int nMs)
{
    if (nMs == 0) {
        QFile::remove(strFile);
        return;
    }
    WriteNumber(strFile, nMs);
}

void CJourney::SlowWrites(int nMs) { WriteDelay(m_environment.value("TARNWICK_SLOW"), nMs); }

void CJourney::SlowListing(int nMs) { WriteDelay(m_environment.value("TARNWICK_SLOW_LIST"), nMs); }

void CJourney::HoldFlush(int nOrder)
{
    const QString strFile = m_environment.value("TARNWICK_FLUSH");
    if (nOrder < 0) {
        QFile::remove(strFile);
        return;
    }
    WriteNumber(strFile, nOrder);
}

void CJourney::Send(int nSignal)
{
    if (IsRunning()) {
        ::kill(pid_t(m_process.processId()), nSignal);
    }
}

qint64 CJourney::LongestAnswerMs() const { return m_nLongestAnswerMs; }

void CJourney::Hang(const QStringList& listCall)
{
    // Renamed into place, so that nobody reads half of it.
    const QString strFile = m_environment.value("TARNWICK_HANG");
    QFile file(strFile + ".new");
    if (!file.open(QIODevice::WriteOnly) || file.write(listCall.join('\n').toUtf8()) < 0) {
        qFatal("fixture failed: %s", qPrintable(file.fileName()));
    }
    file.close();
    QFile::remove(strFile);
    if (!file.rename(strFile)) {
        qFatal("fixture failed: %s", qPrintable(strFile));
    }
}

void CJourney::SetVariable(const QString& strName, const QString& strValue)
{
    m_environment.insert(strName, strValue);
}
