#pragma once

#include <QJsonObject>
#include <QLocalServer>
#include <QObject>

/**
 * Answers a journey's questions about the running program's window over a local
 * socket, one JSON object a line. It only looks; every action of a journey is a
 * real mouse or key event.
 *
 * Lives in the program's GUI thread, so that an answer also shows that the
 * window is alive. The socket's path stands in TARNWICK_PROBE.
 */
class CProbe : public QObject
{
    Q_OBJECT

public:
    explicit CProbe(const QString& strSocket);

private:
    void SlotConnected();
    QJsonObject Answer(const QJsonObject& objQuestion) const;

    QLocalServer m_server;
};
