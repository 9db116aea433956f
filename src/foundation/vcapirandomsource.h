// The system's cryptographic random source.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/irandomsource.h"
#include "platform/randombytes.h"

namespace connectdialog {

/// Holds nothing but its provider, so that one object serves a whole process and all its threads.
class VCapiRandomSource : public VUnknown<IRandomSource> {
  public:
    /// Fills the bytes, or gives false with the platform's last error set.
    using Provider = bool (*)(void* buffer, std::size_t count);

    /// Acquires the provider: draws one byte, to see that it answers. Another provider than the system's is for tests.
    explicit VCapiRandomSource(Provider provider = platform::FillRandomBytes);

    /// 0, or the last error with which the acquisition failed.
    std::uint32_t GetStatus() const { return status; }

    bool Fill(std::uint8_t* buffer, std::size_t count) override;
    bool FillUnchecked(std::uint8_t* buffer, std::size_t count) override;

  private:
    std::uint32_t status = 0;
    Provider provider;
};

}  // namespace connectdialog
