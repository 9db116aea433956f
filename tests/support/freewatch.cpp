#include "support/freewatch.h"

#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>

#include "platform/codepage.h"

namespace connectdialog::test {

namespace {

thread_local FreeWatch* currentWatch = nullptr;

template <class Char>
bool HasPiece(const void* block, std::basic_string_view<Char> text) {
    constexpr std::size_t kWindow = 8 / sizeof(Char);
    for (std::size_t i = 0; i + kWindow <= text.size(); ++i)
        if (memmem(block, malloc_usable_size(const_cast<void*>(block)), text.data() + i, 8) != nullptr) return true;
    return false;
}

}  // namespace

FreeWatch::FreeWatch(std::u16string_view secret) : secret(secret), narrowSecret(platform::ToNarrow(secret)) {
    currentWatch = this;
}
FreeWatch::~FreeWatch() {
    currentWatch = nullptr;
}

void FreeWatch::OnFree(const void* block) {
    if (HasPiece(block, secret) || HasPiece<char>(block, narrowSecret)) ++residues;
}

}  // namespace connectdialog::test

void* operator new(std::size_t size) {
    if (void* block = std::malloc(size != 0 ? size : 1)) return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size != 0 ? size : 1);
}
void operator delete(void* block) noexcept {
    connectdialog::test::FreeWatch* const watch = connectdialog::test::currentWatch;
    if (block != nullptr && watch != nullptr) watch->OnFree(block);
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
