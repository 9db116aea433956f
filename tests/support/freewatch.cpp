#include "support/freewatch.h"

#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>

#include "platform/codepage.h"

namespace connectdialog {

namespace {
thread_local FreeWatch* currentWatch = nullptr;
}  // namespace

FreeWatch::FreeWatch(std::u16string_view secret) : secret(secret), narrowSecret(platform::ToNarrow(secret)) {
    currentWatch = this;
}
FreeWatch::~FreeWatch() {
    currentWatch = nullptr;
}

void FreeWatch::OnFree(const std::uint8_t* block, std::size_t size) {
    if (HasPiece(block, size, secret) || HasPiece<char>(block, size, narrowSecret)) ++residues;
}

template <class Char>
bool FreeWatch::HasPiece(const std::uint8_t* block, std::size_t size, std::basic_string_view<Char> text) {
    constexpr std::size_t kWindow = 8 / sizeof(Char);
    for (std::size_t i = 0; i + kWindow <= text.size(); ++i)
        if (memmem(block, size, text.data() + i, 8) != nullptr) return true;
    return false;
}

void ReportFree(void* block) noexcept {
    if (block != nullptr && currentWatch != nullptr) {
        currentWatch->OnFree(static_cast<const std::uint8_t*>(block), malloc_usable_size(block));
    }
    std::free(block);
}

}  // namespace connectdialog

void* operator new(std::size_t size) {
    if (void* block = std::malloc(size != 0 ? size : 1)) return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size != 0 ? size : 1);
}
void operator delete(void* block) noexcept {
    connectdialog::ReportFree(block);
}
void operator delete(void* block, std::size_t) noexcept {
    connectdialog::ReportFree(block);
}
