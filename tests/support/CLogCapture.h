#pragma once

#include <QMutex>
#include <QStringList>

/**
 * Collects what qDebug and its sisters write while it lives, on any thread.
 *
 * One at a time; the handler that was installed before comes back at the end.
 */
class CLogCapture
{
public:
    CLogCapture();
    ~CLogCapture();
    CLogCapture(const CLogCapture&) = delete;
    CLogCapture& operator=(const CLogCapture&) = delete;

    /** The lines so far, in the order in which they came. */
    QStringList Lines() const;

    /** True when a line equals strLine. */
    bool Has(const QString& strLine) const;

    /** True when a line contains strPart. */
    bool HasPart(const QString& strPart) const;

private:
    static void Handle(QtMsgType enType, const QMessageLogContext& context, const QString& strLine);

    mutable QMutex m_mutex;
    QStringList m_listLine;
    QtMessageHandler m_pfnOld = nullptr;
};
