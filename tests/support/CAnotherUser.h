#pragma once

#include <sys/fsuid.h>
#include <unistd.h>

/**
 * Lets the calling thread look at files as a user without privileges while it
 * lives, since root can read everything. For who is no root anyway it does nothing.
 */
class CAnotherUser
{
public:
    CAnotherUser()
    {
        if (m_bRoot) {
            setfsuid(NOBODY);
        }
    }

    ~CAnotherUser()
    {
        if (m_bRoot) {
            setfsuid(0);
        }
    }

    CAnotherUser(const CAnotherUser&) = delete;
    CAnotherUser& operator=(const CAnotherUser&) = delete;

    /** False where the system has no other user to be; the test then has to say that it was skipped. */
    bool IsValid() const
    {
        // The call always answers with what was in force before it.
        return !m_bRoot || setfsuid(NOBODY) == int(NOBODY);
    }

    static constexpr uid_t NOBODY = 65534;

private:
    const bool m_bRoot = geteuid() == 0;
};
