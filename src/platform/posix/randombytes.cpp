#include "platform/randombytes.h"

#include <cerrno>
#include <cstdint>
#include <sys/random.h>

#include "platform/lasterror.h"

namespace connectdialog::platform {

bool FillRandomBytes(void* buffer, std::size_t size) {
    auto* bytes = static_cast<std::uint8_t*>(buffer);
    while (size > 0) {
        const ssize_t given = getrandom(bytes, size, 0);
        if (given < 0) {
            if (errno == EINTR) continue;
            return FailFromErrno();
        }
        bytes += given;
        size -= static_cast<std::size_t>(given);
    }
    return true;
}

}  // namespace connectdialog::platform
