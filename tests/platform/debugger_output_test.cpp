#include "platform/debugger_output.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/debugger_capture.h"

namespace wex::platform {
namespace {

TEST(DebuggerOutput, SinkReceivesEachTextWhole) {
    tav::test::DebuggerCapture capture;
    OutputDebugText("first line\n");
    OutputDebugText("");
    EXPECT_EQ(capture.Texts(), (std::vector<std::string>{"first line\n", ""}));
}

TEST(DebuggerOutput, InnerCapturePutsTheOuterSinkBack) {
    tav::test::DebuggerCapture outer;
    {
        tav::test::DebuggerCapture inner;
        OutputDebugText("inner");
        EXPECT_EQ(inner.Texts(), std::vector<std::string>{"inner"});
    }
    OutputDebugText("outer");
    EXPECT_EQ(outer.Texts(), std::vector<std::string>{"outer"});
}

TEST(DebuggerOutput, WithoutASinkTheTextIsDropped) {
    DebuggerSink previous = nullptr;
    void* previousContext = nullptr;
    SetDebuggerSink(nullptr, nullptr, &previous, &previousContext);
    EXPECT_EQ(previous, nullptr);
    OutputDebugText("nowhere");
    int calls = 0;
    SetDebuggerSink([](const char*, void* context) { ++*static_cast<int*>(context); }, &calls);
    OutputDebugText("counted");
    SetDebuggerSink(nullptr, nullptr);
    OutputDebugText("not counted");
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace wex::platform
