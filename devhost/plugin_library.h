#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "boundary/boundary.h"

namespace tav::host {

struct CoreVersion {
    std::uint32_t major = 18;
    std::uint32_t minor = 0;
    std::uint32_t patch = 0;

    std::string ToString() const;
};

// Reads "major.minor.patch"; nothing when the text is not three numbers.
std::optional<CoreVersion> ParseCoreVersion(const std::string& text);

// The 64-bit counters of a MemoryStats record.
struct MemoryCounters {
    std::uint64_t peakLiveBytes = 0;
    std::uint64_t liveCountAtPeak = 0;
    std::uint64_t allocatedBytes = 0;
    std::uint64_t allocations = 0;
    std::uint64_t freedBytes = 0;
    std::uint64_t frees = 0;

    std::uint64_t LiveBytes() const { return allocatedBytes - freedBytes; }
};

MemoryCounters ReadMemoryCounters(const MemoryStats& stats);

// A plug-in loaded as the platform's core process loads it: opened, the one
// exported entry, then the three callbacks it hands back.
class PluginLibrary {
  public:
    PluginLibrary() = default;
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;
    ~PluginLibrary();

    // Opens the library and finds load_tav_leagues; on failure error() says why.
    bool Open(const std::string& path);
    // Uses an entry linked into this process instead of a library's, such as
    // wex::LoadPlugin<Module> in unit tests.
    void UseEntry(PluginLoadFunction entry) { entry_ = entry; }
    // Calls the entry with the core version; false when it returned null.
    bool Load(const CoreVersion& version);
    // Calls Start; the start info must stay valid until Stop.
    bool Start(const PluginStartInfo& info);
    void Stop();
    MemoryCounters Memory() const;

    const std::string& error() const { return error_; }
    const PluginLoadInfo& loadInfo() const { return loadInfo_; }
    bool loaded() const { return context_ != nullptr; }

  private:
    void* handle_ = nullptr;
    PluginLoadFunction entry_ = nullptr;
    PluginLoadInfo loadInfo_{};
    void* context_ = nullptr;
    PluginCallbacks callbacks_{};
    std::string error_;
};

}  // namespace tav::host
