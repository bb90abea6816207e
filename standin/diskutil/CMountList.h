#pragma once

#include <string>
#include <vector>

/** One mounted file system, as the kernel lists it, its names decoded. */
struct STMount
{
    std::string strNumber; // "MAJOR:MINOR" of the device; a major of 0 is no disk
    std::string strRoot; // folder of the file system that is mounted, most often "/"
    std::string strPoint;
    std::string strType;
    std::string strSource;
    bool bReadOnly = false;
};

/** What is mounted in this process's view of the file system. */
class CMountList
{
public:
    /** Reads a table in the layout of /proc/self/mountinfo; lines that do not have it are left out. */
    explicit CMountList(const std::string& strText);

    /** The table of this process; empty when /proc is not there. */
    static CMountList OfProcess();

    /** Best mount whose source text is one of the given; nullptr without one. */
    const STMount* FindSource(const std::vector<std::string>& listSource) const;

    /** Best mount of the device with this number; nullptr without one. */
    const STMount* FindNumber(const std::string& strNumber) const;

    /** All mounts, in the kernel's order. */
    const std::vector<STMount>& Mounts() const;

private:
    std::vector<STMount> m_listMount;
};
