#pragma once

#include <cstddef>
#include <cstdio>

#include "diagnostics/log_target.h"

namespace wex {

// A target that writes each record as one line formatted from its pattern.
class BaseConsoleLogTarget : public LogTarget {
  public:
    const char* TypeName() const override;
    // Formats the line into a stack buffer and writes it under the target's lock.
    bool Write(const LogRecord& record) override;
    virtual void Flush() {}

  protected:
    // Called under the target's lock with a zero-terminated line.
    virtual void WriteLine(const char* line, std::size_t length) = 0;
};

// A console target on a C stream. The stream can be replaced (tests capture it).
class StreamLogTarget : public BaseConsoleLogTarget {
  public:
    explicit StreamLogTarget(std::FILE* stream) : stream_(stream) {}

    void SetStream(std::FILE* stream);
    void Flush() override;

  protected:
    void WriteLine(const char* line, std::size_t length) override;
    std::FILE* Stream() const { return stream_; }

  private:
    std::FILE* stream_;
};

// Standard error: "#E(#T): #L| #M", DBG only, never GEN.
class StdErrLogTarget : public StreamLogTarget {
  public:
    StdErrLogTarget();
    const char* TypeName() const override;
};

// Standard output: "#M", GEN only, never DBG; flushed after each line when asked.
class StdOutLogTarget : public StreamLogTarget {
  public:
    StdOutLogTarget();
    const char* TypeName() const override;
    void SetFlushEachLine(bool flush);

  protected:
    void WriteLine(const char* line, std::size_t length) override;

  private:
    bool flushEachLine_ = false;
};

// The platform's debugger output: "#E(#T): #L| #M", DBG only.
class DebuggerConsoleLogTarget : public BaseConsoleLogTarget {
  public:
    DebuggerConsoleLogTarget();
    const char* TypeName() const override;

  protected:
    void WriteLine(const char* line, std::size_t length) override;
};

}  // namespace wex
