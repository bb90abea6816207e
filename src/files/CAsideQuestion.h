#pragma once

#include "files/CLeftBehind.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

/**
 * A question to a disk that may never answer, asked on a thread of its own.
 *
 * What asks holds copies of all that it needs, as it may outlast everybody: an
 * object that is destroyed before the answer leaves its thread behind. Where the
 * system gives no thread the question is asked on the calling one.
 */
template <typename Answer> class CAsideQuestion
{
public:
    /**
     * Starts to ask at once. fnAnswered, when given, runs on the asking thread after
     * the answer is there, unless this object is gone by then; it must not call it.
     */
    explicit CAsideQuestion(std::function<Answer()> fnAsk, std::function<void()> fnAnswered = {})
        : m_pShared(std::make_shared<STShared>())
    {
        const auto fnRun
            = [pShared = m_pShared, fnAsk = std::move(fnAsk), fnAnswered = std::move(fnAnswered)] {
                  Answer answer = fnAsk();
                  std::unique_lock<std::mutex> lock(pShared->mutex);
                  pShared->answer = std::move(answer);
                  pShared->answered.notify_all();
                  if (pShared->bLeftBehind) {
                      CLeftBehind::Remove();
                      return;
                  }
                  // Under the lock, so that it never runs after this object's end.
                  if (fnAnswered) {
                      fnAnswered();
                  }
              };
        try {
            std::thread(fnRun).detach();
        } catch (const std::system_error&) {
            fnRun();
        }
    }

    /** Leaves the thread behind when the answer has not come. */
    ~CAsideQuestion()
    {
        const std::lock_guard<std::mutex> lock(m_pShared->mutex);
        if (!m_pShared->answer) {
            m_pShared->bLeftBehind = true;
            CLeftBehind::Add();
        }
    }

    CAsideQuestion(const CAsideQuestion&) = delete;
    CAsideQuestion& operator=(const CAsideQuestion&) = delete;

    /** Waits up to that time; true when the answer is there. Any thread. */
    bool Wait(std::chrono::milliseconds time) const
    {
        std::unique_lock<std::mutex> lock(m_pShared->mutex);
        return m_pShared->answered.wait_for(lock, time, [this] { return m_pShared->answer.has_value(); });
    }

    /** The answer; nothing while it has not come. It stays. Any thread. */
    std::optional<Answer> Get() const
    {
        const std::lock_guard<std::mutex> lock(m_pShared->mutex);
        return m_pShared->answer;
    }

    /** Asks and waits up to that time for the answer; nothing when it has not come by then. */
    static std::optional<Answer> Ask(std::chrono::milliseconds time, std::function<Answer()> fnAsk)
    {
        const CAsideQuestion question(std::move(fnAsk));
        question.Wait(time);
        return question.Get();
    }

private:
    struct STShared
    {
        std::mutex mutex;
        std::condition_variable answered;
        std::optional<Answer> answer;
        bool bLeftBehind = false;
    };

    const std::shared_ptr<STShared> m_pShared;
};
