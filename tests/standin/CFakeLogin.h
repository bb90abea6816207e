#pragma once

#include <QDBusContext>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/**
 * A bus of the test's own with a login manager on it that hands out locks and
 * notices when they are given back. Needs an event loop to answer.
 */
class CFakeLogin : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    /** How the login manager takes a request. */
    enum ENManner
    {
        MANNER_GRANT,
        MANNER_REFUSE,
        MANNER_SILENT,
        MANNER_ABSENT, // a bus without login manager
    };

    explicit CFakeLogin(ENManner enManner = MANNER_GRANT);
    ~CFakeLogin() override;

    /** True when the bus is up. */
    bool IsValid() const;

    /** Environment in which programs take this bus for the system's. */
    QProcessEnvironment Environment() const;

    /** Arguments of each request, joined by "|". */
    QStringList Requests() const;

    /** Locks that were handed out and are still held. */
    int Held() const;

public slots:
    /** The operation of the login manager: gives a lock that lasts as long as its descriptor. */
    QDBusUnixFileDescriptor Inhibit(const QString& strWhat, const QString& strWho, const QString& strWhy,
                                    const QString& strMode);

private:
    bool StartBus();

    ENManner m_enManner;
    bool m_bValid = false;
    QTemporaryDir m_dir;
    QProcess m_bus;
    QString m_strAddress;
    QString m_strConnection;
    QStringList m_listRequest;
    int m_nHeld = 0;
};
