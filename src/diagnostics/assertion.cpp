#include "diagnostics/assertion.h"

#include "diagnostics/log_system.h"

namespace wex {

std::string FormatAssertion(std::string_view expression, std::string_view description, std::string_view file,
                            std::int32_t line, std::string_view function) {
    std::string text = "Assertion failed!\n\n";
    if (!file.empty()) {
        text.append("File: ").append(file).append("\n");
    }
    if (line != 0) {
        text.append("Line: ").append(std::to_string(line)).append("\n\n");
    }
    if (!function.empty()) {
        text.append("Function: ").append(function).append("\n\n");
    }
    if (!expression.empty()) {
        text.append("Expression: ").append(expression);
    }
    if (!description.empty()) {
        text.append("\n\nDescription: ").append(description);
    }
    return text;
}

void ReportAssertion(std::string_view expression, std::string_view description, std::string_view file,
                     std::int32_t line, std::string_view function) {
    std::string text = FormatAssertion(expression, description, file, line, function);
    LogMessage(LogLevel::Error, LogCategory::Dbg, "%s", text.c_str());
}

}  // namespace wex
