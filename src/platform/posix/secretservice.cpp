#include "platform/posix/secretservice.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <optional>
#include <sodium.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <thread>

#include "platform/posix/libsecret.h"

namespace connectdialog::platform {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kPatience = 5s;
constexpr auto kPause = 30s;

constexpr char kPurposeName[] = "purpose";
constexpr char kPurpose[] = "protects settings";
constexpr char kIdName[] = "key-id";
constexpr libsecret::Schema kSchema = {
    "brennmark.connectdialog.UserKey",
    0,
    {{kPurposeName, libsecret::kAttributeString}, {kIdName, libsecret::kAttributeString}},
    0,
    {}};

/// What GLib gave out and wants back.
template <class T>
class Owned {
  public:
    Owned(T* object, void (*release)(void*)) : object(object), release(release) {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (object != nullptr) release(object);
    }
    T* const object;

  private:
    void (*release)(void*);
};

using HexId = std::array<char, 2 * std::tuple_size_v<UserKeyId> + 1>;

HexId ToHex(const UserKeyId& id) {
    HexId text;
    sodium_bin2hex(text.data(), text.size(), id.data(), id.size());
    return text;
}

/// One question to the service. It outlives whoever lost patience with it.
struct Question {
    explicit Question(const libsecret::Functions& f, const UserKeyId* id)
        : f(f), cancellable(f.g_cancellable_new(), f.g_object_unref) {
        if (id != nullptr) wanted = *id;
    }

    ServiceAnswer Ask();

    const libsecret::Functions& f;
    const Owned<libsecret::Cancellable> cancellable;
    std::optional<UserKeyId> wanted;  ///< none: the key to protect with
    UserKey key;

    std::mutex mutex;
    std::condition_variable answered;
    std::optional<ServiceAnswer> answer;

  private:
    ServiceAnswer Find(libsecret::Service* service);
    void TakeItem(libsecret::Item* item, bool& isFound, bool& isLocked);
    bool Make(libsecret::Service* service);
    bool IsError(libsecret::Error* error) const {
        if (error != nullptr) f.g_error_free(error);
        return error != nullptr;
    }
};

/// The attributes of an item; the texts must outlive the table.
class Attributes {
  public:
    Attributes(const libsecret::Functions& f, const char* id)
        : f(f), table(f.g_hash_table_new(f.g_str_hash, f.g_str_equal)) {
        Add(kPurposeName, kPurpose);
        if (id != nullptr) Add(kIdName, id);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { f.g_hash_table_unref(table); }
    libsecret::Table* Get() const { return table; }

  private:
    void Add(const char* name, const char* value) {
        f.g_hash_table_insert(table, const_cast<char*>(name), const_cast<char*>(value));
    }
    const libsecret::Functions& f;
    libsecret::Table* table;
};

ServiceAnswer Question::Ask() {
    libsecret::Error* error = nullptr;
    const Owned service(f.secret_service_get_sync(libsecret::kOpenSession, cancellable.object, &error),
                        f.g_object_unref);
    if (IsError(error) || service.object == nullptr) return ServiceAnswer::kNoService;
    const ServiceAnswer found = Find(service.object);
    if (wanted || found != ServiceAnswer::kNoKey) return found;
    // Asked again after making one: of several that were made at once, all take the same.
    return Make(service.object) ? Find(service.object) : ServiceAnswer::kNoService;
}

/// Never unlocks, which would ask the user.
ServiceAnswer Question::Find(libsecret::Service* service) {
    const HexId id = wanted ? ToHex(*wanted) : HexId();
    const Attributes attributes(f, wanted ? id.data() : nullptr);
    libsecret::Error* error = nullptr;
    libsecret::List* items =
        f.secret_service_search_sync(service, &kSchema, attributes.Get(),
                                     libsecret::kSearchAll | libsecret::kSearchLoadSecrets, cancellable.object, &error);
    if (IsError(error)) return ServiceAnswer::kNoService;
    bool isFound = false;
    bool isLocked = false;
    for (libsecret::List* item = items; item != nullptr; item = item->next) {
        const Owned owned(static_cast<libsecret::Item*>(item->data), f.g_object_unref);
        TakeItem(owned.object, isFound, isLocked);
    }
    f.g_list_free(items);
    if (isFound) return ServiceAnswer::kKey;
    return isLocked ? ServiceAnswer::kLocked : ServiceAnswer::kNoKey;
}

/// Keeps the item's key when it is the wanted one, or the first in order of the ids.
void Question::TakeItem(libsecret::Item* item, bool& isFound, bool& isLocked) {
    isLocked = isLocked || f.secret_item_get_locked(item) != 0;
    const Owned value(f.secret_item_get_secret(item), f.secret_value_unref);
    if (value.object == nullptr) return;
    std::size_t length = 0;
    const char* digits = f.secret_value_get(value.object, &length);
    UserKey candidate;
    std::size_t size = 0;
    const bool isKey =
        digits != nullptr && length == 2 * UserKey::kSize &&
        sodium_hex2bin(candidate.GetData(), UserKey::kSize, digits, length, nullptr, &size, nullptr) == 0 &&
        size == UserKey::kSize;
    if (!isKey) return;
    const bool isBetter = wanted ? candidate.GetId() == *wanted : !isFound || candidate.GetId() < key.GetId();
    if (!isBetter) return;
    key = std::move(candidate);
    isFound = true;
}

bool Question::Make(libsecret::Service* service) {
    libsecret::Error* error = nullptr;
    const Owned collection(f.secret_collection_for_alias_sync(service, "default", 0, cancellable.object, &error),
                           f.g_object_unref);
    if (IsError(error) || collection.object == nullptr || f.secret_collection_get_locked(collection.object) != 0)
        return false;
    UserKey fresh;
    fresh.FillWithRandom();
    const HexId id = ToHex(fresh.GetId());
    const Attributes attributes(f, id.data());
    constexpr std::size_t kDigits = 2 * UserKey::kSize;
    const Owned<char> digits(static_cast<char*>(sodium_malloc(kDigits + 1)), sodium_free);
    if (digits.object == nullptr) return false;
    sodium_bin2hex(digits.object, kDigits + 1, fresh.GetData(), UserKey::kSize);
    const Owned value(f.secret_value_new(digits.object, kDigits, "text/plain"), f.secret_value_unref);
    const Owned item(
        f.secret_item_create_sync(collection.object, &kSchema, attributes.Get(), "Key of protected settings",
                                  value.object, 0, cancellable.object, &error),
        f.g_object_unref);
    return !IsError(error) && item.object != nullptr;
}

/// Without one GLib would start a bus of its own.
bool HasSessionBus() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && *address != '\0') return !std::string_view(address).starts_with("disabled:");
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    struct stat info {};
    return folder != nullptr && stat((std::string(folder) + "/bus").c_str(), &info) == 0 && S_ISSOCK(info.st_mode);
}

/// The host's signals are not for this thread, nor for those that GLib starts from it.
std::thread StartQuietly(auto work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread;
    try {
        thread = std::thread(work);
    } catch (const std::system_error&) {
        // No thread can be had: no service either.
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

std::atomic<Clock::time_point> leftAloneUntil{Clock::time_point::min()};

ServiceAnswer AskService(const UserKeyId* id, UserKey& key) {
    if (!HasSessionBus()) return ServiceAnswer::kNoService;
    if (Clock::now() < leftAloneUntil.load()) return ServiceAnswer::kTimeout;
    const libsecret::Functions* f = libsecret::Load();
    if (f == nullptr) return ServiceAnswer::kNoService;
    const auto question = std::make_shared<Question>(*f, id);
    std::thread thread = StartQuietly([question] {
        ServiceAnswer answer = ServiceAnswer::kNoService;
        try {
            answer = question->Ask();
        } catch (const std::bad_alloc&) {
            // No room for a key: as without a service. Nothing may leave this thread.
        }
        const std::lock_guard lock(question->mutex);
        question->answer = answer;
        question->answered.notify_all();
    });
    if (!thread.joinable()) return ServiceAnswer::kNoService;
    std::unique_lock lock(question->mutex);
    if (!question->answered.wait_for(lock, kPatience, [&] { return question->answer.has_value(); })) {
        leftAloneUntil.store(Clock::now() + kPause);
        f->g_cancellable_cancel(question->cancellable.object);
        thread.detach();
        return ServiceAnswer::kTimeout;
    }
    lock.unlock();
    thread.join();
    if (*question->answer == ServiceAnswer::kKey) key = std::move(question->key);
    return *question->answer;
}

}  // namespace

ServiceAnswer FindServiceKey(const UserKeyId& id, UserKey& key) {
    return AskService(&id, key);
}

ServiceAnswer GetServiceKey(UserKey& key) {
    return AskService(nullptr, key);
}

}  // namespace connectdialog::platform
