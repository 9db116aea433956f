// Every value that a session keeps, stored with every type and with hostile contents.
#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <string>
#include <typeinfo>

#include "config/firewallconfig.h"
#include "config/settingwalk.h"
#include "foundation/vnarrowstring.h"
#include "profile/vmargindata.h"
#include "support/faultystore.h"
#include "support/strings.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

using namespace std::string_literals;

enum class Kind { kDword, kText, kList, kBinary };

/// One value as it lies in a key.
struct Stored {
    Kind kind = Kind::kDword;
    std::uint32_t number = 0;
    std::u16string text;  ///< of a list: its only element
    std::string bytes;

    void WriteTo(VProfileKey& key, const VUnicodeString& name) const {
        const auto size = static_cast<std::uint32_t>(bytes.size());
        const char16_t* const at = name.GetData();
        ASSERT_TRUE(kind == Kind::kDword  ? key.WriteDword(at, number)
                    : kind == Kind::kText ? key.WriteString(at, text.c_str())
                    : kind == Kind::kList ? key.WriteMultiString(at, Strings({text.c_str()}))
                                          : key.WriteBinary(at, bytes.data(), size));
    }
};

/// A setting after loading.
struct Seen {
    std::u16string name;
    Kind kind;
    std::size_t recordSize;  ///< of a binary value
    std::u16string value;
    std::int64_t number;
    bool isBool;
    bool isThreeState;
    bool isText;     ///< kept as it stands
    bool isChanged;  ///< by loading
    bool isMissing;
    bool operator==(const Seen&) const = default;
};
using Settings = std::vector<Seen>;

template <class Setting>
bool ReadRecord(const VProfileData& setting, Seen& seen) {
    const auto* record = dynamic_cast<const Setting*>(&setting);
    if (record == nullptr) return false;
    using Record = std::remove_cvref_t<decltype(record->Get())>;
    std::array<std::byte, Record::kStoredSize> bytes;
    record->Get().Pack(bytes);
    for (const std::byte byte : bytes) seen.value += static_cast<char16_t>(byte);
    seen.recordSize = bytes.size();
    return true;
}

Seen Look(const VProfileData& setting) {
    Seen seen{.name = std::u16string(setting.GetName().View()),
              .kind = dynamic_cast<const VProfileDword*>(&setting)     ? Kind::kDword
                      : dynamic_cast<const VProfileMultiSz*>(&setting) ? Kind::kList
                      : dynamic_cast<const VProfileBinary*>(&setting)  ? Kind::kBinary
                                                                       : Kind::kText,
              .recordSize = 0,
              .value = {},
              .number = 0,
              .isBool = dynamic_cast<const VProfile<bool>*>(&setting) != nullptr,
              .isThreeState = dynamic_cast<const VProfile<VTriState>*>(&setting) != nullptr,
              .isText = typeid(setting) == typeid(VProfileText),
              .isChanged = setting.IsChanged(),
              .isMissing = setting.IsMissing()};
    if (ReadRecord<VProfileLogFont>(setting, seen) || ReadRecord<VProfileWindowPlacement>(setting, seen) ||
        ReadRecord<VProfileMarginData>(setting, seen))
        return seen;
    if (const auto* password = dynamic_cast<const VProfileBlowfishString*>(&setting)) {
        seen.value = password->GetText().View();
        return seen;
    }
    VVariant value;
    VReportMessageParams report;
    EXPECT_TRUE(setting.GetVariant(value, report)) << VNarrowString(setting.GetName()).GetData();
    seen.value = value.GetType() == VVariantType::kText ? value.GetText().View() : std::u16string_view();
    seen.number = value.GetType() == VVariantType::kEmpty ? 2 : value.GetNumber();
    if (seen.isBool) seen.number = seen.number != 0;
    VStringArray list;
    if (value.GetType() == VVariantType::kArray && StringsFromVariant(value, list))
        for (const VUnicodeString& element : list) (seen.value += element.View()) += u'\n';
    return seen;
}

/// What a number may be, and what loading makes of one below and above: then the setting shows as one that the next
/// save writes.
struct Bounds {
    std::u16string_view name;
    std::int64_t least;
    std::int64_t most;
    std::int64_t below;
    std::int64_t above;
};
constexpr Bounds kBounds[] = {
    {u"Is Session", 1, 1, 1, 1},
    {u"Cols", -32768, 1000, 0, 1000},
    {u"Scrollback", INT32_MIN, 1000000, 0, 1000000},
    {u"Idle Timeout", 10, 9999999, 10, 9999999},
    {u"Idle NO-OP Timeout", 10, 9999999, 10, 9999999},
    {u"Max Transfer Buffers", 1, 8, 4, 4},
    {u"Raw Port", 0, 65535, 0, 0},
    {u"SSH Port", 1, 65535, 22, 22},
    {u"Telnet Port", 1, 65535, 23, 23},
    {u"FTP Port", 1, 65535, 21, 21},
    {u"FTP/SSL Port", 1, 65535, 990, 990},
    {u"Serial Baud Rate", 50, 4000000, 9600, 9600},
    {u"Serial Data Bits", 5, 8, 8, 8},
    {u"Serial Parity", 0, 2, 0, 0},
    {u"Serial Stop Bits", 1, 2, 1, 1},
    {u"Serial Flow Control", 0, 2, 0, 0},
};
/// Texts that loading corrects when they are not known; each of these is not.
constexpr std::u16string_view kKnownTexts[] = {u"Emulation", u"Protocol Name", u"Transfer Protocol Name"};

class HostileValuesTest : public SuiteTest {
  protected:
    HostileValuesTest() : faulty(*factory) { InstallReferenceSuite(u"NorHalden", faulty); }

    /// Loads the object that is tested from the key "k", saves it there when `isSaved`, and gives what was loaded.
    using Pass = std::function<Settings(bool isSaved)>;

    static void StartAfresh(const std::function<void(VProfileKey&)>& change) {
        WithKey(u"k", [&](VProfileKey& key) {
            WithKey(u"base", [&](VProfileKey& base) { ASSERT_TRUE(key.CopyValues(base)); });
            change(key);
        });
    }

    std::u16string RandomText() {
        std::u16string text(random() % 40, u'\0');
        std::ranges::generate(text, [&] { return static_cast<char16_t>(1 + random() % 0xFFFE); });
        return text;
    }
    std::string RandomBytes(std::size_t size) {
        std::string bytes(size, '\0');
        std::ranges::generate(bytes, [&] { return static_cast<char>(random()); });
        return bytes;
    }

    /// One of each type, and many of the setting's own.
    std::vector<Stored> MakeValues(const Seen& setting) {
        std::vector<Stored> values = {{Kind::kDword, 3, {}, {}},
                                      {Kind::kText, 0, RandomText(), {}},
                                      {Kind::kList, 0, RandomText(), {}},
                                      {Kind::kBinary, 0, {}, RandomBytes(64)}};
        const auto other = static_cast<std::uint32_t>(random());
        const std::uint32_t numbers[] = {0, 1, 2, 9, 128, 5000, 65536, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, other};
        const auto texts = {u""s, u"x"s, u"%"s, u"-1,,"s, u"CAPI:"s, std::u16string(100000, u'9'), RandomText()};
        const std::size_t size = setting.recordSize;
        const auto blocks = {""s, std::string(40000, '\xFF'), std::string(size, '\xFF'), RandomBytes(size)};
        if (setting.kind == Kind::kDword)
            for (const std::uint32_t number : numbers) values.push_back({Kind::kDword, number, {}, {}});
        if (setting.kind == Kind::kText || setting.kind == Kind::kList)
            for (const std::u16string& text : texts) values.push_back({setting.kind, 0, text, {}});
        if (setting.kind == Kind::kBinary)
            for (const std::string& block : blocks) values.push_back({Kind::kBinary, 0, {}, block});
        return values;
    }

    /// Walks the settings that the object at "base" has, but for those that were walked before.
    void WalkValues(const Pass& pass) {
        StartAfresh([](VProfileKey&) {});
        const Settings usual = pass(false);
        for (const Seen& setting : usual) {
            if (!walked.insert(setting.name).second) continue;
            const VUnicodeString name(setting.name);
            StartAfresh([&](VProfileKey& key) { key.GetImpl()->DeleteValue(name.GetData()); });
            const Settings absent = pass(false);
            for (const Stored& stored : MakeValues(setting)) {
                SCOPED_TRACE(VNarrowString(name).GetData() + " kind "s + std::to_string(static_cast<int>(stored.kind)) +
                             " number " + std::to_string(stored.number) + " of " +
                             std::to_string(stored.text.size() + stored.bytes.size()) + ", seed " +
                             std::to_string(seed));
                StartAfresh([&](VProfileKey& key) { stored.WriteTo(key, name); });
                const bool hasType = stored.kind == setting.kind &&
                                     (stored.kind != Kind::kBinary || stored.bytes.size() == setting.recordSize);
                const Settings loaded = pass(true);
                if (hasType)
                    CheckLoaded(setting, stored, loaded);
                else
                    EXPECT_EQ(loaded, absent) << "another type is no value";
                CheckRepaired(loaded, pass);
                if (HasFailure()) return;
            }
        }
    }

    static bool IsRepairExpected(const Seen& setting, const Stored& stored, const Seen& loaded) {
        if (std::ranges::find(kKnownTexts, setting.name) != std::end(kKnownTexts)) return true;
        if (setting.name == u"Page Margins") {
            const auto* bytes = reinterpret_cast<const std::byte*>(stored.bytes.data());
            const VMarginData margins =
                VMarginData::Unpack(std::span<const std::byte, VMarginData::kStoredSize>(bytes, stored.bytes.size()));
            return !(std::isfinite(margins.left) && std::isfinite(margins.top) && std::isfinite(margins.right) &&
                     std::isfinite(margins.bottom));
        }
        if (stored.kind != Kind::kDword) return false;
        const auto isNamed = [&](const Bounds& row) { return row.name == setting.name; };
        const auto* const row = std::ranges::find_if(kBounds, isNamed);
        std::int64_t number = static_cast<std::int32_t>(stored.number);
        if (setting.name == u"Cols") number = static_cast<std::int16_t>(stored.number);
        if (setting.name.ends_with(u" Port")) number = stored.number;
        if (setting.isBool) number = number != 0;
        if (row != std::end(kBounds)) {
            std::int64_t expected = number < row->least ? row->below : number > row->most ? row->above : number;
            if (setting.name == u"Idle Timeout" && number == 0) expected = 300;
            EXPECT_EQ(loaded.number, expected);
            return expected != number;
        }
        if (setting.isThreeState) return stored.number > 2;
        const bool isOldPacketSize = setting.name == u"XModem Send Packet Size" && number == 128;
        EXPECT_EQ(static_cast<std::int32_t>(loaded.number), isOldPacketSize ? 0 : number);
        return isOldPacketSize;
    }

    static void CheckLoaded(const Seen& setting, const Stored& stored, const Settings& settings) {
        for (const Seen& loaded : settings) {
            const bool isRepaired = loaded.isChanged || loaded.isMissing;
            if (loaded.name == setting.name) {
                EXPECT_EQ(isRepaired, IsRepairExpected(setting, stored, loaded));
                if (loaded.isText && !isRepaired) {
                    EXPECT_EQ(loaded.value.size(), stored.text.size());
                }
            } else if (setting.name == u"Resize Mode" && stored.number == 1 && loaded.name.starts_with(u"Sync View")) {
                EXPECT_TRUE(loaded.isChanged);
            } else if (!setting.name.ends_with(u"Protocol Name")) {
                EXPECT_FALSE(isRepaired) << VNarrowString(VUnicodeString(loaded.name)).GetData();
            }
        }
    }

    /// The pass before has saved.
    void CheckRepaired(const Settings& loaded, const Pass& pass) {
        const int writes = faulty.plan.writes;
        const Settings again = pass(true);
        EXPECT_EQ(faulty.plan.writes, writes) << "what was just saved needs no writing";
        ASSERT_EQ(again.size(), loaded.size());
        for (std::size_t i = 0; i < again.size(); ++i) {
            EXPECT_FALSE(again[i].isChanged || again[i].isMissing);
            // The state of a frame is saved as it was understood.
            if (again[i].isText || again[i].kind != Kind::kText) {
                EXPECT_EQ(again[i].value, loaded[i].value);
            }
            EXPECT_EQ(again[i].number, loaded[i].number);
        }
    }

    /// Loads the session, looks at it and its clone, and saves it.
    static Settings PassOverSession(bool isSaved) {
        Settings settings;
        const auto session = Load();
        VisitSettings(*session, [&](VProfileData& setting) { settings.push_back(Look(setting)); });
        const bool isChanged = std::ranges::any_of(settings, &Seen::isChanged);
        EXPECT_TRUE(isChanged || !session->IsChanged());
        const auto clone = VRef<ISessionConfig>::Adopt(session->Clone());
        EXPECT_EQ(clone->IsChanged(), session->IsChanged());
        if (isSaved) Save(*session);
        return settings;
    }

    unsigned seed = std::random_device()();
    std::minstd_rand random{seed};
    std::set<std::u16string> walked;
    FaultyStoreFactory faulty;
};

TEST_F(HostileValuesTest, ASessionTakesWhatItCanAndRepairsTheRest) {
    constexpr const char16_t* kProtocols[][2] = {{u"SSH2", u"SFTP"},        {u"Telnet", u"FTP"},
                                                 {u"Serial", u"SCP"},       {u"TAPI", u"FTP/SSL (implicit)"},
                                                 {u"Local Shell", u"None"}, {u"Raw", u"SFTP"}};
    for (const auto& [terminal, transfer] : kProtocols) {
        const auto session = Make(terminal);
        session->SetTransferProtocolName(transfer);
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"base"); });
        WithKey(u"base", [&](VProfileKey& key) { session->Save(key, true); });
        WalkValues(PassOverSession);
    }
    EXPECT_GT(walked.size(), 200U);
}

}  // namespace
}  // namespace connectdialog::test
