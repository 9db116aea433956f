#include "platform/accounts.h"

#include <cerrno>
#include <climits>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>
#include <vector>

#include "platform/codepage.h"
#include "platform/lasterror.h"

namespace connectdialog::platform {

namespace {

constexpr std::size_t kFirstBuffer = 4096;
/// The entry of a group with very many members is long.
constexpr std::size_t kLargestBuffer = std::size_t{16} << 20;

/// Calls one of the functions that fill an entry and the buffer it points into, with more room while it asks for it.
/// Gives its errno value; `found` is null when there is no such entry.
template <class Entry, class Get>
int GetEntry(Get get, const std::string& name, Entry& entry, Entry*& found) {
    int result = ERANGE;
    for (std::size_t size = kFirstBuffer; result == ERANGE && size <= kLargestBuffer; size *= 2) {
        std::vector<char> buffer(size);  // only the number is kept of the entry
        do {
            result = get(name.c_str(), &entry, buffer.data(), buffer.size(), &found);
        } while (result == EINTR);
    }
    return result;
}

/// POSIX lets an absent entry be told as an error, and systems do.
bool TellsAbsence(int result) {
    return result == 0 || result == ENOENT || result == ESRCH || result == EBADF || result == EPERM;
}

}  // namespace

bool FindAccount(std::u16string_view name, Account& account) {
    if (name.empty() || name.find(u'\0') != name.npos) return FailWith(kAccountNotFound);
    const std::string narrow = ToNarrow(name);
    passwd user{};
    passwd* foundUser = nullptr;
    int result = GetEntry(getpwnam_r, narrow, user, foundUser);
    if (result == 0 && foundUser != nullptr) {
        account = {Account::Kind::kUser, user.pw_uid};
        return true;
    }
    if (!TellsAbsence(result)) return FailWith(ErrorFromErrno(result));
    group members{};
    group* foundGroup = nullptr;
    result = GetEntry(getgrnam_r, narrow, members, foundGroup);
    if (result == 0 && foundGroup != nullptr) {
        account = {Account::Kind::kGroup, members.gr_gid};
        return true;
    }
    return FailWith(TellsAbsence(result) ? kAccountNotFound : ErrorFromErrno(result));
}

Account GetOwnAccount(Account::Kind kind) {
    return {kind, kind == Account::Kind::kUser ? geteuid() : getegid()};
}

std::u16string GetHostName() {
    char name[HOST_NAME_MAX + 1] = {};
    if (gethostname(name, sizeof name) != 0) return {};
    const std::string_view whole = name;
    return ToWide(whole.substr(0, whole.find('.')));
}

}  // namespace connectdialog::platform
