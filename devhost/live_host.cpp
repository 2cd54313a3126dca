#include "live_host.h"

#include <cmath>

namespace tav::host {

namespace {

// How long the loop sleeps when nothing is due: at its top, and inside a
// plug-in's wait, where it must not spin.
constexpr std::chrono::milliseconds kIdleWait{20};
constexpr std::chrono::milliseconds kWaitingTurn{1};
// Of each kind of record (host calls, server calls, log lines, events), so that a host that runs all day
// keeps its memory.
constexpr std::size_t kRecordLimit = 10000;

}  // namespace

LiveHost::LiveHost(HostSession& session, GatewayOptions options)
    : session_(session), gateway_(session, queue_, events_, std::move(options)) {
    session_.Host().SetRecordLimit(kRecordLimit);
}

bool LiveHost::Listen() {
    return gateway_.Bind();
}

double LiveHost::WallSeconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - started_).count();
}

void LiveHost::OnTurn() {
    if (*stop_ && !stopping_) {
        BeginStopping();
    }
    const double wall = WallSeconds();
    session_.Host().MoveClockTo(session_.Host().Now() + (wall - lastWall_));
    lastWall_ = wall;
    if (queue_.RunQueued() == 0 && session_.Host().Idle()) {
        queue_.WaitForWork(kWaitingTurn);
    }
}

// Runs in a turn, which may lie inside a wait of the plug-in: new requests are refused, and what a fault
// holds back is delivered now, since the plug-in cannot be stopped before its wait ends.
void LiveHost::BeginStopping() {
    stopping_ = true;
    queue_.Close();
    for (const auto& [call, seconds] : session_.Host().ReleaseHeldAnswers()) {
        *out_ << "Stopping: the plug-in waits for " << call << ", held " << std::lround(seconds)
              << " s more by a fault; answering it now. Ctrl-C again quits at once." << std::endl;
    }
}

void LiveHost::Run(const std::atomic<bool>& stop, std::ostream& out) {
    stop_ = &stop;
    out_ = &out;
    SimulatedHost& host = session_.Host();
    host.SetEventListener([this](const RecordedEvent& event) { events_.Publish(event); });
    host.SetTurnHook([this] { OnTurn(); });
    gateway_.Start();
    // Every turn looks at stop first, so the loop ends only after a turn has begun stopping: no request can
    // slip into the queue between the last turn and the loop's end.
    while (!stopping_) {
        if (host.Idle() && queue_.Empty()) {
            queue_.WaitForWork(kIdleWait);
        }
        host.RunTurn();
    }
    events_.Close();
    gateway_.Stop();
    host.SetTurnHook({});
    host.SetEventListener({});
}

}  // namespace tav::host
