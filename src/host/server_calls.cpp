#include "host/server_calls.h"

#include <cstdlib>
#include <vector>

#include "codec/json_writer.h"
#include "diagnostics/assertion.h"
#include "diagnostics/format_message.h"
#include "diagnostics/log_system.h"
#include "host/plugin_base.h"
#include "platform/process_info.h"
#include "types/registry.h"

namespace wex {

namespace {

constexpr const char* kInvokePath = "/tav-login/v1/session/invoke";
constexpr const char* kUuidRequestsPath = "/tav-login/v1/service-proxy-uuid-requests";
constexpr const char* kMethodRequestsPath = "/tav-login/v1/service-proxy-method-requests";

// Gives every record in a value the member "__class" with its server class
// name, following the registered descriptions alongside the value with a stack
// of its own rather than recursion.
struct PendingRecord {
    BindingProperty* value;
    const BindingTypeInfo* type;
};

class Annotator {
  public:
    Annotator(const BindingTypeRegistry& registry, const ServerCalls& calls) : registry_(registry), calls_(calls) {}

    void Run(BindingProperty& value, const BindingTypeIdentifier& type) {
        Push(value, type);
        while (!pending_.empty()) {
            const PendingRecord record = pending_.back();
            pending_.pop_back();
            Annotate(*record.value, *record.type);
        }
    }

  private:
    // The record's own member comes first: once it is there the record does
    // not change again, so references to its members stay valid.
    void Annotate(BindingProperty& record, const BindingTypeInfo& type) {
        if (record.Kind() != BindingPropertyKind::Structure) {
            return;
        }
        const std::string_view className = calls_.FindLcdsClassName(type.name);
        if (!className.empty()) {
            record.Member("__class").SetString(className);
        }
        for (const BindingFieldInfo& field : type.fields) {
            if (record.HasMember(field.name)) {
                Push(record.Member(field.name), field.type);
            }
        }
    }

    void Push(BindingProperty& value, const BindingTypeIdentifier& type) {
        if (type.type == nullptr) {
            return;
        }
        const BindingTypeInfo* info = registry_.FindType(type.type->id);
        if (info == nullptr || info->isEnum) {
            return;
        }
        if (type.kind == BindingTypeKind::Struct) {
            pending_.push_back({&value, info});
        } else if (type.kind == BindingTypeKind::Vector && value.Kind() == BindingPropertyKind::Collection) {
            for (std::size_t index = 0; index < value.Size(); ++index) {
                pending_.push_back({&value.At(index), info});
            }
        } else if (type.kind == BindingTypeKind::Map && value.Kind() == BindingPropertyKind::Structure) {
            for (const BindingMember member : value.Members()) {
                pending_.push_back({&value.Member(member.name), info});
            }
        }
    }

    const BindingTypeRegistry& registry_;
    const ServerCalls& calls_;
    std::vector<PendingRecord> pending_;
};

}  // namespace

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

const BindingTypeRegistry& ServerCalls::Registry() const {
    return *module_.TypeRegistry();
}

bool ServerCalls::Finalizing() const {
    return module_.IsFinalizing();
}

void ServerCalls::RegisterLcdsClassName(std::string typeName, const BindingTypeIdentity& type, std::string className) {
    lcdsClassNamesByType_.insert_or_assign(type.id, className);
    lcdsClassNamesByTypeName_.insert_or_assign(std::move(typeName), std::move(className));
}

std::string_view ServerCalls::FindLcdsClassName(std::string_view typeName) const {
    const auto found = lcdsClassNamesByTypeName_.find(typeName);
    return found != lcdsClassNamesByTypeName_.end() ? std::string_view(found->second) : std::string_view();
}

std::string_view ServerCalls::FindLcdsClassName(const BindingTypeIdentity& type) const {
    const auto found = lcdsClassNamesByType_.find(type.id);
    return found != lcdsClassNamesByType_.end() ? std::string_view(found->second) : std::string_view();
}

void ServerCalls::AnnotateArgument(BindingProperty& argument, const BindingTypeIdentifier& type) const {
    Annotator(Registry(), *this).Run(argument, type);
}

MaybeType<Failure, PluginLcdsResponse> ServerCalls::InvokeLcdsRequest(std::string_view destination,
                                                                      std::string_view method,
                                                                      const BindingProperty& arguments) {
    return module_.Request<PluginLcdsResponse>(HostMethodPost, kInvokePath, destination, method, arguments);
}

std::optional<Failure> ServerCalls::CheckLcdsClass(const BindingTypeIdentity& expectedType,
                                                   std::string_view destination, std::string_view method,
                                                   std::string_view actual) const {
    const std::string_view expected = FindLcdsClassName(expectedType);
    if (expected.empty() || expected == actual) {
        return std::nullopt;
    }
    return Failure(0, "Expected '{expected}' as LCDS response for {destination}.{method}, but got '{actual}'",
                   {std::string(expected), std::string(destination), std::string(method), std::string(actual)});
}

Failure ServerCalls::LcdsConversionFailure(const char* typeName, const BindingProperty& body) {
    return Failure(0, "Couldn't convert LCDS DTO {name} to a native record from {json}",
                   {std::string(typeName), WriteJson(body)});
}

std::string ServerCalls::PayloadConversionMessage(const char* typeName) {
    const Failure failure(0, "Failed to convert type {type} to BindingProperty for serialization",
                          {std::string(typeName)});
    return std::string(failure.Message());
}

std::string ServerCalls::StartServiceProxyRequest(const std::string& serviceName, const std::string& methodName,
                                                  const BindingProperty& payload, const std::string& responseMethodName,
                                                  const std::string& extraArgument, ServiceProxyCompletion completion) {
    const std::string callName = serviceName + "." + methodName;
    if (serviceProxy_.CompletingOnThisThread()) {
        FailNestedServiceProxyRequest(callName);
    }
    LogMessage(LogLevel::Always, LogCategory::Dbg, "%s: Preparing service proxy request: %s", module_.Name().c_str(),
               callName.c_str());
    std::string key;
    if (!responseMethodName.empty()) {
        key = serviceName + "." + responseMethodName;
        if (serviceProxy_.IsPending(key)) {
            LogMessage(LogLevel::Error, LogCategory::Dbg,
                       "%s: Could not invoke service proxy as request is already in flight", module_.Name().c_str());
            return "Request already in flight";
        }
        MaybeType<Failure, void> sent =
            module_.Request(HostMethodPost, kMethodRequestsPath, serviceName, methodName, responseMethodName,
                            extraArgument, module_.HostContext(), payload);
        if (sent.HasFailure()) {
            return std::string(sent.GetFailure().Message());
        }
    } else {
        MaybeType<Failure, std::string> uuid = module_.Request<std::string>(
            HostMethodPost, kUuidRequestsPath, serviceName, methodName, module_.HostContext(), payload);
        if (uuid.HasFailure()) {
            return std::string(uuid.GetFailure().Message());
        }
        key = std::move(uuid).Value();
    }
    LogMessage(LogLevel::Always, LogCategory::Dbg, "%s: Started service proxy request: %s (%s)", module_.Name().c_str(),
               callName.c_str(), key.c_str());
    serviceProxy_.AddPending(key, std::move(completion));
    MatchServiceProxyResponses();
    return {};
}

void ServerCalls::FailNestedServiceProxyRequest(const std::string& callName) {
    // Completions run under the service-proxy lock: going on would wait for
    // it forever, so the broken rule ends the process with its name instead.
    LogMessage(LogLevel::Error, LogCategory::Dbg, "%s: Service proxy request %s started inside a completion",
               module_.Name().c_str(), callName.c_str());
    ReportAssertion("No service-proxy request inside a service-proxy completion",
                    FormatMessage("%1 was started while a completion held the service-proxy lock", {callName}), "", 0,
                    "");
    std::abort();
}

void ServerCalls::RegisterServiceProxyAsyncHandler(const std::string& serviceName, const std::string& methodName,
                                                   ServiceProxyCompletion handler) {
    serviceProxy_.AddAsyncHandler(serviceName + "." + methodName, std::move(handler));
}

void ServerCalls::OnServiceProxyUuidEvent(const PluginServiceProxyResponse& response) {
    serviceProxy_.AddResponse(response.uuid, response);
    MatchServiceProxyResponses();
}

void ServerCalls::OnServiceProxyMethodEvent(const PluginServiceProxyResponse& response) {
    serviceProxy_.AddResponse(response.serviceName + "." + response.methodName, response);
    MatchServiceProxyResponses();
}

void ServerCalls::OnServiceProxyAsyncEvent(const PluginServiceProxyResponse& response) {
    const std::string key = response.serviceName + "." + response.methodName;
    if (!serviceProxy_.CallAsyncHandler(key, response)) {
        LogMessage(LogLevel::Error, LogCategory::Dbg,
                   "%s: Could not find registered handler for async service proxy event %s", module_.Name().c_str(),
                   key.c_str());
    }
}

void ServerCalls::MatchServiceProxyResponses() {
    if (const std::optional<std::string> key = serviceProxy_.MatchOne()) {
        LogMessage(LogLevel::Always, LogCategory::Dbg, "%s: Fulfilled service proxy request: %s",
                   module_.Name().c_str(), key->c_str());
    }
}

}  // namespace wex
