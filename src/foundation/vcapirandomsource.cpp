#include "foundation/vcapirandomsource.h"

#include "platform/lasterror.h"

namespace connectdialog {

VCapiRandomSource::VCapiRandomSource(Provider provider) : provider(provider) {
    std::uint8_t probe = 0;
    if (!provider(&probe, sizeof(probe))) status = platform::GetLastErrorCode();
}

bool VCapiRandomSource::Fill(std::uint8_t* buffer, std::size_t count) {
    return status == platform::kSuccess && FillUnchecked(buffer, count);
}

bool VCapiRandomSource::FillUnchecked(std::uint8_t* buffer, std::size_t count) {
    return provider(buffer, count);
}

}  // namespace connectdialog
