#include "tools/connectctl/entryjson.h"

#include <algorithm>
#include <memory>
#include <span>
#include <unordered_set>
#include <vector>

#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "config/settingtext.h"
#include "config/settingwalk.h"
#include "foundation/casefold.h"
#include "foundation/hextext.h"
#include "foundation/textchecks.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "imports/configpanels.h"
#include "imports/connectconfig.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

using Json = nlohmann::json;

struct ValueName {
    VUnicodeString name;
    bool isSecret = false;
};

/// Names of values, each once.
class ValueNames {
  public:
    void Add(const VUnicodeString& name, bool isSecret) {
        if (!name.IsEmpty() && known.insert(FoldText(name)).second) names.push_back({name, isSecret});
    }
    /// The settings below a part of a session.
    void AddMembers(VProfileData& part) {
        for (std::size_t i = 0; VProfileData* member = part.GetMember(i); ++i) {
            if (member->GetMember(0) == member)
                Add(member->GetName(), IsSecretSetting(*member));
            else
                AddMembers(*member);
        }
    }
    bool Has(std::u16string_view name) const { return known.contains(FoldText(name)); }
    const std::vector<ValueName>& All() const { return names; }

  private:
    std::unordered_set<std::u16string> known;
    std::vector<ValueName> names;
};

/// The settings of all protocols, whichever a session selects.
const ValueNames& ProtocolNames() {
    static const ValueNames names = [] {
        ValueNames all;
        for (const ConnectProtocolTableElement& row : GetConnectProtocolTable()) {
            if (row.createConfig == nullptr) continue;
            const auto config = VRef<ConnectConfig>::Adopt(row.createConfig(nullptr, nullptr, row));
            if (config) all.AddMembers(*config);
        }
        return all;
    }();
    return names;
}

/// What a session's key may hold.
ValueNames NamesOf(ISessionConfig& session) {
    ValueNames names;
    VisitSettings(session, [&](VProfileData& setting) { names.Add(setting.GetName(), IsSecretSetting(setting)); });
    for (const ValueName& name : ProtocolNames().All()) names.Add(name.name, name.isSecret);
    return names;
}

/// A key in memory.
class ScratchKey {
  public:
    ScratchKey() : factory(MakeFactory()), store(factory.get()), key(store.GetRootKey(), u"Scratch", 0) {}
    VProfileKey& Get() { return key; }

  private:
    static std::unique_ptr<VProfileStoreFactory> MakeFactory() {
        VReportMessageParams report;
        return stores::OpenProfileStoreFactory(u"memory:", report);
    }
    std::unique_ptr<VProfileStoreFactory> factory;
    VProfileStore store;
    VProfileKey key;
};

std::string HexOf(std::span<const std::uint8_t> bytes) {
    return platform::ToNarrow(EncodeHex({}, bytes, HexCase::kLower, Str::SensitiveState::kPlain));
}

/// The bytes of `{"<name>": "hex digits"}`. False when the value is something else.
bool BytesFromJson(const Json& value, const char* name, std::vector<std::uint8_t>& bytes) {
    const auto found = value.is_object() && value.size() == 1 ? value.find(name) : value.end();
    if (found == value.end() || !found->is_string()) return false;
    const std::u16string digits = platform::ToWide(found->get_ref<const std::string&>());
    bytes.resize(digits.size() / 2);
    return DecodeHex(digits, bytes.data()) * 2 == digits.size();
}

/// Null when the key has no such value.
Json ReadValue(VProfileKey& key, const char16_t* name) {
    if (std::uint32_t number = 0; key.ReadDword(name, number)) return number;
    if (VUnicodeString text; key.ReadString(name, text)) return ExactTextToJson(text);
    if (VStringArray strings; key.ReadMultiString(name, strings)) {
        Json list = Json::array();
        for (const VUnicodeString& text : strings) list.push_back(ExactTextToJson(text));
        return list;
    }
    std::uint32_t size = 0;
    if (!key.ReadBinary(name, nullptr, size)) return {};
    std::vector<std::uint8_t> bytes(size);
    if (!key.ReadBinary(name, bytes.data(), size)) return {};
    return {{"hex", HexOf(bytes)}};
}

bool WriteList(VProfileKey& key, const char16_t* name, const Json& value) {
    VStringArray strings;
    for (const Json& element : value) {
        VUnicodeString text;
        if (!ExactTextFromJson(element, text)) return false;
        strings.Add(text);
    }
    return key.WriteMultiString(name, strings);
}

/// False for what is no value; what the store refuses is told by the key.
bool WriteValue(VProfileKey& key, const char16_t* name, const Json& value) {
    VUnicodeString text;
    std::vector<std::uint8_t> bytes;
    if (value.is_number_unsigned() && value.get<std::uint64_t>() <= UINT32_MAX)
        return key.WriteDword(name, value.get<std::uint32_t>());
    if (value.is_array()) return WriteList(key, name, value);
    if (ExactTextFromJson(value, text)) return key.WriteString(name, text.GetData());
    return BytesFromJson(value, "hex", bytes) &&
           key.WriteBinary(name, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

Failure CheckReadable(VProfileKey& key, const VUnicodeString& path) {
    std::uint32_t isSession = 0;
    if (key.ReadDword(kIsSessionValue, isSession)) return kDone;
    VReportMessageParams& report = *key.GetImpl()->GetLastReport();
    if (report.GetCode() == platform::kDatatypeMismatch) return kDone;
    return Quoted(path) + ": " + ReportText(report);
}

}  // namespace

Json ExactTextToJson(std::u16string_view text) {
    if (!HasHalfCharacter(text)) return JsonText(text);
    std::vector<std::uint8_t> bytes;
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    }
    return {{"utf16", HexOf(bytes)}};
}

bool ExactTextFromJson(const Json& value, VUnicodeString& text) {
    std::u16string units;
    std::vector<std::uint8_t> bytes;
    if (value.is_string()) {
        units = platform::ToWide(value.get_ref<const std::string&>());
    } else {
        if (!BytesFromJson(value, "utf16", bytes) || bytes.size() % 2 != 0) return false;
        for (std::size_t i = 0; i < bytes.size(); i += 2)
            units.push_back(static_cast<char16_t>(bytes[i] << 8 | bytes[i + 1]));
    }
    text = VUnicodeString(units);
    return units.find(u'\0') == std::u16string::npos;
}

Failure ValuesToJson(const VUnicodeString& path, bool withSecrets, Json& values) {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
    if (Failure failure = CheckReadable(key, path)) return failure;
    const VRef<ISessionConfig> session = LoadSessionEntry(path, GetEntryLeaf(path));
    ScratchKey saved;
    session->Save(saved.Get(), true);
    values = Json::object();
    const ValueNames names = NamesOf(*session);
    for (const ValueName& value : names.All()) {
        if (value.isSecret && !withSecrets) continue;
        // A secret that is in the store already keeps its form: enciphered anew it would look changed.
        VProfileKey& first = value.isSecret ? key : saved.Get();
        VProfileKey& second = value.isSecret ? saved.Get() : key;
        Json json = ReadValue(first, value.name.GetData());
        if (json.is_null()) json = ReadValue(second, value.name.GetData());
        if (!json.is_null()) values[platform::ToNarrow(value.name)] = std::move(json);
    }
    return kDone;
}

Failure ValuesFromJson(const Json& values, VProfileKey& key, const VUnicodeString& path) {
    if (!values.is_object()) return "it has no values";
    key.WriteDword(kIsSessionValue, 1);
    for (const auto& [narrowName, value] : values.items()) {
        const std::u16string name = platform::ToWide(narrowName);
        if (name.find(u'\0') != std::u16string::npos) return "the name of a value holds a zero";
        if (WriteValue(key, name.c_str(), value)) continue;
        const std::string quoted = "value " + Quoted(name);
        if (key.AllWritten()) return quoted + " is no number up to 4294967295, no text, no list of texts and no bytes";
        return quoted + ": " + ReportText(*key.GetImpl()->GetLastReport());
    }
    const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(GetEntryLeaf(path).GetData(), &key));
    session->SetPath(path);
    session->Save(key, false);
    if (!key.AllWritten()) return "the store refused it";
    const ValueNames names = NamesOf(*session);
    for (const auto& [narrowName, value] : values.items()) {
        const std::u16string name = platform::ToWide(narrowName);
        if (!names.Has(name)) return "a session has no value " + Quoted(name);
        if (ReadValue(key, name.c_str()) != value) return "the session does not take value " + Quoted(name);
    }
    return kDone;
}

}  // namespace connectdialog::connectctl
