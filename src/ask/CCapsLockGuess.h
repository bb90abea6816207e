#pragma once

class QKeyEvent;

/**
 * Whether Caps Lock is on, told by what is typed: nothing else tells it on a screen without a
 * window system. GUI thread.
 */
class CCapsLockGuess
{
public:
    /** Takes a key that was pressed; one that is no letter of two cases changes nothing. */
    void Take(const QKeyEvent& event);

    /** Whether the last letter came out in the case that Caps Lock gives it. */
    bool IsOn() const { return m_bOn; }

private:
    bool m_bOn = false;
};
