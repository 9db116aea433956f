#include "foundation/vhivereader.h"

#include <algorithm>
#include <array>
#include <optional>

#include "foundation/vhivelines.h"
#include "platform/codepage.h"

namespace connectdialog {

namespace {

constexpr std::u16string_view kFirstLine = u"Windows Registry Editor Version 5.00";
constexpr std::u16string_view kNarrowFirstLine = u"REGEDIT4";
constexpr std::array<std::u16string_view, 5> kRoots = {u"HKEY_LOCAL_MACHINE", u"HKEY_CURRENT_USER",
                                                       u"HKEY_CLASSES_ROOT", u"HKEY_USERS", u"HKEY_CURRENT_CONFIG"};
constexpr std::size_t kMaxFaults = 100;
constexpr const char16_t* kTrailingText = u"something follows the value";
constexpr const char16_t* kOpenText = u"a text has no closing quote, or a \\ before another character than \\ and \"";

/// One run over a file. Each Read... function gives null when it is done, or what is wrong.
class HiveReader {
  public:
    HiveReader(std::u16string_view text, VHiveTree& tree, std::u16string_view onlyRoot)
        : cursor(text), tree(tree), onlyRoot(onlyRoot) {}

    void Run();
    void AddFault(std::size_t line, const char16_t* text);
    bool IsForeign() const { return hasForeignKeys && !hasOwnKeys; }
    std::vector<VHiveFault> faults;

  private:
    using Fault = const char16_t*;

    bool ReadFirstLine();
    Fault ReadLine();
    Fault ReadKey();
    Fault ReadValue();
    Fault ReadData(VHiveValue& value);
    Fault ReadText(VHiveValue& value);
    Fault ReadDword(VHiveValue& value);
    Fault ReadHex(VHiveValue& value);
    Fault StoreValue(const std::u16string& name, VHiveValue value);
    void GiveRemarksTo(std::u16string& target);

    VHiveLines cursor;
    VHiveTree& tree;
    std::u16string_view onlyRoot;
    std::u16string remarks;
    VHiveKey* key = nullptr;
    /// Why values have no key to go to: null when that was told already or is meant so.
    Fault keylessFault = u"a value stands above the first key";
    bool isNarrow = false;
    bool hasOwnKeys = false;
    bool hasForeignKeys = false;
};

bool IsText(std::uint32_t type) {
    return type == kHiveString || type == kHiveExpandString || type == kHiveMultiString;
}

/// The characters that narrow bytes stand for, as the data of a value.
std::vector<std::uint8_t> Widen(const std::vector<std::uint8_t>& narrow) {
    VHiveValue value;
    value.Append(platform::ToWide(std::string(narrow.begin(), narrow.end())));
    return std::move(value.data);
}

void HiveReader::AddFault(std::size_t line, const char16_t* text) {
    if (faults.size() > kMaxFaults) return;
    faults.push_back({line, faults.size() < kMaxFaults ? text : u"there are more faults below"});
}

void HiveReader::Run() {
    if (!ReadFirstLine()) return;
    while (cursor.SkipBlankLines(remarks)) {
        const VHiveLines start = cursor;
        if (const Fault fault = ReadLine()) {
            AddFault(start.Line(), fault);
            remarks.clear();
            cursor = start;  // a text that is not closed must not swallow the lines below
        }
        cursor.SkipLine();
    }
    GiveRemarksTo(tree.closingRemarks);
}

bool HiveReader::ReadFirstLine() {
    if (cursor.AtEnd()) return false;
    const std::u16string_view first = cursor.RestOfLine();
    isNarrow = first == kNarrowFirstLine;
    if (!isNarrow && first != kFirstLine) {
        AddFault(1, u"the file does not begin like a registry export");
        return false;
    }
    cursor.SkipLine();
    return true;
}

HiveReader::Fault HiveReader::ReadLine() {
    return cursor.Peek() == u'[' ? ReadKey() : ReadValue();
}

HiveReader::Fault HiveReader::ReadKey() {
    key = nullptr;
    keylessFault = nullptr;
    std::u16string_view path;
    if (!cursor.TakeKey(path) || !cursor.TakeEnd(remarks)) return u"a key does not end with ]";
    const bool isRemoval = path.starts_with(u'-');
    if (isRemoval) path.remove_prefix(1);
    std::u16string_view rest = path;
    const std::u16string_view root = TakeFirstName(rest);
    if (std::none_of(kRoots.begin(), kRoots.end(), [root](auto known) { return EqualsNoCase(root, known); })) {
        return u"a key does not begin with the name of a root, such as HKEY_LOCAL_MACHINE";
    }
    if (!onlyRoot.empty() && !EqualsNoCase(root, onlyRoot)) {
        hasForeignKeys = true;
        remarks.clear();
        return nullptr;
    }
    hasOwnKeys = true;
    if (isRemoval) {
        if (rest.empty()) return u"a root cannot be removed";
        keylessFault = u"a value stands below a key that is removed";
        tree.Remove(path);
        return nullptr;
    }
    key = tree.Create(path);
    if (key == nullptr) return u"a key cannot be taken: a name is empty, too long or unfit, or there are too many keys";
    GiveRemarksTo(key->remarks);
    return nullptr;
}

HiveReader::Fault HiveReader::ReadValue() {
    std::u16string name;
    if (!cursor.TakeCharacter(u'@') && !cursor.TakeText(name)) return u"not a key, a value or a comment";
    if (!cursor.TakeCharacter(u'=')) return u"a value's name is not followed by =";
    if (name.size() > VHiveTree::kMaxValueName || !IsFitForHive(name)) return u"a value's name is too long or unfit";
    if (cursor.TakeCharacter(u'-')) {
        if (!cursor.TakeEnd(remarks)) return kTrailingText;
        if (key != nullptr) key->values.erase(name);
        return key != nullptr ? nullptr : keylessFault;
    }
    VHiveValue value;
    const Fault fault = ReadData(value);
    if (fault != nullptr) return fault;
    return cursor.TakeEnd(remarks) ? StoreValue(name, std::move(value)) : kTrailingText;
}

HiveReader::Fault HiveReader::ReadData(VHiveValue& value) {
    if (cursor.Peek() == u'"') return ReadText(value);
    if (cursor.TakeWord(u"dword:")) return ReadDword(value);
    if (cursor.TakeWord(u"hex")) return ReadHex(value);
    return u"a value is not a text, dword: or hex:";
}

HiveReader::Fault HiveReader::ReadText(VHiveValue& value) {
    const std::size_t line = cursor.Line();
    std::u16string text;
    if (!cursor.TakeText(text)) return kOpenText;
    // Text behind the quote on a later line means that it opens another text there.
    if (cursor.Line() != line && !cursor.TakeEnd(remarks)) return kOpenText;
    value = VHiveValue::OfText(kHiveString, text);
    return nullptr;
}

HiveReader::Fault HiveReader::ReadDword(VHiveValue& value) {
    std::uint32_t number = 0;
    if (!cursor.TakeHexNumber(8, number)) return u"dword: is not followed by 1 to 8 hex digits";
    value = VHiveValue::OfDword(number);
    return nullptr;
}

HiveReader::Fault HiveReader::ReadHex(VHiveValue& value) {
    value.type = kHiveBinary;
    if (cursor.TakeCharacter(u'(') && (!cursor.TakeHexNumber(8, value.type) || !cursor.TakeCharacter(u')'))) {
        return u"hex( is not followed by the number of a type and )";
    }
    if (!cursor.TakeCharacter(u':')) return u"hex is not followed by :";
    if (!cursor.TakeBytes(value.data, remarks)) return u"the bytes are not two-digit hex numbers between commas";
    if (isNarrow && IsText(value.type)) value.data = Widen(value.data);
    return nullptr;
}

HiveReader::Fault HiveReader::StoreValue(const std::u16string& name, VHiveValue value) {
    if (key == nullptr) {
        remarks.clear();
        return keylessFault;
    }
    VHiveEntry& entry = key->values[name];
    entry.value = std::move(value);
    GiveRemarksTo(entry.remarks);
    return nullptr;
}

/// What stands there already stays: a key may have several sections, and a file may be imported twice.
void HiveReader::GiveRemarksTo(std::u16string& target) {
    const bool endsSo = target == remarks || target.ends_with(u'\n' + remarks);
    if (!endsSo) target += remarks;
    remarks.clear();
}

/// The characters of a file, without the mark, and the line of the first one that is no text (0 for none).
struct Decoded {
    std::u16string text;
    bool isWide = false;
    std::size_t badLine = 0;
};

Decoded DecodeWide(std::string_view bytes) {
    Decoded decoded{{}, true, 0};
    decoded.text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<std::uint8_t>(bytes[i]);
        const auto high = static_cast<std::uint8_t>(bytes[i + 1]);
        decoded.text += static_cast<char16_t>(low | high << 8);
    }
    if (bytes.size() % 2 != 0) {
        decoded.badLine = static_cast<std::size_t>(std::count(decoded.text.begin(), decoded.text.end(), u'\n')) + 1;
    }
    return decoded;
}

Decoded DecodeNarrow(std::string_view bytes) {
    Decoded decoded{platform::ToWide(bytes), false, 0};
    const std::string again = platform::ToNarrow(decoded.text);
    if (again != bytes) {
        const auto bad = std::mismatch(bytes.begin(), bytes.end(), again.begin(), again.end()).first;
        decoded.badLine = static_cast<std::size_t>(std::count(bytes.begin(), bad, '\n')) + 1;
    }
    return decoded;
}

Decoded Decode(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return DecodeWide(bytes.substr(2));
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return DecodeNarrow(bytes);
}

}  // namespace

std::vector<VHiveFault> ReadHive(std::string_view bytes, VHiveTree& tree, std::u16string_view onlyRoot,
                                 bool* isForeign) {
    const Decoded decoded = Decode(bytes);
    if (onlyRoot.empty()) tree.isWide = decoded.isWide;
    HiveReader reader(decoded.text, tree, onlyRoot);
    if (decoded.badLine != 0) reader.AddFault(decoded.badLine, u"the characters are neither UTF-8 nor UTF-16");
    reader.Run();
    if (isForeign != nullptr) *isForeign = reader.IsForeign();
    return std::move(reader.faults);
}

}  // namespace connectdialog
