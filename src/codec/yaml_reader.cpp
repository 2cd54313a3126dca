#include "codec/yaml_reader.h"

#include <yaml.h>
#include <cstddef>
#include <new>
#include <string>
#include <unordered_map>
#include <vector>

#include "binding/property.h"
#include "binding/tree_builder.h"
#include "codec/yaml_scalar.h"
#include "diagnostics/format_message.h"

namespace wex {

// The anchors of one YAML read, each holding a copy of its value, and the
// budget of nodes that copies may create: aliases copy whole values, so a few
// lines of nested aliases could otherwise ask for billions of nodes. The
// copies kept for anchors count against the same budget, as nesting anchors
// copies each level again.
class YamlAnchors {
  public:
    static constexpr std::size_t kMaxCopiedNodes = 1000000;

    enum class Result { Ok, Duplicate, Undefined, Cyclic, TooManyNodes };

    // Takes the name for a container that has just started.
    Result Open(const std::string& name);
    // Stores a copy of the finished container that was opened under name.
    Result Close(const std::string& name, const BindingProperty& value);
    // Takes the name and stores a copy of a scalar's value.
    Result Add(const std::string& name, const BindingProperty& value);
    // Copies the anchored value into slot.
    Result CopyTo(const std::string& name, BindingProperty& slot);

  private:
    struct Anchor {
        BindingProperty value;
        std::size_t nodes = 0;
        bool open = true;
    };

    Result Store(Anchor& anchor, const BindingProperty& value);
    bool Spend(std::size_t nodes);

    std::unordered_map<std::string, Anchor> anchors_;
    std::size_t copiedNodes_ = 0;
};

namespace {

// Walks with its own stack: an anchored value may be nested very deep.
std::size_t CountNodes(const BindingProperty& root) {
    std::size_t count = 0;
    std::vector<const BindingProperty*> pending{&root};
    while (!pending.empty()) {
        const BindingProperty* node = pending.back();
        pending.pop_back();
        ++count;
        for (const BindingProperty& element : node->Elements()) {
            pending.push_back(&element);
        }
        for (const BindingMember member : node->Members()) {
            pending.push_back(&member.value);
        }
    }
    return count;
}

}  // namespace

bool YamlAnchors::Spend(std::size_t nodes) {
    if (nodes > kMaxCopiedNodes - copiedNodes_) {
        return false;
    }
    copiedNodes_ += nodes;
    return true;
}

YamlAnchors::Result YamlAnchors::Store(Anchor& anchor, const BindingProperty& value) {
    anchor.nodes = CountNodes(value);
    if (!Spend(anchor.nodes)) {
        return Result::TooManyNodes;
    }
    anchor.value = value;
    anchor.open = false;
    return Result::Ok;
}

YamlAnchors::Result YamlAnchors::Open(const std::string& name) {
    return anchors_.try_emplace(name).second ? Result::Ok : Result::Duplicate;
}

YamlAnchors::Result YamlAnchors::Close(const std::string& name, const BindingProperty& value) {
    return Store(anchors_.at(name), value);
}

YamlAnchors::Result YamlAnchors::Add(const std::string& name, const BindingProperty& value) {
    const auto [anchor, added] = anchors_.try_emplace(name);
    return added ? Store(anchor->second, value) : Result::Duplicate;
}

YamlAnchors::Result YamlAnchors::CopyTo(const std::string& name, BindingProperty& slot) {
    const auto found = anchors_.find(name);
    if (found == anchors_.end()) {
        return Result::Undefined;
    }
    const Anchor& anchor = found->second;
    if (anchor.open) {
        return Result::Cyclic;
    }
    if (!Spend(anchor.nodes)) {
        return Result::TooManyNodes;
    }
    slot = anchor.value;
    return Result::Ok;
}

namespace {

// libyaml's parser over a text, released on every path.
class YamlParser {
  public:
    explicit YamlParser(std::string_view text) {
        if (yaml_parser_initialize(&parser_) == 0) {
            throw std::bad_alloc();
        }
        yaml_parser_set_encoding(&parser_, YAML_UTF8_ENCODING);
        yaml_parser_set_input_string(&parser_, reinterpret_cast<const unsigned char*>(text.data()), text.size());
    }
    ~YamlParser() { yaml_parser_delete(&parser_); }
    YamlParser(const YamlParser&) = delete;
    YamlParser& operator=(const YamlParser&) = delete;

    // False on a parse error; the event is then empty.
    bool Parse(yaml_event_t& event) { return yaml_parser_parse(&parser_, &event) != 0; }

    bool Failed() const { return parser_.error != YAML_NO_ERROR; }
    std::string Problem() const {
        return FormatMessage("YAML parser error: %1. At line: %2 col: %3",
                             {parser_.problem, parser_.problem_mark.line, parser_.problem_mark.column});
    }

  private:
    yaml_parser_t parser_;
};

// Left uninitialised: the parser clears an event before anything else, and
// clearing it here as well costs a tenth of a read.
struct YamlEvent {
    yaml_event_t event;
    YamlEvent() = default;
    ~YamlEvent() { yaml_event_delete(&event); }
    YamlEvent(const YamlEvent&) = delete;
    YamlEvent& operator=(const YamlEvent&) = delete;
};

std::string_view Text(const yaml_char_t* text) {
    return text != nullptr ? reinterpret_cast<const char*>(text) : std::string_view();
}

// Builds the value tree from the parser's events through the tree builder,
// keeping the anchors of the open sequences and mappings beside it.
class YamlTreeBuilder {
  public:
    explicit YamlTreeBuilder(BindingProperty& root) : root_(root), builder_(root) {}

    void Handle(const yaml_event_t& event) {
        // Read only on failure: the parser has just written the mark, and
        // reading it at once would wait on those stores.
        mark_ = &event.start_mark;
        switch (event.type) {
            case YAML_DOCUMENT_START_EVENT:
                if (!root_.IsEmpty()) {
                    root_.SetError("Multi-document YAML is not supported.");
                }
                break;
            case YAML_SCALAR_EVENT:
                Scalar(event.data.scalar);
                break;
            case YAML_ALIAS_EVENT:
                Alias(std::string(Text(event.data.alias.anchor)));
                break;
            case YAML_SEQUENCE_START_EVENT:
                Open(false, Text(event.data.sequence_start.anchor));
                break;
            case YAML_MAPPING_START_EVENT:
                Open(true, Text(event.data.mapping_start.anchor));
                break;
            case YAML_SEQUENCE_END_EVENT:
            case YAML_MAPPING_END_EVENT:
                Close();
                break;
            default:
                break;
        }
    }

  private:
    bool InKeyPosition() const { return builder_.ExpectsKey(); }

    void Fail(std::string_view message) {
        root_.SetError(FormatMessage(message, {mark_->line + 1, mark_->column + 1}));
    }

    void FailFor(std::string_view message, const std::string& anchor) {
        root_.SetError(FormatMessage(message, {anchor, mark_->line + 1, mark_->column + 1}));
    }

    // Answers whether reading goes on.
    bool Check(YamlAnchors::Result result, const std::string& anchor) {
        switch (result) {
            case YamlAnchors::Result::Ok:
                return true;
            case YamlAnchors::Result::Duplicate:
                FailFor("Duplicate occurrence of anchor \"%1\". At line: %2 col: %3", anchor);
                return false;
            case YamlAnchors::Result::Undefined:
                FailFor("Undefined alias encountered: \"%1\". At line: %2 col: %3", anchor);
                return false;
            case YamlAnchors::Result::Cyclic:
                FailFor("Cannot deserialize cyclic aliases. Alias \"%1\". At line: %2 col: %3", anchor);
                return false;
            case YamlAnchors::Result::TooManyNodes:
                Fail("Too many nodes created by aliases (more than 1000000). At line: %1 col: %2");
                return false;
        }
        return false;
    }

    void Scalar(const decltype(yaml_event_t::data.scalar)& scalar) {
        const std::string_view tag = Text(scalar.tag);
        const std::string_view text(reinterpret_cast<const char*>(scalar.value), scalar.length);
        const std::string_view anchor = Text(scalar.anchor);
        if (InKeyPosition()) {
            if (!tag.empty() && tag != "tag:yaml.org,2002:str") {
                Fail("Invalid mapping key. Only string scalar keys are allowed. At line: %1 col: %2");
                return;
            }
            builder_.Key(text);
            if (!anchor.empty()) {
                BindingProperty key;
                key.SetString(text);
                Check(anchors_.Add(std::string(anchor), key), std::string(anchor));
            }
            return;
        }
        const bool quoted =
            scalar.style == YAML_SINGLE_QUOTED_SCALAR_STYLE || scalar.style == YAML_DOUBLE_QUOTED_SCALAR_STYLE;
        BindingProperty& slot = builder_.NextValue();
        SetYamlScalar(root_, slot, tag, text, quoted);
        if (root_.IsValid() && !anchor.empty()) {
            Check(anchors_.Add(std::string(anchor), slot), std::string(anchor));
        }
    }

    // An alias used as a key must name a string.
    void Alias(const std::string& anchor) {
        if (!InKeyPosition()) {
            Check(anchors_.CopyTo(anchor, builder_.NextValue()), anchor);
            return;
        }
        BindingProperty key;
        if (!Check(anchors_.CopyTo(anchor, key), anchor)) {
            return;
        }
        if (key.Kind() != BindingPropertyKind::String) {
            Fail("Invalid mapping key. Only string scalar keys are allowed. At line: %1 col: %2");
            return;
        }
        builder_.Key(key.AsString());
    }

    void Open(bool isMapping, std::string_view anchor) {
        if (InKeyPosition()) {
            Fail(isMapping ? "Unexpected start of mapping. At line: %1 col: %2"
                           : "Unexpected start of sequence. At line: %1 col: %2");
            return;
        }
        // libyaml's scanner spends time in proportion to the nesting depth on
        // every token, so unbounded nesting would make a short text slow.
        if (builder_.Depth() == kMaxNestingDepth) {
            Fail("Nesting too deep (more than 1000 levels). At line: %1 col: %2");
            return;
        }
        std::string name(anchor);
        if (!name.empty() && !Check(anchors_.Open(name), name)) {
            return;
        }
        if (isMapping) {
            builder_.OpenStructure();
        } else {
            builder_.OpenCollection();
        }
        openAnchors_.push_back(std::move(name));
    }

    void Close() {
        const std::string anchor = std::move(openAnchors_.back());
        openAnchors_.pop_back();
        const BindingProperty& closed = builder_.Close();
        if (!anchor.empty()) {
            Check(anchors_.Close(anchor, closed), anchor);
        }
    }

    BindingProperty& root_;
    BindingTreeBuilder builder_;
    std::vector<std::string> openAnchors_;  // of the open containers, empty for none
    YamlAnchors anchors_;
    const yaml_mark_t* mark_ = nullptr;  // where the event being handled starts
};

}  // namespace

BindingProperty ReadYaml(std::string_view text) {
    BindingProperty result;
    YamlParser parser(text);
    YamlTreeBuilder builder(result);
    while (result.IsValid()) {
        YamlEvent next;
        if (!parser.Parse(next.event) || next.event.type == YAML_STREAM_END_EVENT) {
            break;
        }
        builder.Handle(next.event);
    }
    if (result.IsValid() && parser.Failed()) {
        result.SetError(parser.Problem());
    }
    return result;
}

}  // namespace wex
