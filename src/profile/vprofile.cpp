#include "profile/vprofile.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "foundation/vreportmessageparams.h"

namespace connectdialog {

template <class T>
bool VProfile<T>::Load(const char* text, IProfileTextDecoder& decoder, VReportMessageParams& report) {
    if constexpr (std::is_same_v<T, bool>) {
        bool value = false;
        if (!decoder.DecodeBool(value, text, report)) return false;
        current = value;
    } else {
        // The bounds of 32 bits, signed and unsigned, whatever the width of the system's long.
        const long long parsed = std::strtoll(text != nullptr ? text : "", nullptr, base);
        const auto number = std::clamp<long long>(parsed, INT32_MIN, UINT32_MAX);
        current = detail::ProfileNumber<T>::FromStored(static_cast<std::uint32_t>(number));
    }
    stored = current;
    SetMissing(false);
    return true;
}

template <class T>
bool VProfile<T>::GetVariant(VVariant& out, VReportMessageParams&) const {
    if constexpr (std::is_same_v<T, VTriState>) {
        if (current == VTriState::kFollowGlobal) {
            out = VVariant();
            return true;
        }
    }
    out = VVariant(detail::ProfileNumber<T>::kOut, static_cast<std::int64_t>(current));
    return true;
}

template <class T>
bool VProfile<T>::PutValue(IProfileValueExchange& exchange, const char16_t* name) const {
    if constexpr (std::is_same_v<T, VTriState>) {
        if (current == VTriState::kFollowGlobal) return true;
    }
    return exchange.PutNumber(detail::ProfileNumber<T>::ToStored(current), name);
}

template <class T>
bool VProfile<T>::SetVariant(const VVariant& in, VReportMessageParams& report) {
    VVariant converted;
    if (!VVariant::Convert(in, detail::ProfileNumber<T>::kIn, converted))
        return ReportFailure(report, kReportBadVariant);
    if constexpr (detail::ProfileNumber<T>::kIn == VVariantType::kBool)
        current = static_cast<T>(converted.GetNumber() != 0);
    else
        current = static_cast<T>(converted.GetNumber());
    return true;
}

template <class T>
bool VProfile<T>::GetValue(IProfileValueExchange& exchange, const char16_t* name) {
    std::uint32_t number = 0;
    if (!exchange.GetNumber(number, name)) return false;
    current = detail::ProfileNumber<T>::FromStored(number);
    return true;
}

template class VProfile<short>;
template class VProfile<unsigned short>;
template class VProfile<int>;
template class VProfile<unsigned int>;
template class VProfile<bool>;
template class VProfile<VTriState>;

}  // namespace connectdialog
