#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "diagnostics/log_system.h"
#include "diagnostics/log_target.h"
#include "platform/process_info.h"
#include "support/debugger_capture.h"

namespace wex::test {

// A C stream backed by a temporary file, read back whole.
class CapturedStream {
  public:
    CapturedStream() : file_(std::tmpfile()) {}
    ~CapturedStream() { std::fclose(file_); }
    CapturedStream(const CapturedStream&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;

    std::FILE* File() const { return file_; }

    std::string Text() const {
        std::fflush(file_);
        std::string text;
        std::rewind(file_);
        for (int c = std::fgetc(file_); c != EOF; c = std::fgetc(file_)) {
            text += static_cast<char>(c);
        }
        return text;
    }

  private:
    std::FILE* file_;
};

template <class Target>
Target& BuiltinTarget(LogTargetInterface* target) {
    return dynamic_cast<Target&>(*target->target);
}

// Each test gets a fresh log system whose console streams and debugger output are captured.
class LogSystemTest : public ::testing::Test {
  protected:
    void SetUp() override {
        AcquireLogSystem();
        BuiltinLogTargets builtins = GetBuiltinLogTargets();
        BuiltinTarget<StreamLogTarget>(builtins.standardError).SetStream(standardError.File());
        BuiltinTarget<StreamLogTarget>(builtins.standardOutput).SetStream(standardOutput.File());
    }
    void TearDown() override { ReleaseLogSystem(); }

    // What the console pattern "#E(#T): " writes for the calling thread.
    static std::string ConsolePrefix() {
        char thread[32];
        std::snprintf(thread, sizeof thread, "%p", platform::CurrentThreadId());
        return std::string(LogExecutableName()) + "(" + thread + "): ";
    }

    CapturedStream standardError;
    CapturedStream standardOutput;
    tav::test::DebuggerCapture debugger;
};

}  // namespace wex::test
