#include "CLatencyProbe.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <xcb/xcb.h>

static const std::chrono::milliseconds PERIOD(2);

static const QEvent::Type EVENT_ASK = QEvent::Type(QEvent::User + 77);
static const QEvent::Type EVENT_PAINT = QEvent::Type(QEvent::User + 78);

static qint64 NowNs()
{
    timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return qint64(time.tv_sec) * 1000000000 + time.tv_nsec;
}

double STLatency::Worst() const { return *std::max_element(rWorst.begin(), rWorst.end()); }

static quint32 MakeAtom(xcb_connection_t* pConnection)
{
    static const char NAME[] = "_TARNWICK_PROBE";
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> pReply(
        xcb_intern_atom_reply(pConnection, xcb_intern_atom(pConnection, 0, sizeof NAME - 1, NAME), nullptr),
        &std::free);
    return pReply ? pReply->atom : 0;
}

CLatencyProbe::CLatencyProbe(QWidget* pWindow)
    : m_pPixel(new QWidget(pWindow))
    , m_nWindow(quint32(pWindow->winId()))
    , m_pConnection(xcb_connect(nullptr, nullptr), xcb_disconnect)
{
    m_nAtom = MakeAtom(m_pConnection.get());
    m_pPixel->setGeometry(0, 0, 1, 1);
    m_pPixel->setAttribute(Qt::WA_OpaquePaintEvent);
    m_pPixel->installEventFilter(this);
    m_pPixel->show();
    QCoreApplication::instance()->installNativeEventFilter(this);
}

CLatencyProbe::~CLatencyProbe() { End(); }

void CLatencyProbe::Begin()
{
    for (STKind& stKind : m_kinds) {
        stKind.listAnswer.clear();
    }
    m_bAsking = true;
    m_thread = std::thread([this] {
        while (m_bAsking) {
            Ask();
            std::this_thread::sleep_for(PERIOD);
        }
    });
}

// On the helper thread.
void CLatencyProbe::Ask()
{
    for (int i = 0; i < PROBE_KINDS; ++i) {
        if (m_kinds[size_t(i)].nAsked != 0) {
            continue;
        }
        m_kinds[size_t(i)].nAsked = NowNs();
        if (i == PROBE_KIND_CLICK) {
            SendClick();
        } else {
            QCoreApplication::postEvent(this, new QEvent(i == PROBE_KIND_EVENT ? EVENT_ASK : EVENT_PAINT));
        }
    }
}

// A message takes the way of a click through the X server and Qt's queue of
// window events, but no widget takes it for one.
void CLatencyProbe::SendClick()
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_nWindow;
    message.type = m_nAtom;
    xcb_send_event(m_pConnection.get(), 0, m_nWindow, 0, reinterpret_cast<const char*>(&message));
    xcb_flush(m_pConnection.get());
}

bool CLatencyProbe::nativeEventFilter(const QByteArray&, void* pMessage, long*)
{
    const auto* pEvent = static_cast<const xcb_client_message_event_t*>(pMessage);
    if ((pEvent->response_type & 0x7f) != XCB_CLIENT_MESSAGE || pEvent->type != m_nAtom) {
        return false;
    }
    Answer(PROBE_KIND_CLICK);
    return true;
}

bool CLatencyProbe::event(QEvent* pEvent)
{
    if (pEvent->type() == EVENT_ASK) {
        Answer(PROBE_KIND_EVENT);
    } else if (pEvent->type() == EVENT_PAINT) {
        m_pPixel->update();
    }
    return QObject::event(pEvent);
}

bool CLatencyProbe::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pObject == m_pPixel && pEvent->type() == QEvent::Paint) {
        Answer(PROBE_KIND_PAINT);
    }
    return QObject::eventFilter(pObject, pEvent);
}

void CLatencyProbe::Answer(ENProbeKind enKind)
{
    STKind& stKind = m_kinds[size_t(enKind)];
    const qint64 nAsked = stKind.nAsked;
    if (nAsked == 0) {
        return; // the pixel is also painted with the window
    }
    stKind.listAnswer.push_back(double(NowNs() - nAsked) / 1e6);
    stKind.nAsked = 0;
}

bool CLatencyProbe::IsAnswerDue() const
{
    return std::any_of(m_kinds.begin(), m_kinds.end(),
                       [](const STKind& stKind) { return stKind.nAsked != 0; });
}

/**
 * The wait at every moment, not only at those at which the probe asked: while
 * an answer took 300 ms nothing else was asked, but a user could have clicked all the time.
 */
static std::vector<double> WaitsOfAllMoments(const std::vector<double>& listAnswer)
{
    std::vector<double> listWait;
    for (const double rAnswer : listAnswer) {
        double rWait = rAnswer;
        do {
            listWait.push_back(rWait);
            rWait -= double(PERIOD.count());
        } while (rWait > 0);
    }
    return listWait;
}

STLatency CLatencyProbe::End()
{
    STLatency stLatency;
    if (!m_thread.joinable()) {
        return stLatency;
    }
    m_bAsking = false;
    m_thread.join();
    while (IsAnswerDue()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    for (size_t i = 0; i < PROBE_KINDS; ++i) {
        std::vector<double> listWait = WaitsOfAllMoments(m_kinds[i].listAnswer);
        if (listWait.empty()) {
            continue;
        }
        std::sort(listWait.begin(), listWait.end());
        stLatency.rWorst[i] = listWait.back();
        stLatency.r99 = std::max(stLatency.r99, listWait[(listWait.size() - 1) * 99 / 100]);
        stLatency.nAnswered += int(m_kinds[i].listAnswer.size());
    }
    return stLatency;
}
