#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

/**
 * Takes from the calling thread, while it lives, root's right to read what its
 * permissions forbid. Unlike another user it needs no second one on the system;
 * files still belong to the thread.
 */
class CWithoutOverride
{
public:
    CWithoutOverride() { Apply(~(1U << CAP_DAC_OVERRIDE) & ~(1U << CAP_DAC_READ_SEARCH)); }
    ~CWithoutOverride() { Apply(~0U); }
    CWithoutOverride(const CWithoutOverride&) = delete;
    CWithoutOverride& operator=(const CWithoutOverride&) = delete;

private:
    /** Leaves those of the permitted rights in effect. */
    static void Apply(unsigned nMask)
    {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        __user_cap_data_struct listRight[_LINUX_CAPABILITY_U32S_3];
        syscall(SYS_capget, &header, listRight);
        listRight[0].effective = listRight[0].permitted & nMask;
        syscall(SYS_capset, &header, listRight);
    }
};
