// What a user fills in for each protocol: one table of fields a protocol, from which its page is laid out.
#pragma once

#include <array>
#include <span>

#include "config/connectconfigptr.h"
#include "resources/dialogtemplate.h"
#include "suite/protocols/launchchecks.h"
#include "suite/protocols/protocolsettings.h"

namespace connectdialog {

enum class PageFieldKind : std::uint8_t {
    kTarget,  ///< the host, or what stands for it
    kPort,
    kUser,
    kText,
    kNumber,
    kChoice,  ///< a number that counts the choices
    kSwitch,
    kNote  ///< a sentence; nothing is filled in
};

/// One line of a page. Of the members only that of the kind is given.
struct PageField {  // NOLINT(clang-analyzer-optin.performance.Padding): in the order in which a row reads
    PageFieldKind kind;
    /// What the field is called, then "(&X)" for its letter.
    const char16_t* label;
    /// What a text must look like when it is not empty.
    LaunchFault (*check)(std::u16string_view text) = nullptr;
    VProfileText ProtocolSettings::*text = nullptr;
    VProfile<bool> ProtocolSettings::*flag = nullptr;
    VProfile<int> ProtocolSettings::*number = nullptr;
    NumberRange range{};
    std::span<const char16_t* const> choices{};
};

/// The control of a protocol's first field; the others follow in their order.
inline constexpr int kFirstPageField = 6100;

struct ProtocolPage {
    std::u16string_view protocol;
    ProtocolSide side;
    std::span<const PageField> fields;
    DialogTemplate dialog;
};

inline constexpr std::size_t kProtocolPageCount = 15;

/// The page of the protocol of exactly that name, or null.
const ProtocolPage* FindProtocolPage(std::u16string_view protocol);
std::span<const ProtocolPage, kProtocolPageCount> GetProtocolPages();

}  // namespace connectdialog
