#pragma once

#include <string>

/**
 * A tree of devices that exists for this process alone, with the events that
 * udev would send for them. Works only while the preloaded library stands
 * between the process and the real /sys.
 *
 * Qt's keywords and the library's headers do not agree, so this header has
 * neither.
 */
class CFakeDevices
{
public:
    CFakeDevices();
    ~CFakeDevices();
    CFakeDevices(const CFakeDevices&) = delete;
    CFakeDevices& operator=(const CFakeDevices&) = delete;

    /** Starts this program anew with the library preloaded; returns when that is done or cannot be done. */
    static void RestartPreloaded(char** argv);

    /** True when the library is in place: a device that is added here can be seen in /sys. */
    static bool IsPreloaded();

    /** Adds a device and sends its arrival; returns its path. About ten events may be under way at once. */
    std::string Add(const char* pSubsystem, const std::string& strName, const std::string& strParent,
                    const char* pDevType, const char* pBus = "");

    /** Sends another event of a device that is in the tree. */
    void Announce(const std::string& strPath, const char* pAction);

    /** Takes a device and all below it out of the tree without telling anyone. */
    void Remove(const std::string& strPath);

private:
    void* m_pTestbed;
};
