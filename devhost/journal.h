#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tav::host {

// One thing that happened on the host, told for people: "server leagues.getAllMyLeagues -> 200 in 2 ms".
// detail keeps the raw facts (a wait's own label, a call's arguments).
struct JournalEntry {
    std::uint64_t id = 0;     // grows by one with each entry, from 1
    std::int64_t timeMs = 0;  // wall clock, milliseconds since 1970
    std::string kind;         // "http", "server", "request", "event", "subscription", "schedule", "wait"
    std::string summary;
    std::string detail;
};

// What GET /devhost/journal selects: entries of one kind (all when empty), with an id above since, at most
// limit of them, the newest.
struct JournalFilter {
    std::string kind;
    std::uint64_t since = 0;
    std::size_t limit = 100;
};

// The host's readable journal: a bounded list of entries that the host thread and the HTTP threads add to.
class Journal {
  public:
    // Keeps at most limit entries: a full journal drops its oldest tenth. 0 keeps everything.
    explicit Journal(std::size_t limit = 0) : limit_(limit) {}

    std::uint64_t Add(std::string kind, std::string summary, std::string detail = {});
    // Rewrites an entry that is still kept, as when a server call it tells of is answered.
    void Update(std::uint64_t id, std::string summary, std::string detail);
    std::vector<JournalEntry> Select(const JournalFilter& filter) const;
    void Clear();
    void SetLimit(std::size_t limit);

    // Milliseconds since 1970 on the wall clock.
    static std::int64_t NowMs();

  private:
    mutable std::mutex mutex_;
    std::deque<JournalEntry> entries_;
    std::uint64_t nextId_ = 1;
    std::size_t limit_;
};

// text cut to limit bytes, followed by "... (N bytes)" when longer, so that long payloads stay readable.
std::string Shortened(std::string text, std::size_t limit = 2048);
// "2026-11-01T09:30:00.250Z".
std::string TimeText(std::int64_t timeMs);
// What the plug-in waits for, from its wait label: "Wait: future<... [with T = wex::MaybeType<wex::Failure,
// Orvel::Client::Leagues::LCDS::LeagueListDTO>]>" is "league list", "Wait: yield" is "yield".
std::string WaitSubject(std::string_view label);

}  // namespace tav::host
