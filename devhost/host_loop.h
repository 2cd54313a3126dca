#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "binding/property.h"
#include "boundary/boundary.h"

namespace tav::host {

// The host's cooperative loop on one thread, with a virtual clock. One turn
// runs, in this order: the turn hook (if set), the scheduled callbacks whose time has come, the
// queued events, and the service-proxy answers whose turn has come. Only
// what was queued before the turn began runs in it, so a callback scheduled
// with delay 0 runs on the next turn. Each item leaves its queue before it
// runs, so what runs may enter further turns itself.
class HostLoop {
  public:
    using Deliver = std::function<void(const std::string& name, const wex::BindingProperty& payload)>;

    explicit HostLoop(Deliver deliver) : deliver_(std::move(deliver)) {}

    // A delay that is not positive (or not a number) means the next turn.
    void Schedule(HostScheduledCallback callback, void* userData, double delaySeconds);
    void QueueEvent(std::string name, wex::BindingProperty payload);
    // Delivered on the turns'th turn from now (at least the next), and not
    // before the clock has moved on delaySeconds. label says what it answers.
    void QueueAnswer(int turns, std::string name, wex::BindingProperty payload, double delaySeconds = 0.0,
                     std::string label = {});
    // Makes every answer held for a later time on the clock due now; answers
    // the label of each and the seconds it had still to wait.
    std::vector<std::pair<std::string, double>> ReleaseHeldAnswers();
    // Runs at the start of every turn, before anything else; it may move the clock.
    void SetTurnHook(std::function<void()> hook) { turnHook_ = std::move(hook); }

    void RunTurn();
    // Runs turns while something is waiting to run, at most maxTurns; answers
    // how many ran. Callbacks and answers held for a later time do not count.
    std::size_t RunUntilIdle(std::size_t maxTurns);
    // Moves the clock on, then runs a turn.
    void AdvanceClock(double seconds);
    // Moves the clock on to now, without a turn; a time before the clock's is ignored.
    void MoveClockTo(double now);

    bool Idle() const;
    double Now() const { return now_; }
    std::uint64_t Turns() const { return turn_; }
    // Forgets everything queued: the plug-in that queued it is gone.
    void Clear();

  private:
    struct Scheduled {
        std::uint64_t sequence;
        double due;
        HostScheduledCallback callback;
        void* userData;
    };
    struct Queued {
        std::uint64_t sequence;
        std::uint64_t dueTurn;
        double dueTime;
        std::string name;
        wex::BindingProperty payload;
        std::string label;
    };

    bool TakeDueCallback(std::uint64_t before, Scheduled& taken);
    bool TakeQueued(std::deque<Queued>& queue, std::uint64_t before, std::uint64_t turn, Queued& taken) const;

    Deliver deliver_;
    std::function<void()> turnHook_;
    double now_ = 0.0;
    std::uint64_t turn_ = 0;
    std::uint64_t nextSequence_ = 0;
    std::vector<Scheduled> scheduled_;
    std::deque<Queued> events_;
    std::deque<Queued> answers_;
};

}  // namespace tav::host
