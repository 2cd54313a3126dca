#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wex {

// The text of an assertion report:
//   "Assertion failed!\n\n", then "File: <file>\n", "Line: <line>\n\n",
//   "Function: <function>\n\n", "Expression: <expression>" and
//   "\n\nDescription: <description>", each only when its value is not empty (or 0).
std::string FormatAssertion(std::string_view expression, std::string_view description, std::string_view file,
                            std::int32_t line, std::string_view function);

// Logs the report at ERROR in category DBG (cut at 4095 bytes like every log
// message) and returns; ending the process is the caller's decision.
void ReportAssertion(std::string_view expression, std::string_view description, std::string_view file,
                     std::int32_t line, std::string_view function);

}  // namespace wex
