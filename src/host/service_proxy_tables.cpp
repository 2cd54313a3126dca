#include "host/service_proxy_tables.h"

#include "platform/thread_id.h"

namespace wex {

class ServiceProxyTables::CompletionScope {
  public:
    explicit CompletionScope(std::atomic<const void*>& thread) : thread_(thread) {
        thread_.store(platform::CurrentThreadId());
    }
    ~CompletionScope() { thread_.store(nullptr); }
    CompletionScope(const CompletionScope&) = delete;
    CompletionScope& operator=(const CompletionScope&) = delete;

  private:
    std::atomic<const void*>& thread_;
};

bool ServiceProxyTables::CompletingOnThisThread() const {
    return completingThread_.load() == platform::CurrentThreadId();
}

bool ServiceProxyTables::IsPending(const std::string& key) const {
    const std::lock_guard lock(mutex_);
    return pending_.count(key) != 0;
}

void ServiceProxyTables::AddPending(const std::string& key, ServiceProxyCompletion completion) {
    const std::lock_guard lock(mutex_);
    pending_.insert_or_assign(key, std::move(completion));
}

void ServiceProxyTables::AddResponse(const std::string& key, const PluginServiceProxyResponse& response) {
    const std::lock_guard lock(mutex_);
    responses_.insert_or_assign(key, response);
}

void ServiceProxyTables::AddAsyncHandler(const std::string& key, ServiceProxyCompletion handler) {
    const std::lock_guard lock(mutex_);
    asyncHandlers_.insert_or_assign(key, std::move(handler));
}

bool ServiceProxyTables::CallAsyncHandler(const std::string& key, const PluginServiceProxyResponse& response) {
    const std::lock_guard lock(mutex_);
    const auto found = asyncHandlers_.find(key);
    if (found == asyncHandlers_.end()) {
        return false;
    }
    const CompletionScope completing(completingThread_);
    found->second(response);
    return true;
}

std::optional<std::string> ServiceProxyTables::MatchOne() {
    const std::lock_guard lock(mutex_);
    for (auto response = responses_.begin(); response != responses_.end(); ++response) {
        const auto pending = pending_.find(response->first);
        if (pending == pending_.end()) {
            continue;
        }
        // Both entries leave the tables before the call completes, so that a
        // completion that fails cannot be matched twice.
        const ServiceProxyCompletion completion = std::move(pending->second);
        const PluginServiceProxyResponse answer = std::move(response->second);
        std::string key = response->first;
        pending_.erase(pending);
        responses_.erase(response);
        const CompletionScope completing(completingThread_);
        completion(answer);
        return key;
    }
    return std::nullopt;
}

void ServiceProxyTables::Clear() {
    const std::lock_guard lock(mutex_);
    pending_.clear();
    asyncHandlers_.clear();
    responses_.clear();
}

}  // namespace wex
