#include "journeys/CJourney.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPixmap>
#include <QScreen>
#include <QTest>

CJourney::CJourney(const QString& strPictures)
    : m_strPictures(strPictures)
    , m_environment(QProcessEnvironment::systemEnvironment())
{
    QDir().mkpath(strPictures);
    m_environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(TARNWICK_PROBE_LIBRARY));
    m_environment.insert(QStringLiteral("TARNWICK_PROBE"), m_dir.filePath(QStringLiteral("probe")));
    m_environment.insert(QStringLiteral("TARNWICK_SLOW"), m_dir.filePath(QStringLiteral("slow")));
    m_environment.insert(QStringLiteral("TARNWICK_SLOW_LIST"), m_dir.filePath(QStringLiteral("slow-list")));
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
}

CJourney::~CJourney()
{
    if (IsRunning()) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

QProcessEnvironment& CJourney::Environment() { return m_environment; }

bool CJourney::Start(const QString& strExecutable)
{
    m_process.setProcessEnvironment(m_environment);
    m_process.setStandardErrorFile(m_dir.filePath(QStringLiteral("errors")));
    m_process.start(strExecutable, QStringList());
    return WaitFor([this] {
        if (m_socket.state() == QLocalSocket::UnconnectedState) {
            m_socket.connectToServer(m_environment.value(QStringLiteral("TARNWICK_PROBE")));
        }
        return m_socket.state() == QLocalSocket::ConnectedState
            && Widget(QStringLiteral("CTarnwickMacPE")).value(QStringLiteral("visible")).toBool();
    });
}

bool CJourney::IsRunning() const { return m_process.state() != QProcess::NotRunning; }

bool CJourney::WaitForEnd(int nMs) { return !IsRunning() || m_process.waitForFinished(nMs); }

int CJourney::ExitCode() const
{
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QString CJourney::Errors() const
{
    QFile file(m_dir.filePath(QStringLiteral("errors")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QJsonObject CJourney::Ask(const QJsonObject& objQuestion, int nMs)
{
    m_socket.write(QJsonDocument(objQuestion).toJson(QJsonDocument::Compact) + '\n');
    if (!WaitFor(
            [this] { return m_socket.canReadLine() || m_socket.state() != QLocalSocket::ConnectedState; },
            nMs)) {
        return {};
    }
    return QJsonDocument::fromJson(m_socket.readLine()).object();
}

QJsonObject CJourney::Widget(const QString& strName, const QString& strIn)
{
    return Ask({{QStringLiteral("ask"), QStringLiteral("widget")},
                {QStringLiteral("name"), strName},
                {QStringLiteral("in"), strIn}});
}

QJsonObject CJourney::Modal() { return Ask({{QStringLiteral("ask"), QStringLiteral("modal")}}); }

QJsonObject CJourney::Row(const QStringList& listPath)
{
    return Ask({{QStringLiteral("ask"), QStringLiteral("row")},
                {QStringLiteral("path"), QJsonArray::fromStringList(listPath)}});
}

QJsonObject CJourney::List() { return Ask({{QStringLiteral("ask"), QStringLiteral("list")}}); }

QStringList CJourney::ListTexts()
{
    QStringList listText;
    const QJsonArray arrItem = List().value(QStringLiteral("items")).toArray();
    for (const QJsonValue& item : arrItem) {
        listText.append(item.toObject().value(QStringLiteral("text")).toString());
    }
    return listText;
}

static void Input(const QStringList& listArgument)
{
    QProcess::execute(QStringLiteral("xdotool"), listArgument);
}

void CJourney::PressKeys(const QStringList& listKey) { Input(QStringList{QStringLiteral("key")} + listKey); }

void CJourney::HoldKey(const QString& strKey, bool bDown)
{
    Input({bDown ? QStringLiteral("keydown") : QStringLiteral("keyup"), strKey});
}

void CJourney::ClickAt(const QPoint& pt)
{
    Input({QStringLiteral("mousemove"), QString::number(pt.x()), QString::number(pt.y())});
    const bool bOver = WaitFor(
        [&] {
            const QJsonObject obj = Ask({{QStringLiteral("ask"), QStringLiteral("pointer")}});
            const QPoint ptNow(obj.value(QStringLiteral("x")).toInt(),
                               obj.value(QStringLiteral("y")).toInt());
            return obj.value(QStringLiteral("over")).toBool() && (ptNow - pt).manhattanLength() <= 4;
        },
        5000);
    if (!bOver) {
        qWarning("the pointer does not arrive at %d, %d", pt.x(), pt.y());
    }
    Input({QStringLiteral("click"), QStringLiteral("1")});
}

static QRect RectOf(const QJsonObject& obj)
{
    return {obj.value(QStringLiteral("x")).toInt(), obj.value(QStringLiteral("y")).toInt(),
            obj.value(QStringLiteral("w")).toInt(), obj.value(QStringLiteral("h")).toInt()};
}

void CJourney::Click(const QJsonObject& objRect) { ClickAt(RectOf(objRect).center()); }

void CJourney::Tick(const QStringList& listPath)
{
    const QJsonObject objRow = Row(listPath);
    const QRect rect = RectOf(objRow);
    ClickAt({rect.left() + qRound(7 * objRow.value(QStringLiteral("ratio")).toDouble()), rect.center().y()});
}

void CJourney::Expand(const QStringList& listPath)
{
    const QJsonObject objRow = Row(listPath);
    const QRect rect = RectOf(objRow);
    ClickAt({rect.left() - qRound(10 * objRow.value(QStringLiteral("ratio")).toDouble()), rect.center().y()});
}

bool CJourney::WaitForBox(const QString& strText, int nMs)
{
    return WaitFor([&] { return Modal().value(QStringLiteral("text")).toString() == strText; }, nMs);
}

bool CJourney::AnswerBox(const QString& strText, const QString& strButton, int nMs)
{
    if (!WaitForBox(strText, nMs)) {
        return false;
    }
    // The window manager may still move a box that has just come up.
    QJsonObject objButton;
    const bool bStands = WaitFor([&] {
        const QJsonObject objNow
            = Modal().value(QStringLiteral("buttons")).toObject().value(strButton).toObject();
        const bool bSame = objNow == objButton && !objNow.isEmpty();
        objButton = objNow;
        return bSame;
    });
    if (!bStands) {
        return false;
    }
    Click(objButton);
    return WaitFor(
        [&] { return !IsRunning() || Modal().value(QStringLiteral("text")).toString() != strText; });
}

bool CJourney::WaitFor(const std::function<bool()>& fnDone, int nMs) { return QTest::qWaitFor(fnDone, nMs); }

void CJourney::Picture(const QString& strName)
{
    ++m_nPicture;
    const QString strFile
        = QStringLiteral("%1/%2-%3.png")
              .arg(m_strPictures, QStringLiteral("%1").arg(m_nPicture, 2, 10, QLatin1Char('0')), strName);
    QGuiApplication::primaryScreen()->grabWindow(0).save(strFile);
}

static void WriteDelay(const QString& strFile, int nMs)
{
    if (nMs == 0) {
        QFile::remove(strFile);
        return;
    }
    QFile file(strFile);
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray::number(nMs)) < 0) {
        qFatal("fixture failed: %s", qPrintable(strFile));
    }
}

void CJourney::SlowWrites(int nMs) { WriteDelay(m_environment.value(QStringLiteral("TARNWICK_SLOW")), nMs); }

void CJourney::SlowListing(int nMs)
{
    WriteDelay(m_environment.value(QStringLiteral("TARNWICK_SLOW_LIST")), nMs);
}
