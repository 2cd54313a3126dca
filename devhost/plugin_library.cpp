#include "plugin_library.h"

#include <charconv>

#include "address_sanitizer.h"
#include "platform/abort_notice.h"
#include "platform/dynamic_library.h"

namespace tav::host {

std::string CoreVersion::ToString() const {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

std::optional<CoreVersion> ParseCoreVersion(const std::string& text) {
    CoreVersion version;
    std::uint32_t* parts[] = {&version.major, &version.minor, &version.patch};
    const char* cursor = text.data();
    const char* end = text.data() + text.size();
    for (int i = 0; i < 3; ++i) {
        auto [next, error] = std::from_chars(cursor, end, *parts[i]);
        if (error != std::errc() || next == cursor) {
            return std::nullopt;
        }
        cursor = next;
        if (i < 2) {
            if (cursor == end || *cursor != '.') {
                return std::nullopt;
            }
            ++cursor;
        }
    }
    if (cursor != end) {
        return std::nullopt;
    }
    return version;
}

MemoryCounters ReadMemoryCounters(const MemoryStats& stats) {
    auto counter = [&](int index) {
        return stats.words[2 * index] | (static_cast<std::uint64_t>(stats.words[2 * index + 1]) << 32);
    };
    return MemoryCounters{counter(0), counter(1), counter(2), counter(3), counter(4), counter(5)};
}

PluginLibrary::~PluginLibrary() {
    Stop();
    if (handle_ != nullptr) {
        wex::platform::CloseDynamicLibrary(handle_);
    }
}

bool PluginLibrary::Open(const std::string& path) {
    // The plug-in's own runtime keeps an exception pool for the life of the
    // library. Under the leak checker the library stays mapped after it is
    // closed, so that pool stays reachable instead of being reported as a leak.
    std::string reason;
    handle_ = wex::platform::OpenDynamicLibrary(path, kUnderAddressSanitizer, reason);
    if (handle_ == nullptr) {
        error_ = "cannot load " + path + ": " + reason;
        return false;
    }
    entry_ = reinterpret_cast<PluginLoadFunction>(wex::platform::FindLibraryFunction(handle_, "load_tav_leagues"));
    if (entry_ == nullptr) {
        error_ = path + " does not export load_tav_leagues";
        return false;
    }
    return true;
}

bool PluginLibrary::Load(const CoreVersion& version) {
    if (entry_ == nullptr) {
        error_ = "no plug-in entry to load";
        return false;
    }
    loadInfo_ = PluginLoadInfo{};
    loadInfo_.major = version.major;
    loadInfo_.minor = version.minor;
    loadInfo_.patch = version.patch;
    {
        // The plug-in ends the process inside its entry to refuse a core
        // version, and its assertion report alone does not say how to go on.
        const wex::platform::AbortNotice notice(
            "tav-host: the plug-in ended the process on loading with core plugin API " + version.ToString() +
            "; offer the version it supports with --core-version X.Y.Z\n");
        context_ = entry_(&loadInfo_);
    }
    if (context_ == nullptr || loadInfo_.callbacks == nullptr) {
        error_ = "load_tav_leagues returned no module";
        context_ = nullptr;
        return false;
    }
    callbacks_ = *loadInfo_.callbacks;
    return true;
}

bool PluginLibrary::Start(const PluginStartInfo& info) {
    return context_ != nullptr && callbacks_.Start(context_, &info);
}

void PluginLibrary::Stop() {
    if (context_ != nullptr) {
        callbacks_.Stop(context_);
        context_ = nullptr;
    }
}

MemoryCounters PluginLibrary::Memory() const {
    MemoryStats stats{};
    if (callbacks_.GetMemoryStats != nullptr) {
        callbacks_.GetMemoryStats(context_, &stats);
    }
    return ReadMemoryCounters(stats);
}

}  // namespace tav::host
