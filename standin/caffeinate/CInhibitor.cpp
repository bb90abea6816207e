#include "caffeinate/CInhibitor.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <systemd/sd-bus.h>
#include <unistd.h>

// A bus or login manager that hangs must not keep the command from noticing that its asker is gone.
static const std::uint64_t ANSWER_MICROSECONDS = 5000000;

namespace {

struct STCloseBus
{
    void operator()(sd_bus* pBus) const { sd_bus_flush_close_unref(pBus); }
};

struct STFreeMessage
{
    void operator()(sd_bus_message* pMessage) const { sd_bus_message_unref(pMessage); }
};

struct STBusError
{
    sd_bus_error error = SD_BUS_ERROR_NULL;
    ~STBusError() { sd_bus_error_free(&error); }
};

}

CInhibitor::~CInhibitor()
{
    if (m_nLock >= 0) {
        close(m_nLock);
    }
}

std::string CInhibitor::Take(const std::string& strWhat)
{
    sd_bus* pRawBus = nullptr;
    const int nOpened = sd_bus_open_system(&pRawBus);
    const std::unique_ptr<sd_bus, STCloseBus> pBus(pRawBus);
    if (nOpened < 0) {
        return std::string("no system bus: ") + std::strerror(-nOpened);
    }
    sd_bus_set_method_call_timeout(pBus.get(), ANSWER_MICROSECONDS);
    STBusError failure;
    sd_bus_message* pRawReply = nullptr;
    const int nCalled
        = sd_bus_call_method(pBus.get(), "org.freedesktop.login1", "/org/freedesktop/login1",
                             "org.freedesktop.login1.Manager", "Inhibit", &failure.error, &pRawReply, "ssss",
                             strWhat.c_str(), "Tarnwick", "Files are being rescued", "block");
    const std::unique_ptr<sd_bus_message, STFreeMessage> pReply(pRawReply);
    if (nCalled < 0) {
        const char* pMessage = failure.error.message;
        return std::string("no login manager: ") + (pMessage != nullptr ? pMessage : std::strerror(-nCalled));
    }
    int nLock = -1;
    if (sd_bus_message_read(pReply.get(), "h", &nLock) < 0) {
        return "the login manager gave no lock";
    }
    // The message owns its descriptor and goes with it; the lock lasts as long as a copy is open.
    m_nLock = fcntl(nLock, F_DUPFD_CLOEXEC, 3);
    return m_nLock >= 0 ? "" : std::strerror(errno);
}
