#include <io.h>

#include <algorithm>
#include <csignal>
#include <cstring>

#include "platform/abort_notice.h"

namespace wex::platform {

namespace {

// The handler may only write what is ready before the signal.
char gNotice[256];
unsigned gNoticeLength = 0;
void (*gPrevious)(int) = SIG_DFL;

extern "C" void WriteNotice(int) {
    (void)_write(2, gNotice, gNoticeLength);
}

}  // namespace

AbortNotice::AbortNotice(std::string_view text) {
    gNoticeLength = static_cast<unsigned>(std::min(text.size(), sizeof gNotice));
    std::memcpy(gNotice, text.data(), gNoticeLength);
    gPrevious = std::signal(SIGABRT, WriteNotice);
}

AbortNotice::~AbortNotice() {
    std::signal(SIGABRT, gPrevious);
}

}  // namespace wex::platform
