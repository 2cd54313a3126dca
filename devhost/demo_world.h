#pragma once

namespace tav::host {

// The text of data/demo-world.yaml, built into tav-host so that it starts
// from any folder.
extern const char* const kDemoWorld;

}  // namespace tav::host
