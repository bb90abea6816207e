#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QString>
#include <QWidget>

#include <array>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

struct xcb_connection_t;

/** The three ways in which a window answers, each probed by itself. */
enum ENProbeKind
{
    PROBE_KIND_EVENT, ///< an event that another thread posts, as the workers' signals do
    PROBE_KIND_CLICK, ///< an event of the X server, as a click is
    PROBE_KIND_PAINT, ///< from the wish to see something new until it is painted
    PROBE_KINDS
};

/** What the probe saw between Begin and End, in milliseconds. */
struct STLatency
{
    std::array<double, PROBE_KINDS> rWorst{}; ///< the longest wait for an answer of each kind
    double r99 = 0; ///< of all moments at which the user could have asked, 99 in 100 were answered within it
    int nAnswered = 0; ///< answers that came

    double Worst() const;
};

/**
 * Asks the GUI thread for a sign of life every other millisecond, from a thread
 * of its own, and keeps how long each answer took. A question is put only when the one
 * before of its kind has been answered, so the probe itself floods nothing.
 *
 * Made, begun and ended on the GUI thread, with a real X server.
 */
class CLatencyProbe : public QObject, public QAbstractNativeEventFilter
{
public:
    /** Probes the window, which gets one pixel of its own for the paints. */
    explicit CLatencyProbe(QWidget* pWindow);
    ~CLatencyProbe() override;

    /** Forgets what was seen and starts to ask. */
    void Begin();

    /** Stops to ask, waits for the answers that are due, and tells what was seen. */
    STLatency End();

    bool nativeEventFilter(const QByteArray& baType, void* pMessage, long* pResult) override;

protected:
    bool event(QEvent* pEvent) override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    struct STKind
    {
        std::atomic<qint64> nAsked{0}; // when, in nanoseconds; 0 while nothing is asked
        std::vector<double> listAnswer; // GUI thread only
    };

    void Ask();
    void SendClick();
    void Answer(ENProbeKind enKind);
    bool IsAnswerDue() const;

    std::array<STKind, PROBE_KINDS> m_kinds;
    QWidget* m_pPixel;
    quint32 m_nWindow;
    quint32 m_nAtom = 0;
    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_pConnection;
    std::atomic<bool> m_bAsking{false};
    std::thread m_thread;
};
