#include "disk/CFakeDevices.h"

#include <cstdlib>
#include <umockdev.h>
#include <unistd.h>

static const char* const LIBRARY = "libumockdev-preload.so.0";

static UMockdevTestbed* Testbed(void* pTestbed) { return static_cast<UMockdevTestbed*>(pTestbed); }

CFakeDevices::CFakeDevices()
    : m_pTestbed(umockdev_testbed_new())
{
}

CFakeDevices::~CFakeDevices() { g_object_unref(m_pTestbed); }

bool CFakeDevices::IsPreloaded()
{
    CFakeDevices probe;
    return ::access(probe.Add("block", "probe", "", "disk").c_str(), F_OK) == 0;
}

void CFakeDevices::RestartPreloaded(char** argv)
{
    // Once only: a library that cannot be loaded must not make us try for ever.
    if (std::getenv("LD_PRELOAD") == nullptr) {
        ::setenv("LD_PRELOAD", LIBRARY, 1);
        ::execv("/proc/self/exe", argv);
    }
}

std::string CFakeDevices::Add(const char* pSubsystem, const std::string& strName,
                              const std::string& strParent, const char* pDevType, const char* pBus)
{
    gchar* const pPath = umockdev_testbed_add_device(Testbed(m_pTestbed), pSubsystem, strName.c_str(),
                                                     strParent.empty() ? nullptr : strParent.c_str(), nullptr,
                                                     "DEVTYPE", pDevType, "ID_BUS", pBus, nullptr);
    const std::string strPath = pPath != nullptr ? pPath : "";
    g_free(pPath);
    return strPath;
}

void CFakeDevices::Announce(const std::string& strPath, const char* pAction)
{
    umockdev_testbed_uevent(Testbed(m_pTestbed), strPath.c_str(), pAction);
}

void CFakeDevices::Remove(const std::string& strPath)
{
    umockdev_testbed_remove_device(Testbed(m_pTestbed), strPath.c_str());
}
