#pragma once

#include <string_view>

namespace tav::host {

// The text of a file of devhost/web/ ("index.html"), built into tav-host so that it serves its pages from
// any folder; null for a name that is none of them.
const char* WebFile(std::string_view name);

}  // namespace tav::host
