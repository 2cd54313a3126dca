// Event tracing is reached through functions looked up in Advapi32.dll at run
// time, so that a system without them loads the plug-in all the same.
#include <windows.h>
// After windows.h, which defines the types it uses.
#include <evntprov.h>

#include <array>
#include <atomic>
#include <cstddef>

#include "platform/event_tracing.h"

namespace wex::platform {
namespace {

using EventRegisterFunction = ULONG(WINAPI*)(LPCGUID, PENABLECALLBACK, PVOID, PREGHANDLE);
using EventWriteFunction = ULONG(WINAPI*)(REGHANDLE, PCEVENT_DESCRIPTOR, ULONG, PEVENT_DATA_DESCRIPTOR);
using EventUnregisterFunction = ULONG(WINAPI*)(REGHANDLE);

constexpr UCHAR kLevelInformation = 4;
constexpr ULONG kControlDisable = 0;
constexpr ULONG kControlEnable = 1;

// The framework's events: one per provider; only the thread name is ever written.
constexpr EVENT_DESCRIPTOR kGeneralEvent = {1, 0, 0, kLevelInformation, 0, 1, 0x1};
constexpr EVENT_DESCRIPTOR kThreadNameEvent = {1, 0, 0, kLevelInformation, 0, 1, 0x1};
constexpr EVENT_DESCRIPTOR kRequestEvent = {1, 0, 0, kLevelInformation, 0, 1, 0x2};
constexpr EVENT_DESCRIPTOR kMemoryEvent = {1, 0, 0, kLevelInformation, 0, 1, 0x4};

constexpr std::size_t kMaxEventsPerProvider = 1;

struct TraceProvider {
    GUID id;
    std::array<const EVENT_DESCRIPTOR*, kMaxEventsPerProvider> events;
    REGHANDLE handle = 0;
    bool registered = false;
    // Written by the enable callback, which runs on a thread of the tracing service.
    std::atomic<UCHAR> level{0};
    std::atomic<ULONGLONG> matchAnyKeyword{0};
    std::atomic<ULONGLONG> matchAllKeyword{0};
    std::array<std::atomic<bool>, kMaxEventsPerProvider> eventEnabled{};
};

// {5E0C3A51-7B2D-4C8E-9A41-3F6D2B8C1E01} and the three that follow.
TraceProvider gProviders[] = {
    {{0x5E0C3A51, 0x7B2D, 0x4C8E, {0x9A, 0x41, 0x3F, 0x6D, 0x2B, 0x8C, 0x1E, 0x01}}, {&kGeneralEvent}},
    {{0x5E0C3A51, 0x7B2D, 0x4C8E, {0x9A, 0x41, 0x3F, 0x6D, 0x2B, 0x8C, 0x1E, 0x02}}, {&kThreadNameEvent}},
    {{0x5E0C3A51, 0x7B2D, 0x4C8E, {0x9A, 0x41, 0x3F, 0x6D, 0x2B, 0x8C, 0x1E, 0x03}}, {&kRequestEvent}},
    {{0x5E0C3A51, 0x7B2D, 0x4C8E, {0x9A, 0x41, 0x3F, 0x6D, 0x2B, 0x8C, 0x1E, 0x04}}, {&kMemoryEvent}},
};
constexpr std::size_t kThreadNameProvider = 1;

struct TracingLibrary {
    HMODULE module = nullptr;
    EventRegisterFunction eventRegister = nullptr;
    EventWriteFunction eventWrite = nullptr;
    EventUnregisterFunction eventUnregister = nullptr;
};
TracingLibrary gLibrary;

bool IsEventEnabled(const TraceProvider& provider, const EVENT_DESCRIPTOR& event) {
    UCHAR level = provider.level.load();
    if (level != 0 && event.Level > level) {
        return false;
    }
    if (event.Keyword == 0) {
        return true;
    }
    ULONGLONG all = provider.matchAllKeyword.load();
    return (event.Keyword & provider.matchAnyKeyword.load()) != 0 && (event.Keyword & all) == all;
}

void NTAPI OnEnableChanged(LPCGUID, ULONG controlCode, UCHAR level, ULONGLONG matchAnyKeyword,
                           ULONGLONG matchAllKeyword, PEVENT_FILTER_DESCRIPTOR, PVOID context) {
    auto* provider = static_cast<TraceProvider*>(context);
    if (controlCode == kControlEnable) {
        provider->level.store(level);
        provider->matchAnyKeyword.store(matchAnyKeyword);
        provider->matchAllKeyword.store(matchAllKeyword);
        for (std::size_t i = 0; i < kMaxEventsPerProvider; ++i) {
            provider->eventEnabled[i].store(IsEventEnabled(*provider, *provider->events[i]));
        }
    } else if (controlCode == kControlDisable) {
        provider->level.store(0);
        provider->matchAnyKeyword.store(0);
        provider->matchAllKeyword.store(0);
        for (std::atomic<bool>& enabled : provider->eventEnabled) {
            enabled.store(false);
        }
    }
}

// GetProcAddress returns a generic function pointer; the untyped step keeps the cast explicit.
template <class Function>
Function LookUp(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

bool LoadTracingLibrary() {
    HMODULE module = LoadLibraryA("Advapi32.dll");
    if (module == nullptr) {
        return false;
    }
    auto eventRegister = LookUp<EventRegisterFunction>(module, "EventRegister");
    auto eventWrite = LookUp<EventWriteFunction>(module, "EventWrite");
    auto eventUnregister = LookUp<EventUnregisterFunction>(module, "EventUnregister");
    if (eventRegister == nullptr || eventWrite == nullptr || eventUnregister == nullptr) {
        FreeLibrary(module);
        return false;
    }
    gLibrary = {module, eventRegister, eventWrite, eventUnregister};
    return true;
}

void WriteMainThreadEvent(TraceProvider& provider) {
    ULONG threadId = GetCurrentThreadId();
    static constexpr char kThreadName[] = "Main thread";
    EVENT_DATA_DESCRIPTOR data[2];
    EventDataDescCreate(&data[0], &threadId, sizeof threadId);
    EventDataDescCreate(&data[1], kThreadName, sizeof kThreadName);
    gLibrary.eventWrite(provider.handle, provider.events[0], 2, data);
}

}  // namespace

void RegisterEventTracing() {
    if (gLibrary.module != nullptr || !LoadTracingLibrary()) {
        return;
    }
    for (TraceProvider& provider : gProviders) {
        provider.registered =
            gLibrary.eventRegister(&provider.id, &OnEnableChanged, &provider, &provider.handle) == ERROR_SUCCESS;
    }
    TraceProvider& threadNames = gProviders[kThreadNameProvider];
    if (threadNames.registered && threadNames.eventEnabled[0].load()) {
        WriteMainThreadEvent(threadNames);
    }
}

void UnregisterEventTracing() {
    if (gLibrary.module == nullptr) {
        return;
    }
    for (TraceProvider& provider : gProviders) {
        if (provider.registered) {
            gLibrary.eventUnregister(provider.handle);
            provider.registered = false;
            provider.handle = 0;
        }
    }
    FreeLibrary(gLibrary.module);
    gLibrary = {};
}

}  // namespace wex::platform
