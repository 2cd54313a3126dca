#pragma once

#include <string_view>

#include "binding/property.h"

namespace wex {

// Where a text value of a request ends up in an argument, with the names
// that its failure messages give.
struct LeafTarget {
    BindingProperty& slot;
    std::string_view argumentName;
    std::string_view functionName;
};

// Stores text into target.slot as MessagePack, JSON, YAML, bytes or a string,
// chosen by contentType or, when detect is on and there is no content type,
// by the text's first bytes. A text that does not parse fails status with
// the deserialize message of its format.
void StoreLeafText(BindingProperty& status, const LeafTarget& target, std::string_view text,
                   std::string_view contentType, bool detect);

}  // namespace wex
