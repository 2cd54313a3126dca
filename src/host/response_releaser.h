#pragma once

#include "boundary/boundary.h"

namespace wex {

// Hands a response back to the side that filled it, through its release
// function, however the reading of it ends.
class ResponseReleaser {
  public:
    explicit ResponseReleaser(HostResponse& response) : response_(response) {}
    ResponseReleaser(const ResponseReleaser&) = delete;
    ResponseReleaser& operator=(const ResponseReleaser&) = delete;
    ~ResponseReleaser() {
        const HostResponseReleaseFunction release = response_.release;
        if (release != nullptr) {
            release(&response_);
        }
    }

  private:
    HostResponse& response_;
};

}  // namespace wex
