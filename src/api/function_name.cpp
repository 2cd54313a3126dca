#include "api/function_name.h"

#include <cctype>

namespace wex {

namespace {

bool IsSeparator(char c) { return c == '!' || c == '+' || c == '-' || c == '.' || c == '/' || c == '_'; }

char Upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

}  // namespace

std::string MakeIdentifier(std::string_view text) {
    std::string name;
    name.reserve(text.size());
    bool capitalizeNext = true;
    for (char c : text) {
        if (IsSeparator(c)) {
            capitalizeNext = true;
        } else if (c == '{') {
            name += "By";
            capitalizeNext = true;
        } else if (c != '}') {
            name += capitalizeNext ? Upper(c) : c;
            capitalizeNext = false;
        }
    }
    return name;
}

std::string DeriveFunctionName(std::string_view methodName, std::string_view pathTemplate) {
    std::string source;
    if (!methodName.empty()) {
        source += methodName.front();
        for (char c : methodName.substr(1)) {
            source += Lower(c);
        }
        source += '/';
    }
    source += pathTemplate;
    return MakeIdentifier(source);
}

}  // namespace wex
