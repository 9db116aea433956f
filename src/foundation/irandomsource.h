// A source of random bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/vunknown.h"

namespace connectdialog {

/// What keys, vectors and padding are drawn from: a seam, so that a test can say what comes.
class IRandomSource : public IUnknownBase {
  public:
    /// Fills `count` bytes at `buffer`.
    /// On failure: false. A source that could not be acquired leaves the buffer as it was; after another failure its
    /// content must not be used.
    virtual bool Fill(std::uint8_t* buffer, std::size_t count) = 0;

    /// The same without asking first whether the source was acquired.
    virtual bool FillUnchecked(std::uint8_t* buffer, std::size_t count) = 0;

  protected:
    ~IRandomSource() override = default;
};

}  // namespace connectdialog
