#include "foundation/vstringhandle.h"

#include <algorithm>
#include <limits>
#include <new>

#include "foundation/securewipe.h"

namespace connectdialog {

namespace {

static_assert(sizeof(VStringHeader) == 32, "the text must follow its header without a gap");

template <class Char>
std::size_t CapacityFor(std::size_t count) {
    constexpr std::size_t kLargest = (std::numeric_limits<std::size_t>::max() - sizeof(VStringHeader)) / sizeof(Char);
    if (count >= kLargest) throw std::bad_array_new_length();
    return (count + 1) * sizeof(Char);
}

}  // namespace

template <class Char>
Char* VStringHandle<Char>::Allocate(std::size_t count, Str::SensitiveState state) {
    const std::size_t capacity = CapacityFor<Char>(count);
    void* block = ::operator new(sizeof(VStringHeader) + capacity);
    Char* text = reinterpret_cast<Char*>(static_cast<VStringHeader*>(block) + 1);
    new (block) VStringHeader{capacity, 0, text, state, 1};
    text[0] = 0;
    return text;
}

template <class Char>
void VStringHandle<Char>::ReleaseCounted(Char* text) noexcept {
    VStringHeader* header = reinterpret_cast<VStringHeader*>(text) - 1;
    if (header->references.fetch_sub(1, std::memory_order_acq_rel) > 1) return;
    if (header->state == Str::SensitiveState::kSensitive) SecureWipe(header, sizeof(VStringHeader) + header->capacity);
    ::operator delete(header);  // NOLINT(clang-analyzer-cplusplus.NewDelete): static texts are not counted
}

template <class Char>
VStringHandle<Char>::VStringHandle(const Char* characters, std::size_t count) {
    if (characters == nullptr || count == 0) {
        text = EmptyText(Str::SensitiveState::kPlain);
        return;
    }
    text = Allocate(count, Str::SensitiveState::kPlain);
    std::char_traits<Char>::copy(text, characters, count);
    EndText(text, count);
}

template <class Char>
bool VStringHandle<Char>::IsWritableFor(std::size_t count) const {
    const VStringHeader& header = Header();
    const bool isPrivate = header.references.load(std::memory_order_acquire) == 1;
    return isPrivate && CapacityFor<Char>(count) <= header.capacity;
}

template <class Char>
Char* VStringHandle<Char>::CopyWithRoomFor(std::size_t count) const {
    Char* fresh = Allocate(count, GetState());
    const std::size_t kept = std::min(count, GetLength());
    std::char_traits<Char>::copy(fresh, text, kept);
    EndText(fresh, kept);
    return fresh;
}

template <class Char>
void VStringHandle<Char>::EndText(Char* text, std::size_t count) {
    text[count] = 0;
    reinterpret_cast<VStringHeader*>(text)[-1].length = count * sizeof(Char);
}

template <class Char>
void VStringHandle<Char>::Take(Char* fresh) noexcept {
    ReleaseText(text);
    text = fresh;
}

template <class Char>
void VStringHandle<Char>::TakeEmpty(Str::SensitiveState state) noexcept {
    Take(EmptyText(state));
}

template <class Char>
void VStringHandle<Char>::Reserve(std::size_t count) {
    if (!IsWritableFor(count)) Take(CopyWithRoomFor(count));
}

template <class Char>
void VStringHandle<Char>::SetLength(std::size_t count) {
    EndText(text, count);
}

template <class Char>
void VStringHandle<Char>::SetState(Str::SensitiveState state) {
    if (state == GetState()) return;
    if (IsEmpty()) {
        TakeEmpty(state);
        return;
    }
    Reserve(GetLength());
    Header().state = state;
}

template <class Char>
void VStringHandle<Char>::Empty() {
    TakeEmpty(GetState());
}

template <class Char>
Char& VStringHandle<Char>::MutableAt(std::size_t position) {
    Reserve(GetLength());
    return text[position];
}

template <class Char>
void VStringHandle<Char>::Resize(std::size_t count) {
    const std::size_t kept = std::min(count, GetLength());
    Take(CopyWithRoomFor(count));
    std::char_traits<Char>::assign(text + kept, count - kept, Char(0));
    EndText(text, count);
}

template <class Char>
void VStringHandle<Char>::Append(const Char* characters, std::size_t count) {
    if (characters == nullptr || count == 0) return;
    const std::size_t length = GetLength();
    const bool inPlace = IsWritableFor(length + count);
    // The old buffer is released last: the characters may lie in it.
    Char* target = inPlace ? text : CopyWithRoomFor(length + count);
    std::char_traits<Char>::move(target + length, characters, count);
    EndText(target, length + count);
    if (!inPlace) Take(target);
}

template <class Char>
void VStringHandle<Char>::Append(const VStringHandle& other) {
    if (other.IsSensitive()) MarkSensitive();
    Append(other.text, other.GetLength());
}

template <class Char>
void VStringHandle<Char>::Assign(const VStringHandle& other) {
    if (text == other.text) return;
    if (IsSensitive() && !other.IsSensitive()) {
        Assign(other.text, other.GetLength());
        return;
    }
    other.AddReference();
    Take(other.text);
}

template <class Char>
void VStringHandle<Char>::Assign(const Char* characters, std::size_t count) {
    if (characters == nullptr || count == 0) {
        Empty();
        return;
    }
    const bool inPlace = IsWritableFor(count);
    Char* target = inPlace ? text : Allocate(count, GetState());
    std::char_traits<Char>::move(target, characters, count);
    EndText(target, count);
    if (!inPlace) Take(target);
}

template class VStringHandle<char16_t>;
template class VStringHandle<char>;

}  // namespace connectdialog
