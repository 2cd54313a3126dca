#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "diagnostics/log_system.h"
#include "diagnostics/log_target.h"

namespace Orvel::Client::Leagues::test {

// Records every log line of every level and category while it lives, as
// "<level> <categories> <message>", for example "2 1 Failed".
class RecordedLog : public wex::LogTarget {
  public:
    RecordedLog() {
        wex::AcquireLogSystem();
        SetLevel(wex::LogLevel::Okay);
        Activate();
    }
    ~RecordedLog() override {
        Deactivate();
        wex::ReleaseLogSystem();
    }

    bool Write(const wex::LogRecord& record) override {
        lines_.push_back(std::to_string(static_cast<int>(record.level)) + " " + std::to_string(record.categories) +
                         " " + record.message);
        return true;
    }

    const std::vector<std::string>& Lines() const { return lines_; }

  private:
    std::vector<std::string> lines_;
};

}  // namespace Orvel::Client::Leagues::test
