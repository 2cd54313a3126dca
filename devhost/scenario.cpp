#include "scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "codec/yaml_reader.h"
#include "control_routes.h"
#include "endpoint_call.h"
#include "host_session.h"
#include "json_subset.h"
#include "method_text.h"
#include "value_builders.h"
#include "value_shape.h"
#include "world_source.h"

namespace tav::host {

namespace {

using wex::BindingProperty;
using wex::BindingPropertyKind;

// Ends a scenario: a step that did not hold, or a file that cannot be played.
class Mismatch : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw Mismatch("cannot read " + path);
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string Text(const BindingProperty& value) {
    return value.Kind() == BindingPropertyKind::String ? std::string(value.AsString()) : wex::WriteJson(value);
}

// The first of the routes ("GET /path/{template}") that the plug-in lacks; empty when it has them all.
std::string MissingRoute(const BindingProperty& required, const HostApiTable& table) {
    for (const BindingProperty& route : required.Elements()) {
        const std::string text(route.AsString());
        const std::size_t space = text.find(' ');
        const std::string method = text.substr(0, space);
        const std::string path = space == std::string::npos ? "" : text.substr(space + 1);
        bool found = false;
        for (const HostEndpointRecord* endpoint = table.endpoints; endpoint != nullptr; endpoint = endpoint->next) {
            found = found || (MethodText(endpoint->method) == method && endpoint->pathTemplate != nullptr &&
                              path == endpoint->pathTemplate);
        }
        if (!found) {
            return text;
        }
    }
    return {};
}

// The kind of each step's value and, for a mapping, its keys.
struct StepShape {
    const char* action;
    ValueKind kind;
    std::vector<KeyShape> keys;
};

const std::vector<StepShape>& StepShapes() {
    using enum ValueKind;
    static const std::vector<StepShape> shapes = {
        {"note", Any, {}},
        {"login", Mapping, {}},
        {"logout", Mapping, {}},
        {"gameflow", Mapping, {{"phase", Text}, {"queue", Text}}},
        {"switch", Mapping, {{"name", Text, true}, {"on", Bool, true}}},
        {"resource", Mapping, {{"uri", Text, true}, {"value"}}},
        {"push", Mapping, {{"typeName", Text}, {"body", Mapping, true}}},
        {"advance", Number, {}},
        {"nextTokenExpiry", Number, {}},
        {"fault",
         Mapping,
         {{"destination", Text, true},
          {"method", Text, true},
          {"error", Text},
          {"status", WholeNumber},
          {"delaySeconds", Number},
          {"className", Text},
          {"malformed", Bool}}},
        {"clearFaults", Mapping, {}},
        {"call", Mapping, {{"method", Text}, {"path", Text, true}, {"body"}}},
        {"expect", Mapping, {{"events", List}, {"serverCalls", List}, {"log", List}, {"hostCalls", List}}},
    };
    return shapes;
}

// Calls check for each element of the list member name, if there is one.
void CheckElements(const BindingProperty& value, std::string_view name, const std::string& path,
                   const std::function<void(const BindingProperty&, const std::string&)>& check) {
    const BindingProperty& list = value.Member(name);
    for (std::size_t index = 0; index < list.Size(); ++index) {
        check(list.At(index), MemberPath(path, name) + "[" + std::to_string(index) + "]");
    }
}

void CheckExpectations(const BindingProperty& expect, const std::string& path) {
    CheckElements(expect, "events", path, [](const BindingProperty& event, const std::string& eventPath) {
        CheckKeys(event, eventPath, {{"name", ValueKind::Text}, {"payload"}});
    });
    CheckElements(expect, "serverCalls", path, [](const BindingProperty& call, const std::string& callPath) {
        CheckKeys(call, callPath,
                  {{"destination", ValueKind::Text, true}, {"method", ValueKind::Text, true}, {"arguments"}});
    });
    for (const char* lines : {"log", "hostCalls"}) {
        CheckElements(expect, lines, path, [](const BindingProperty& line, const std::string& linePath) {
            CheckKind(line, linePath, ValueKind::Text);
        });
    }
}

void CheckStep(const BindingProperty& step, const std::string& path) {
    if (step.Kind() != BindingPropertyKind::Structure || step.Members().begin() == step.Members().end()) {
        throw ShapeError(path, "a step is a mapping with one action, such as {login: {}}");
    }
    const std::string action((*step.Members().begin()).name);
    const auto& shapes = StepShapes();
    const auto shape =
        std::find_if(shapes.begin(), shapes.end(), [&](const StepShape& known) { return known.action == action; });
    if (shape == shapes.end()) {
        throw ShapeError(path, "unknown step \"" + action + "\"");
    }
    // A call carries its expectation beside it.
    CheckKeys(step, path,
              action == "call" ? std::vector<KeyShape>{{"call"}, {"expect", ValueKind::Mapping}}
                               : std::vector<KeyShape>{{shape->action}});
    const std::string valuePath = MemberPath(path, action);
    CheckKind(step.Member(action), valuePath, shape->kind);
    if (shape->kind == ValueKind::Mapping) {
        CheckKeys(step.Member(action), valuePath, shape->keys);
    }
    if (action == "call" && step.HasMember("expect")) {
        CheckKeys(step.Member("expect"), MemberPath(path, "expect"),
                  {{"status", ValueKind::WholeNumber},
                   {"json"},
                   {"contains", ValueKind::List},
                   {"lacks", ValueKind::List},
                   {"message", ValueKind::Text}});
    }
    if (action == "expect") {
        CheckExpectations(step.Member(action), valuePath);
    }
}

// Checks the whole file before anything is played.
void CheckScenario(const BindingProperty& scenario) {
    CheckKeys(scenario, "",
              {{"name", ValueKind::Text}, {"world", ValueKind::Text}, {"requires", ValueKind::List}, {"steps"}});
    const BindingProperty& steps = scenario.Member("steps");
    if (steps.Kind() != BindingPropertyKind::Collection || steps.Size() == 0) {
        throw Mismatch("a scenario needs \"steps\", a list of at least one step");
    }
    CheckElements(scenario, "steps", "", CheckStep);
}

// Whether line holds text, where a number at either end of text is not a piece of a longer one: "jwt 53"
// is not in "jwt 539.99", while "jwt 539" is, a whole number standing for the whole part.
bool Holds(std::string_view line, std::string_view text) {
    const auto digit = [](char character) { return character >= '0' && character <= '9'; };
    for (std::size_t at = line.find(text); at != std::string_view::npos; at = line.find(text, at + 1)) {
        const std::size_t end = at + text.size();
        const bool cutBefore =
            !text.empty() && digit(text.front()) && at > 0 && (digit(line[at - 1]) || line[at - 1] == '.');
        const bool cutAfter = !text.empty() && digit(text.back()) && end < line.size() && digit(line[end]);
        if (!cutBefore && !cutAfter) {
            return true;
        }
    }
    return false;
}

// Plays the steps of one scenario on a started session.
class Player {
  public:
    explicit Player(HostSession& session) : session_(session) {}

    // Runs one step; answers its one-line description.
    std::string Play(const BindingProperty& step);

  private:
    void Control(std::string_view method, const std::string& path, const BindingProperty& body = {});
    std::string Call(const BindingProperty& call, const BindingProperty& expect);
    std::string Expect(const BindingProperty& expect);
    void ExpectElements(const std::string& description, const BindingProperty& expected, const BindingProperty& answer,
                        bool present);
    void ExpectEvents(const BindingProperty& expected);
    void ExpectServerCalls(const BindingProperty& expected);
    // Each expected text, in order, within one of lines from cursor on.
    void ExpectLines(const BindingProperty& expected, const std::vector<std::string>& lines, std::size_t& cursor,
                     std::string_view what);

    HostSession& session_;
    std::size_t events_ = 0;
    std::size_t serverCalls_ = 0;
    std::size_t logLines_ = 0;
    std::size_t hostCalls_ = 0;
};

void Player::Control(std::string_view method, const std::string& path, const BindingProperty& body) {
    const HttpAnswer answer = ServeControl(session_, method, path, body.IsEmpty() ? "null" : wex::WriteJson(body));
    if (answer.status >= 400) {
        throw Mismatch(std::string(method) + " " + path + " answered " + std::to_string(answer.status) + " " +
                       answer.body);
    }
}

std::string Player::Play(const BindingProperty& step) {
    const auto action = *step.Members().begin();
    const std::string name(action.name);
    const BindingProperty& value = action.value;
    if (name == "note") {
        return "-- " + Text(value);
    }
    if (name == "login" || name == "logout") {
        Control("POST", "/devhost/" + name);
        return name;
    }
    if (name == "gameflow") {
        // No phase: the gameflow session goes away, as outside any game.
        if (!value.HasMember("phase")) {
            Control("DELETE", "/devhost/gameflow");
            return "gameflow deleted";
        }
        Control("PUT", "/devhost/gameflow", value);
        return "gameflow " + Text(value);
    }
    if (name == "switch") {
        Control("PUT", "/devhost/switches/" + std::string(value.Member("name").AsString()), value.Member("on"));
        return "switch " + Text(value);
    }
    if (name == "resource") {
        const std::string uri(value.Member("uri").AsString());
        value.HasMember("value") ? Control("PUT", "/devhost/resources" + uri, value.Member("value"))
                                 : Control("DELETE", "/devhost/resources" + uri);
        return "resource " + uri;
    }
    if (name == "push") {
        Control("POST", "/devhost/messages", value);
        return "push " + Text(value.Member("body").Member("msgId"));
    }
    if (name == "advance") {
        Control("POST", "/devhost/clock", Structure({{"seconds", value}}));
        return "advance " + Text(value) + " s";
    }
    if (name == "nextTokenExpiry") {
        Control("PUT", "/devhost/next-token-expiry", Structure({{"seconds", value}}));
        return "next tokens expire in " + Text(value) + " s";
    }
    if (name == "fault") {
        const std::string call =
            std::string(value.Member("destination").AsString()) + "/" + std::string(value.Member("method").AsString());
        Control("PUT", "/devhost/faults/" + call, value);
        return "fault " + Text(value);
    }
    if (name == "clearFaults") {
        Control("DELETE", "/devhost/faults");
        return "clear faults";
    }
    if (name == "call") {
        return Call(value, step.Member("expect"));
    }
    // The last of the steps that CheckStep lets through.
    return Expect(value);
}

std::string Player::Call(const BindingProperty& call, const BindingProperty& expect) {
    const std::string method(call.Member("method").AsString("GET"));
    const std::string path(call.Member("path").AsString());
    const bool hasBody = call.HasMember("body");
    const HttpAnswer answer = session_.CallRoute(method, path, hasBody ? wex::WriteJson(call.Member("body")) : "",
                                                 hasBody ? "application/json" : "");
    session_.Host().RunUntilIdle();
    const std::string description = "call " + method + " " + path + ": " + std::to_string(answer.status);
    const std::uint64_t status = expect.Member("status").AsUInt64(0);
    if (status != 0 && status != static_cast<std::uint64_t>(answer.status)) {
        throw Mismatch(description + ", expected " + std::to_string(status) + " (" + answer.body + ")");
    }
    const BindingProperty body = answer.body.empty() ? BindingProperty() : wex::ParseJson(answer.body);
    std::string where;
    if (expect.HasMember("json") && !JsonSubset(expect.Member("json"), body, where)) {
        throw Mismatch(description + ", answer " + where);
    }
    ExpectElements(description, expect.Member("contains"), body, true);
    ExpectElements(description, expect.Member("lacks"), body, false);
    if (expect.HasMember("message") && body.Member("message").AsString() != expect.Member("message").AsString()) {
        throw Mismatch(description + ", expected the message \"" + std::string(expect.Member("message").AsString()) +
                       "\", got " + answer.body);
    }
    return description;
}

// Whether some element of the answer's list holds each expected value (present) or none does.
void Player::ExpectElements(const std::string& description, const BindingProperty& expected,
                            const BindingProperty& answer, bool present) {
    for (const BindingProperty& want : expected.Elements()) {
        std::string where;
        bool found = false;
        for (const BindingProperty& element : answer.Elements()) {
            found = found || JsonSubset(want, element, where);
        }
        if (found != present) {
            throw Mismatch(description + ", " + (present ? "no element holds " : "an element holds ") +
                           wex::WriteJson(want));
        }
    }
}

std::string Player::Expect(const BindingProperty& expect) {
    ExpectEvents(expect.Member("events"));
    ExpectServerCalls(expect.Member("serverCalls"));
    std::vector<std::string> log;
    for (const RecordedLogLine& line : session_.Host().Records().logLines) {
        log.push_back(line.text);
    }
    ExpectLines(expect.Member("log"), log, logLines_, "log line");
    ExpectLines(expect.Member("hostCalls"), session_.Host().Records().journal, hostCalls_, "host call");
    return "expect " + Text(expect);
}

// Each expected event, in order, among those published since the last expectation of events.
void Player::ExpectEvents(const BindingProperty& expected) {
    const auto& events = session_.Host().Records().events;
    for (const BindingProperty& want : expected.Elements()) {
        std::string where;
        while (events_ < events.size() &&
               !(events[events_].name == want.Member("name").AsString("OnJsonApiEvent") &&
                 JsonSubset(want.Member("payload"), wex::ParseJson(events[events_].payload), where))) {
            ++events_;
        }
        if (events_ == events.size()) {
            throw Mismatch("no event " + wex::WriteJson(want) + " was published");
        }
        ++events_;
    }
}

void Player::ExpectServerCalls(const BindingProperty& expected) {
    const auto& calls = session_.Host().Records().serverCalls;
    for (const BindingProperty& want : expected.Elements()) {
        std::string where;
        const auto matches = [&](const RecordedServerCall& call) {
            return call.destination == want.Member("destination").AsString() &&
                   call.method == want.Member("method").AsString() &&
                   (!want.HasMember("arguments") ||
                    JsonSubset(want.Member("arguments"), wex::ParseJson(call.arguments), where));
        };
        while (serverCalls_ < calls.size() && !matches(calls[serverCalls_])) {
            ++serverCalls_;
        }
        if (serverCalls_ == calls.size()) {
            throw Mismatch("no server call " + wex::WriteJson(want) + " was made");
        }
        ++serverCalls_;
    }
}

void Player::ExpectLines(const BindingProperty& expected, const std::vector<std::string>& lines, std::size_t& cursor,
                         std::string_view what) {
    for (const BindingProperty& want : expected.Elements()) {
        const std::string_view text = want.AsString();
        while (cursor < lines.size() && !Holds(lines[cursor], text)) {
            ++cursor;
        }
        if (cursor == lines.size()) {
            throw Mismatch("no " + std::string(what) + " contains \"" + std::string(text) + "\"");
        }
        ++cursor;
    }
}

// Plays one file; answers 0, 1 or kScenariosSkipped.
int PlayFile(const std::string& file, const ScenarioOptions& options, std::ostream& out) {
    const BindingProperty scenario = wex::ReadYaml(ReadFile(file));
    if (!scenario.IsValid()) {
        throw Mismatch(std::string(scenario.GetError()));
    }
    out << "Scenario " << file << ": " << scenario.Member("name").AsString("(no name)") << '\n';
    CheckScenario(scenario);
    std::string error;
    std::string worldPath(scenario.Member("world").AsString());
    if (!worldPath.empty()) {
        worldPath = (std::filesystem::path(file).parent_path() / worldPath).string();
    }
    const auto world = LoadWorld(worldPath, error);
    if (world == nullptr) {
        throw Mismatch(error);
    }
    HostSession session(world);
    if (!session.Start(options.pluginPath, options.coreVersion)) {
        throw Mismatch(session.Error());
    }
    if (const std::string missing = MissingRoute(scenario.Member("requires"), *session.Library().loadInfo().apiTable);
        !missing.empty()) {
        out << "  skipped: the plug-in has no route " << missing << " yet\n";
        return kScenariosSkipped;
    }
    const BindingProperty& steps = scenario.Member("steps");
    Player player(session);
    for (std::size_t index = 0; index < steps.Size(); ++index) {
        try {
            const std::string description = player.Play(steps.At(index));
            out << "  " << index + 1 << " ok    " << description << '\n';
        } catch (const std::exception& mismatch) {
            out << "  " << index + 1 << " FAIL  " << mismatch.what() << '\n';
            return 1;
        }
    }
    out << "  passed, " << steps.Size() << " steps\n";
    return 0;
}

}  // namespace

int RunScenarios(const std::vector<std::string>& files, const ScenarioOptions& options, std::ostream& out) {
    std::size_t passed = 0;
    std::size_t failed = 0;
    std::size_t skipped = 0;
    for (const std::string& file : files) {
        int result = 1;
        try {
            result = PlayFile(file, options, out);
        } catch (const std::exception& error) {
            out << "Scenario " << file << ": " << error.what() << '\n';
        }
        ++(result == 0 ? passed : result == kScenariosSkipped ? skipped : failed);
    }
    out << "Scenarios: " << passed << " passed, " << failed << " failed, " << skipped << " skipped\n";
    if (failed != 0) {
        return 1;
    }
    return !files.empty() && skipped == files.size() ? kScenariosSkipped : 0;
}

}  // namespace tav::host
