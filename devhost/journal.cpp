#include "journal.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace tav::host {

namespace {

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    for (std::string_view keyword : {"class ", "struct "}) {
        if (text.substr(0, keyword.size()) == keyword) {
            text.remove_prefix(keyword.size());
        }
    }
    return text;
}

// The first type of a template's argument list: text up to the first ',' or '>' outside brackets.
std::string_view FirstArgument(std::string_view text) {
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '<') {
            ++depth;
        } else if ((text[at] == '>' && depth-- == 0) || (text[at] == ',' && depth == 0)) {
            return text.substr(0, at);
        }
    }
    return text;
}

// "LeagueListDTO" becomes "league list".
std::string Words(std::string_view name) {
    if (name.size() > 3 && name.substr(name.size() - 3) == "DTO") {
        name.remove_suffix(3);
    }
    std::string words;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const auto c = static_cast<unsigned char>(name[at]);
        if (std::isupper(c) && at > 0 && !std::isupper(static_cast<unsigned char>(name[at - 1]))) {
            words += ' ';
        }
        words += static_cast<char>(std::tolower(c));
    }
    return words;
}

}  // namespace

std::int64_t Journal::NowMs() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

std::uint64_t Journal::Add(std::string kind, std::string summary, std::string detail) {
    std::lock_guard lock(mutex_);
    const std::uint64_t id = nextId_++;
    entries_.push_back({id, NowMs(), std::move(kind), std::move(summary), std::move(detail)});
    if (limit_ != 0 && entries_.size() > limit_) {
        entries_.erase(entries_.begin(), entries_.end() - static_cast<std::ptrdiff_t>(limit_ - limit_ / 10));
    }
    return id;
}

void Journal::Update(std::uint64_t id, std::string summary, std::string detail) {
    std::lock_guard lock(mutex_);
    if (entries_.empty() || id < entries_.front().id || id > entries_.back().id) {
        return;
    }
    JournalEntry& entry = entries_[id - entries_.front().id];
    entry.summary = std::move(summary);
    entry.detail = std::move(detail);
}

std::vector<JournalEntry> Journal::Select(const JournalFilter& filter) const {
    std::lock_guard lock(mutex_);
    std::vector<JournalEntry> selected;
    for (auto entry = entries_.rbegin(); entry != entries_.rend() && selected.size() < filter.limit; ++entry) {
        if (entry->id <= filter.since) {
            break;
        }
        if (filter.kind.empty() || entry->kind == filter.kind) {
            selected.push_back(*entry);
        }
    }
    std::reverse(selected.begin(), selected.end());
    return selected;
}

void Journal::Clear() {
    std::lock_guard lock(mutex_);
    entries_.clear();
}

void Journal::SetLimit(std::size_t limit) {
    std::lock_guard lock(mutex_);
    limit_ = limit;
}

std::string Shortened(std::string text, std::size_t limit) {
    if (text.size() > limit) {
        const std::size_t size = text.size();
        text.resize(limit);
        text += "... (" + std::to_string(size) + " bytes)";
    }
    return text;
}

std::string TimeText(std::int64_t timeMs) {
    using namespace std::chrono;
    const sys_time<milliseconds> time{milliseconds(timeMs)};
    const sys_days day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return text;
}

std::string WaitSubject(std::string_view label) {
    if (label.substr(0, 6) == "Wait: ") {
        label.remove_prefix(6);
    }
    const std::size_t maybe = label.find("MaybeType<");
    if (maybe == std::string_view::npos) {
        return std::string(label);
    }
    std::string_view type = label.substr(maybe + 10);
    type = Trimmed(type.substr(FirstArgument(type).size() + 1));
    type = FirstArgument(type);
    const bool list = type.substr(0, 12) == "std::vector<";
    if (list) {
        type = Trimmed(FirstArgument(type.substr(12)));
    }
    const std::size_t scope = type.rfind("::", type.find('<'));
    std::string_view name = scope == std::string_view::npos ? type : type.substr(scope + 2);
    name = name.substr(0, name.find('<'));
    return (name == "BindingProperty" ? std::string("value") : Words(name)) + (list ? " list" : "");
}

}  // namespace tav::host
