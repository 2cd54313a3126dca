#include "host_loop.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "codec/json_writer.h"

namespace tav::host {
namespace {

// A loop whose deliveries and callbacks write one line each to a log.
class HostLoopTest : public ::testing::Test {
  protected:
    // The loop calls back through a C function with the callable as user data.
    static void Run(void* userData) { (*static_cast<std::function<void()>*>(userData))(); }

    void Schedule(std::function<void()>& callable, double delay) { loop.Schedule(&Run, &callable, delay); }
    std::function<void()> Note(std::string line) {
        return [this, line] { log.push_back(line); };
    }
    static wex::BindingProperty Number(std::uint64_t value) {
        wex::BindingProperty number;
        number.SetUnsigned(value);
        return number;
    }

    std::vector<std::string> log;
    HostLoop loop{[this](const std::string& name, const wex::BindingProperty& payload) {
        log.push_back(name + " " + wex::WriteJson(payload));
    }};
};

// Work queued during a turn, and answers due on a later turn, wait for that turn.
TEST_F(HostLoopTest, ATurnRunsDueCallbacksThenEventsThenAnswersThatAreDue) {
    std::function<void()> second = Note("second");
    std::function<void()> first = [&] {
        log.push_back("first");
        Schedule(second, 0);
        loop.QueueEvent("event", Number(3));
    };
    loop.QueueAnswer(3, "late", Number(1));
    loop.QueueAnswer(0, "answer", Number(2));
    loop.QueueEvent("event", Number(4));
    Schedule(first, -1);
    loop.RunTurn();
    EXPECT_EQ(log, (std::vector<std::string>{"first", "event 4", "answer 2"}));
    loop.RunTurn();
    EXPECT_EQ(log.size(), 5u);
    loop.RunTurn();
    EXPECT_EQ(log, (std::vector<std::string>{"first", "event 4", "answer 2", "second", "event 3", "late 1"}));
    EXPECT_TRUE(loop.Idle());
}

}  // namespace
}  // namespace tav::host
