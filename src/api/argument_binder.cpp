#include "api/argument_binder.h"

#include <cctype>
#include <cstdint>
#include <string>

#include "api/route_table.h"
#include "binding/value_text.h"
#include "codec/json_reader.h"
#include "codec/msgpack_reader.h"
#include "codec/yaml_reader.h"
#include "diagnostics/format_message.h"
#include "types/host_value.h"
#include "types/type_info.h"

namespace wex {

namespace {

// True when contentType begins with prefix, letters compared without case,
// so that parameters such as "; charset=utf-8" after it do not matter.
bool HasContentType(std::string_view contentType, std::string_view prefix) {
    if (contentType.size() < prefix.size()) {
        return false;
    }
    for (std::size_t at = 0; at < prefix.size(); ++at) {
        if (std::tolower(static_cast<unsigned char>(contentType[at])) !=
            std::tolower(static_cast<unsigned char>(prefix[at]))) {
            return false;
        }
    }
    return true;
}

// Where a text value of a request ends up in an argument, with the names
// that its failure messages give.
struct LeafTarget {
    BindingProperty& slot;
    std::string_view argumentName;
    std::string_view functionName;
};

bool StartsLikeMessagePack(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    const auto first = static_cast<std::uint8_t>(text.front());
    return (first >= 0x80 && first <= 0x9F) || (first >= 0xDC && first <= 0xDF);
}

std::string_view AfterLeadingSpaces(std::string_view text) {
    const std::size_t start = text.find_first_not_of(' ');
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

bool StartsLikeJson(std::string_view text) {
    const std::string_view rest = AfterLeadingSpaces(text);
    return !rest.empty() && (rest.front() == '{' || rest.front() == '[');
}

bool StartsLikeYaml(std::string_view text) {
    return AfterLeadingSpaces(text).starts_with("---");
}

// Keeps a parsed value, or fails status with the format's message.
void Keep(BindingProperty& status, const LeafTarget& target, BindingProperty&& parsed, std::string_view format) {
    if (!parsed.IsValid()) {
        status.SetError(FormatMessage(format, {target.argumentName, target.functionName, parsed.GetError()}));
        return;
    }
    target.slot = std::move(parsed);
}

// Stores text into target.slot as MessagePack, JSON, YAML, bytes or a string,
// chosen by contentType or, when detect is on and there is no content type,
// by the text's first bytes. A text that does not parse fails status with
// the deserialize message of its format.
void StoreLeafText(BindingProperty& status, const LeafTarget& target, std::string_view text,
                   std::string_view contentType, bool detect) {
    const bool guess = detect && contentType.empty();
    if (HasContentType(contentType, "application/x-msgpack") || (guess && StartsLikeMessagePack(text))) {
        MessagePackResult read = ReadMessagePack(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        Keep(status, target, std::move(read.value),
             "Couldn't deserialize MessagePack value for parameter '%1' of '%2': %3");
    } else if (HasContentType(contentType, "application/json") || (guess && StartsLikeJson(text))) {
        Keep(status, target, ParseJson(std::string(text)),
             "Couldn't deserialize JSON value for parameter '%1' of '%2': %3");
    } else if (HasContentType(contentType, "text/x-yaml") || (guess && StartsLikeYaml(text))) {
        Keep(status, target, ReadYaml(text), "Couldn't deserialize YAML value for parameter '%1' of '%2': %3");
    } else if (HasContentType(contentType, "application/octet-stream")) {
        target.slot.SetBlob(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
    } else {
        target.slot.SetString(text);
    }
}

// The elements that the dotted keys of one request may add to its
// collections, in all: far above what a real request names, and small enough
// that a hostile query (hundreds of keys, each naming a huge index) fails
// before it costs the host noticeable time or memory. It also keeps every
// index below 2^31.
constexpr std::uint64_t kGrowthLimit = 1u << 16;

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return lower;
}

std::string_view TextOf(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

}  // namespace

std::int32_t ArgumentBinder::LocationOf(std::size_t index) const {
    return index < route_.argumentLocations.size() ? route_.argumentLocations[index] : ArgumentLocationAnywhere;
}

void ArgumentBinder::BindDefaults() {
    for (std::size_t index = 0; index < slots_.size(); ++index) {
        const BindingArgumentInfo& argument = call_.function.arguments[index];
        if (argument.type.kind == BindingTypeKind::Bool && !argument.optional && slots_[index].IsEmpty()) {
            slots_[index].SetBool(false);
        }
    }
}

void ArgumentBinder::BindHeaders(const HostRequest& request) {
    std::map<std::string, std::string, std::less<>> headers;
    for (std::uint32_t index = 0; request.headers != nullptr && index < request.headerCount; ++index) {
        const HostHeader& header = request.headers[index];
        if (header.name != nullptr) {
            headers[header.name] = TextOf(header.value);
        }
    }
    if (headers.empty()) {
        return;
    }
    for (std::size_t index = 0; index < slots_.size() && !Failed(); ++index) {
        const std::int32_t location = LocationOf(index);
        if (location != ArgumentLocationAnywhere && location != ArgumentLocationHeader) {
            continue;
        }
        const std::string& name = call_.function.arguments[index].name;
        const auto found = headers.find(Lower(name));
        if (found != headers.end()) {
            BindText(name, found->second, ArgumentLocationHeader);
        }
    }
}

void ArgumentBinder::BindPathParameters(const std::map<std::string, std::string>& parameters) {
    for (const auto& [name, value] : parameters) {
        if (Failed()) {
            return;
        }
        BindText(name, value, ArgumentLocationPath);
    }
}

void ArgumentBinder::BindQuery(std::string_view query) {
    std::map<std::string, std::string> pieces;
    while (true) {
        const std::size_t end = query.find('&');
        const std::string_view piece = query.substr(0, end);
        const std::size_t equals = piece.find('=');
        const std::string_view value = equals == std::string_view::npos ? std::string_view() : piece.substr(equals + 1);
        pieces[DecodeUrlComponent(piece.substr(0, equals))] = DecodeUrlComponent(value);
        if (end == std::string_view::npos) {
            break;
        }
        query.remove_prefix(end + 1);
    }
    for (const auto& [key, value] : pieces) {
        if (Failed()) {
            return;
        }
        BindText(key, value, ArgumentLocationQuery);
    }
}

void ArgumentBinder::BindText(std::string_view key, std::string_view text, std::int32_t location) {
    const std::size_t dot = key.find('.');
    const std::string_view name = key.substr(0, dot);
    const std::ptrdiff_t index = call_.function.FindArgument(name);
    if (index < 0 || static_cast<std::size_t>(index) >= slots_.size()) {
        Fail(FormatMessage("Unknown argument '%1' for '%2'.", {name, call_.function.name}));
        return;
    }
    const std::int32_t declared = LocationOf(static_cast<std::size_t>(index));
    if (declared != ArgumentLocationAnywhere && declared != location) {
        Fail(FormatMessage("Argument '%1' for '%2' was specified in an invalid location.", {key, call_.function.name}));
        return;
    }
    if (dot == std::string_view::npos) {
        BindWhole(static_cast<std::size_t>(index), text);
        return;
    }
    BindingProperty* leaf = Walk(slots_[static_cast<std::size_t>(index)], key.substr(dot + 1));
    if (leaf != nullptr) {
        StoreLeafText(call_.result, {*leaf, name, call_.function.name}, text, {}, false);
    }
}

BindingProperty* ArgumentBinder::Walk(BindingProperty& root, std::string_view path) {
    BindingProperty* slot = &root;
    while (true) {
        const std::size_t dot = path.find('.');
        const std::string_view segment = path.substr(0, dot);
        if (!segment.empty() && std::isdigit(static_cast<unsigned char>(segment.front()))) {
            std::uint64_t index = 0;
            const NumberTextResult read = ParseUnsignedText(segment, index);
            if (read == NumberTextResult::IncorrectFormat) {
                Fail(FormatMessage("Index %1 is in an incorrect format", {segment}));
                return nullptr;
            }
            if (read == NumberTextResult::OutOfRange || !ReserveGrowth(*slot, index)) {
                Fail(FormatMessage("Index %1 is out of range", {segment}));
                return nullptr;
            }
            slot = &slot->At(static_cast<std::size_t>(index));
        } else {
            slot = &slot->Member(segment);
        }
        if (dot == std::string_view::npos) {
            return slot;
        }
        path.remove_prefix(dot + 1);
    }
}

bool ArgumentBinder::ReserveGrowth(const BindingProperty& slot, std::uint64_t index) {
    const std::uint64_t present = slot.Kind() == BindingPropertyKind::Collection ? slot.Size() : 0;
    if (index < present) {
        return true;
    }
    // index - present + 1 elements, compared without the + 1, which wraps at the largest index.
    if (index - present >= kGrowthLimit - grownElements_) {
        return false;
    }
    grownElements_ += index - present + 1;
    return true;
}

void ArgumentBinder::BindWhole(std::size_t index, std::string_view text) {
    const BindingArgumentInfo& argument = call_.function.arguments[index];
    BindingProperty& slot = slots_[index];
    const BindingTypeKind kind = argument.type.kind;
    if (text.empty()) {
        if (kind == BindingTypeKind::Bool) {
            slot.SetBool(true);
        } else if (kind == BindingTypeKind::Object || kind == BindingTypeKind::Struct) {
            slot.Reset();
            slot.MakeStructure();
        } else if (kind == BindingTypeKind::Vector) {
            slot.Reset();
            slot.MakeCollection();
        } else {
            Fail(FormatMessage("Expected value for argument '%1'.", {argument.name}));
        }
        return;
    }
    const bool detect =
        kind == BindingTypeKind::Object || kind == BindingTypeKind::Vector || kind == BindingTypeKind::Struct;
    StoreLeafText(call_.result, {slot, argument.name, call_.function.name}, text, {}, detect);
}

void ArgumentBinder::BindDirectArguments(const HostRequest& request, std::size_t pathParameterCount) {
    for (std::uint32_t position = 0; request.arguments != nullptr && position < request.argumentCount; ++position) {
        if (Failed()) {
            return;
        }
        const HostArgument& entry = request.arguments[position];
        std::ptrdiff_t index = -1;
        std::string shownName;
        if (entry.name != nullptr) {
            shownName = entry.name;
            index = call_.function.FindArgument(shownName);
        } else {
            const std::size_t computed = pathParameterCount + position;
            shownName = std::to_string(computed);
            if (computed < slots_.size()) {
                index = static_cast<std::ptrdiff_t>(computed);
            }
        }
        if (index < 0 || static_cast<std::size_t>(index) >= slots_.size()) {
            Fail(FormatMessage("Unknown argument '%1' for '%2'.", {shownName, call_.function.name}));
            return;
        }
        const std::string& name = call_.function.arguments[static_cast<std::size_t>(index)].name;
        BindingProperty value = HostValueToBinding(entry.value, name);
        if (!value.IsValid()) {
            Fail(std::string(value.GetError()));
            return;
        }
        slots_[static_cast<std::size_t>(index)] = std::move(value);
    }
}

void ArgumentBinder::BindBody(const HostRequest& request) {
    if (Failed() || request.body == nullptr) {
        return;
    }
    std::size_t index = 0;
    while (index < slots_.size() && LocationOf(index) != ArgumentLocationBody) {
        ++index;
    }
    if (index == slots_.size()) {
        return;
    }
    const std::string_view contentType = TextOf(request.contentType);
    const auto* bytes = static_cast<const std::uint8_t*>(request.body);
    BindingProperty value;
    if (HasContentType(contentType, "application/x-msgpack")) {
        MessagePackResult read = ReadMessagePack(bytes, request.bodyLength);
        if (read.value.IsValid() && read.consumed < request.bodyLength) {
            Fail("Extra MessgePack data found in body");
            return;
        }
        value = std::move(read.value);
    } else if (HasContentType(contentType, "application/json") ||
               HasContentType(contentType, "application/vnd.api+json")) {
        value = ParseJson(std::string(reinterpret_cast<const char*>(bytes), request.bodyLength));
    } else if (HasContentType(contentType, "application/x-yaml")) {
        // Read as a zero-terminated text, as JSON is.
        const std::string_view text(reinterpret_cast<const char*>(bytes), request.bodyLength);
        value = ReadYaml(text.substr(0, text.find('\0')));
    } else {
        Fail("Unsupported body content type");
        return;
    }
    if (!value.IsValid()) {
        Fail(std::string(value.GetError()));
        return;
    }
    slots_[index] = std::move(value);
}

}  // namespace wex
