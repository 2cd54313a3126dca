#pragma once

namespace wex::platform {

// Announces the framework to the platform's event tracing: registers its trace
// providers and, when a session listens for it, writes the "Main thread" event
// for the calling thread. Called once at load, on the host's thread. Where the
// platform has no event tracing (POSIX systems) there is nothing to announce.
void RegisterEventTracing();

// Unregisters every provider that RegisterEventTracing registered. Called at unload.
void UnregisterEventTracing();

}  // namespace wex::platform
