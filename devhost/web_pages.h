#pragma once

#include <optional>
#include <string>

#include "http_answer.h"

namespace tav::host {

// The pages tav-host serves itself: the league dashboard at "/" and its files under /devhost/ui/, built
// into tav-host, and the API explorer at /devhost/explorer, whose library files come from explorerFiles
// (the swagger-ui-dist package that `make deps` installs). Nothing for any other path.
std::optional<HttpAnswer> ServePage(const std::string& path, const std::string& explorerFiles);

}  // namespace tav::host
