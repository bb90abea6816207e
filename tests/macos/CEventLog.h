#pragma once

#include "disk/CDiskListener.h"

#include <QStringList>
#include <QThread>

#include <functional>
#include <utility>

/** Writes down what the listener's callback is given, "type path has-path" each, in Latin-1's letters. */
class CEventLog
{
public:
    /** The callback, with a CEventLog as context. */
    static void Receive(STDiskNotication* pRecord, void* pContext)
    {
        auto* const pLog = static_cast<CEventLog*>(pContext);
        pLog->m_listLine.append(QString("%1 %2 %3")
                                    .arg(QString::number(pRecord->enType), pRecord->strDevicePath,
                                         QString::number(pRecord->nHasPath)));
        pLog->m_hThread = QThread::currentThreadId();
        if (const auto fnInside = std::exchange(pLog->m_fnInside, nullptr)) {
            fnInside();
        }
    }

    /** The events since the last call. */
    QStringList Take() { return std::exchange(m_listLine, QStringList()); }

    /** The thread of the last event. */
    Qt::HANDLE Thread() const { return m_hThread; }

    /** Done once, within the next event. */
    void OnNext(std::function<void()> fnInside) { m_fnInside = std::move(fnInside); }

private:
    QStringList m_listLine;
    Qt::HANDLE m_hThread = nullptr;
    std::function<void()> m_fnInside;
};
