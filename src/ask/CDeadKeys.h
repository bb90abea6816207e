#pragma once

#include <QString>

#include <optional>

class QKeyEvent;

/**
 * The keys that type nothing by themselves but an accent on the next letter: without a window system
 * nobody else puts the two together. GUI thread.
 */
class CDeadKeys
{
public:
    /**
     * bTypewriter: with a blank the accents on the keys of ' and " give these two, as they do on
     * keyboards that have no other key for them.
     */
    explicit CDeadKeys(bool bTypewriter);

    /** What is typed by this key, perhaps nothing yet; no value for a key that goes its own way. */
    std::optional<QString> Take(const QKeyEvent& event);

private:
    int m_nWaiting = 0; // the dead key before, of the toolkit; 0 without one
    const bool m_bTypewriter;
};
