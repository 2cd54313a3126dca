#include <windows.h>

#include "platform/local_time.h"

namespace wex::platform {

LocalTime CurrentLocalTime() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return LocalTime{now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

}  // namespace wex::platform
