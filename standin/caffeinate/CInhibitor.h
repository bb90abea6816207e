#pragma once

#include <string>

/** A lock of the login manager that keeps the machine awake until the object is gone. */
class CInhibitor
{
public:
    CInhibitor() = default;
    ~CInhibitor();
    CInhibitor(const CInhibitor&) = delete;
    CInhibitor& operator=(const CInhibitor&) = delete;

    /**
     * Takes the lock, for what the login manager calls "sleep", "idle" or both
     * with a colon. Waits some seconds at most for the answer.
     *
     * @return empty when it is held, else why not
     */
    std::string Take(const std::string& strWhat);

private:
    int m_nLock = -1;
};
