#include "host_loop.h"

#include <algorithm>

namespace tav::host {

void HostLoop::Schedule(HostScheduledCallback callback, void* userData, double delaySeconds) {
    const double delay = delaySeconds > 0.0 ? delaySeconds : 0.0;
    scheduled_.push_back({nextSequence_++, now_ + delay, callback, userData});
}

void HostLoop::QueueEvent(std::string name, wex::BindingProperty payload) {
    events_.push_back({nextSequence_++, 0, 0.0, std::move(name), std::move(payload), {}});
}

void HostLoop::QueueAnswer(int turns, std::string name, wex::BindingProperty payload, double delaySeconds,
                           std::string label) {
    const std::uint64_t dueTurn = turn_ + static_cast<std::uint64_t>(std::max(turns, 1));
    const double dueTime = now_ + (delaySeconds > 0.0 ? delaySeconds : 0.0);
    answers_.push_back({nextSequence_++, dueTurn, dueTime, std::move(name), std::move(payload), std::move(label)});
}

std::vector<std::pair<std::string, double>> HostLoop::ReleaseHeldAnswers() {
    std::vector<std::pair<std::string, double>> released;
    for (Queued& answer : answers_) {
        if (answer.dueTime > now_) {
            released.emplace_back(answer.label, answer.dueTime - now_);
            answer.dueTime = now_;
        }
    }
    return released;
}

void HostLoop::RunTurn() {
    if (turnHook_) {
        turnHook_();
    }
    const std::uint64_t turn = ++turn_;
    const std::uint64_t before = nextSequence_;
    Scheduled callback{};
    while (TakeDueCallback(before, callback)) {
        callback.callback(callback.userData);
    }
    Queued item{};
    while (TakeQueued(events_, before, turn, item)) {
        deliver_(item.name, item.payload);
    }
    while (TakeQueued(answers_, before, turn, item)) {
        deliver_(item.name, item.payload);
    }
}

std::size_t HostLoop::RunUntilIdle(std::size_t maxTurns) {
    std::size_t turns = 0;
    while (turns < maxTurns && !Idle()) {
        RunTurn();
        ++turns;
    }
    return turns;
}

void HostLoop::AdvanceClock(double seconds) {
    if (seconds > 0.0) {
        now_ += seconds;
    }
    RunTurn();
}

void HostLoop::MoveClockTo(double now) {
    now_ = std::max(now_, now);
}

bool HostLoop::Idle() const {
    const bool callbackDue =
        std::any_of(scheduled_.begin(), scheduled_.end(), [this](const Scheduled& item) { return item.due <= now_; });
    const bool answerDue =
        std::any_of(answers_.begin(), answers_.end(), [this](const Queued& item) { return item.dueTime <= now_; });
    return !callbackDue && events_.empty() && !answerDue;
}

void HostLoop::Clear() {
    scheduled_.clear();
    events_.clear();
    answers_.clear();
}

bool HostLoop::TakeDueCallback(std::uint64_t before, Scheduled& taken) {
    auto earliest = scheduled_.end();
    for (auto item = scheduled_.begin(); item != scheduled_.end(); ++item) {
        if (item->sequence < before && item->due <= now_ &&
            (earliest == scheduled_.end() || item->due < earliest->due)) {
            earliest = item;
        }
    }
    if (earliest == scheduled_.end()) {
        return false;
    }
    taken = *earliest;
    scheduled_.erase(earliest);
    return true;
}

bool HostLoop::TakeQueued(std::deque<Queued>& queue, std::uint64_t before, std::uint64_t turn, Queued& taken) const {
    const auto found = std::find_if(queue.begin(), queue.end(), [&](const Queued& item) {
        return item.sequence < before && item.dueTurn <= turn && item.dueTime <= now_;
    });
    if (found == queue.end()) {
        return false;
    }
    taken = std::move(*found);
    queue.erase(found);
    return true;
}

}  // namespace tav::host
