#include "keymap/keynames.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <optional>
#include <span>

#include "foundation/casefold.h"
#include "foundation/hextext.h"
#include "keymap/defaultkeytable.h"
#include "keymap/extendedkeytable.h"
#include "keymap/keyfunctiontable.h"
#include "keymap/standardkeytable.h"

namespace connectdialog {

namespace {

using KeyTable = std::span<const KeyRow>;
/// In the order in which they are asked.
constexpr KeyTable kKeyTables[] = {kStandardKeys, kExtendedKeys};

/// The place of the name in the table, or the table's size. Which of two rows in the wrong order is found depends on
/// where the search looks; so it is written out.
constexpr std::size_t FindKey(KeyTable table, std::u16string_view name) {
    std::size_t low = 0;
    std::size_t behindHigh = table.size();
    while (low < behindHigh) {
        const std::size_t middle = (low + behindHigh - 1) / 2;
        const int order = table[middle].name.compare(name);
        if (order == 0) return middle;
        if (order < 0)
            low = middle + 1;
        else
            behindHigh = middle;
    }
    return table.size();
}
constexpr bool HasKey(KeyTable table, std::u16string_view name) {
    return FindKey(table, name) < table.size();
}
static_assert(HasKey(kExtendedKeys, u"VK_MULTI_KEY") && !HasKey(kExtendedKeys, u"VK_MULTIPLEC_ANDIDATE"));
static_assert(HasKey(kExtendedKeys, u"VK_NO_BREAK_SPACE") && !HasKey(kExtendedKeys, u"VK_NOTSIGN"));

/// As strtoul reads a text with base 0, when nothing but white space follows.
std::optional<std::uint32_t> ParseKeyNumber(std::u16string_view text) {
    std::uint32_t base = 10;
    if (text.size() > 2 && text[0] == u'0' && ToUpper(text[1]) == u'X' && HexDigitValue(text[2]) != kNoHexDigit) {
        base = 16;
        text.remove_prefix(2);
    } else if (text.starts_with(u'0')) {
        base = 8;
    }
    std::uint64_t number = 0;
    for (; !text.empty() && HexDigitValue(text.front()) < base; text.remove_prefix(1)) {
        number = number * base + HexDigitValue(text.front());
        if (number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    }
    if (!std::ranges::all_of(text, IsSpace)) return std::nullopt;
    return static_cast<std::uint32_t>(number);
}

struct FunctionRow {
    std::u16string_view name;
    std::uint32_t number;
};

/// All names of functions in their order, the other names among them: a file of keys asks for one a line.
constexpr auto kFunctionsByName = [] {
    constexpr FunctionRow kOtherNames[] = {
        {u"", kKeyFunctionNone}, {u"VT_HELP", KeyFunctionNumber(u"VT_F15")}, {u"VT_DO", KeyFunctionNumber(u"VT_F16")}};
    std::array<FunctionRow, std::size(kKeyFunctionNames) + std::size(kOtherNames)> rows;
    for (std::uint32_t i = 0; i < std::size(kKeyFunctionNames); ++i) rows[i] = {kKeyFunctionNames[i], i};
    std::ranges::copy(kOtherNames, rows.begin() + std::size(kKeyFunctionNames));
    std::ranges::sort(rows, {}, &FunctionRow::name);
    return rows;
}();
static_assert(std::ranges::adjacent_find(kFunctionsByName, {}, &FunctionRow::name) == kFunctionsByName.end());

static_assert(kKeyFunctionNone == KeyFunctionNumber(u"NONE") && kKeyFunctionSend == KeyFunctionNumber(u"SEND"));
static_assert(kKeyFunctionRun == KeyFunctionNumber(u"RUN") && kKeyFunctionLaunch == KeyFunctionNumber(u"LAUNCH"));

}  // namespace

std::int32_t GetKeyCode(std::u16string_view name) {
    if (!name.empty() && IsDigit(name.front()))
        return static_cast<std::int32_t>(ParseKeyNumber(name).value_or(static_cast<std::uint32_t>(kUnknownKeyName)));
    for (const KeyTable table : kKeyTables) {
        const std::size_t place = FindKey(table, name);
        if (place < table.size()) return static_cast<std::int32_t>(table[place].code);
    }
    return kUnknownKeyName;
}

VUnicodeString GetKeyName(std::uint32_t code) {
    for (const KeyTable table : kKeyTables) {
        const auto row = std::ranges::find(table, code, &KeyRow::code);
        if (row != table.end()) return row->name;
    }
    VUnicodeString number;
    number.Format(u"0x%1!X!", code);
    return number;
}

std::int32_t GetKeyFunctionID(std::u16string_view name) {
    const auto row = std::ranges::lower_bound(kFunctionsByName, name, {}, &FunctionRow::name);
    const bool isFound = row != kFunctionsByName.end() && row->name == name;
    return isFound ? static_cast<std::int32_t>(row->number) : kUnknownKeyName;
}

VUnicodeString GetKeyFunctionName(std::uint32_t number) {
    return number < std::size(kKeyFunctionNames) ? VUnicodeString(kKeyFunctionNames[number]) : VUnicodeString();
}

bool GetDefaultKeys(std::uint32_t number, std::vector<std::uint32_t>& keys) {
    keys.clear();
    for (const DefaultKeyRow& row : kDefaultKeys)
        if (row.group == 0 && row.function == number) keys.push_back(row.key);
    return !keys.empty();
}

}  // namespace connectdialog
