#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "platform/abort_notice.h"

namespace wex::platform {

namespace {

// The handler may only write what is ready before the signal.
char gNotice[256];
std::size_t gNoticeLength = 0;
struct sigaction gPrevious {};

extern "C" void WriteNotice(int) {
    (void)!write(STDERR_FILENO, gNotice, gNoticeLength);
}

}  // namespace

AbortNotice::AbortNotice(std::string_view text) {
    gNoticeLength = std::min(text.size(), sizeof gNotice);
    std::memcpy(gNotice, text.data(), gNoticeLength);
    struct sigaction notice {};
    notice.sa_handler = WriteNotice;
    notice.sa_flags = SA_RESETHAND;
    sigemptyset(&notice.sa_mask);
    sigaction(SIGABRT, &notice, &gPrevious);
}

AbortNotice::~AbortNotice() {
    sigaction(SIGABRT, &gPrevious, nullptr);
}

}  // namespace wex::platform
