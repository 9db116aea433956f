// Sees every heap block of the test program in the moment before it is freed.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog::test {

/// While it lives, looks in all freed blocks for pieces of a secret, as wide and as narrow text. One at a time, for the
/// frees of its own thread.
class FreeWatch {
  public:
    explicit FreeWatch(std::u16string_view secret);
    ~FreeWatch();
    FreeWatch(const FreeWatch&) = delete;
    FreeWatch& operator=(const FreeWatch&) = delete;

    /// Blocks that were freed with eight bytes in a row of the secret in them.
    int GetResidues() const { return residues; }

    void OnFree(const void* block);

  private:
    std::u16string_view secret;
    std::string narrowSecret;
    int residues = 0;
};

}  // namespace connectdialog::test
