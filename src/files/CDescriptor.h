#pragma once

#include <unistd.h>

/** An open descriptor, closed with the object. */
class CDescriptor
{
public:
    /** Takes over a descriptor; -1 stands for none. */
    explicit CDescriptor(int nDescriptor = -1)
        : m_nDescriptor(nDescriptor)
    {
    }

    ~CDescriptor() { Reset(); }

    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    /** Closes what it has and takes over another one. */
    void Reset(int nDescriptor = -1)
    {
        if (m_nDescriptor != -1) {
            close(m_nDescriptor);
        }
        m_nDescriptor = nDescriptor;
    }

    /** Closes it and says what the system does, for what was written to: 0 or -1 with errno. */
    int Close()
    {
        const int nDescriptor = m_nDescriptor;
        m_nDescriptor = -1;
        return close(nDescriptor);
    }

    /** Gives it away, open as it is. */
    int Release()
    {
        const int nDescriptor = m_nDescriptor;
        m_nDescriptor = -1;
        return nDescriptor;
    }

    /** The descriptor; -1 when there is none. */
    int Get() const { return m_nDescriptor; }

    /** Whether there is one. */
    bool IsOpen() const { return m_nDescriptor != -1; }

private:
    int m_nDescriptor;
};
