#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "host/framework_records.h"

namespace wex {

// Completes a service-proxy call with its answer. Runs under the tables'
// lock, so it must not start another service-proxy call: one that does ends
// the process with an assertion report naming the call.
using ServiceProxyCompletion = std::function<void(const PluginServiceProxyResponse& response)>;

// The service-proxy calls in flight, the answers received for them and the
// handlers of asynchronous answers, under one lock held for each operation.
// Keys are a uuid, or "service.method" for method requests and async handlers.
class ServiceProxyTables {
  public:
    bool IsPending(const std::string& key) const;
    // An entry under the same key is replaced.
    void AddPending(const std::string& key, ServiceProxyCompletion completion);
    void AddResponse(const std::string& key, const PluginServiceProxyResponse& response);
    void AddAsyncHandler(const std::string& key, ServiceProxyCompletion handler);

    // Calls the async handler of key with response; false when there is none.
    bool CallAsyncHandler(const std::string& key, const PluginServiceProxyResponse& response);

    // The matching step: the first received answer, in table order, whose key
    // is pending completes its call, and both entries go. Answers that key,
    // or nothing when no answer matched. An answer that came before its call
    // was stored waits for the call's own matching step.
    std::optional<std::string> MatchOne();

    void Clear();

    // True while a completion or an async handler runs on the calling thread,
    // under the lock: a call started then would wait for the lock forever.
    bool CompletingOnThisThread() const;

  private:
    // Notes the calling thread as the one running a completion, until it returns.
    class CompletionScope;

    mutable std::mutex mutex_;
    std::atomic<const void*> completingThread_{nullptr};
    std::map<std::string, ServiceProxyCompletion> pending_;
    std::map<std::string, PluginServiceProxyResponse> responses_;
    std::map<std::string, ServiceProxyCompletion> asyncHandlers_;
};

}  // namespace wex
