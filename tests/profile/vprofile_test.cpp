// Values of a profile: single ones, records and lines of numbers; and writes that belong together.
#include "profile/vprofile.h"

#include <stdexcept>

#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "profile/unitofwork.h"
#include "profile/vlogfont.h"
#include "profile/vmargindata.h"
#include "profile/vprofile2.h"
#include "profile/vprofileexplorerframestate.h"
#include "profile/vprofilelistviewstate.h"
#include "profile/vprofilemultilinestring.h"
#include "profile/vwindowplacement.h"
#include "support/fakesuite.h"
#include "support/storetools.h"

namespace connectdialog::test {
namespace {

/// Fails with the code that is set, else answers with fixed values.
class FakeDecoder : public IProfileTextDecoder {
  public:
    bool DecodeBool(bool& value, const char* text, VReportMessageParams& report) override {
        report.SetCode(failure);
        value = std::string_view(text) == "yes";
        return failure == 0;
    }
    bool DecodeText(VNarrowString& value, const char* text, VReportMessageParams& report, std::uint32_t) override {
        report.SetCode(failure);
        value = VNarrowString(text);
        value += "!";
        return failure == 0;
    }
    bool DecodeArray(VStringArray& value, const char*, VReportMessageParams&, bool keepWhole) override {
        value.Clear();
        value.Add(keepWhole ? u"whole" : u"split");
        return true;
    }
    std::uint32_t failure = 0;
};

/// Keeps the last number that was put and gives it back.
class FakeExchange : public IProfileValueExchange {
  public:
    bool PutNumber(std::uint32_t value, const char16_t*) override {
        number = value;
        return true;
    }
    bool PutString(const char16_t*, const char16_t*) override { return true; }
    bool PutStringArray(const VStringArray&, const char16_t*) override { return true; }
    bool GetNumber(std::uint32_t& value, const char16_t*) override {
        value = number;
        return true;
    }
    bool GetString(VUnicodeString&, const char16_t*) override { return false; }
    bool GetStringArray(VStringArray&, const char16_t*) override { return false; }
    std::uint32_t number = 77;
};

class ProfileValueTest : public LibraryTest {
  protected:
    /// What the store holds under "V" after `value` saved itself, or -1.
    template <class Value>
    static std::int64_t SavedDword(Value& value, bool force) {
        std::int64_t saved = -1;
        WithKey(u"k", [&](VProfileKey& key) {
            key.GetImpl()->DeleteValue(u"V");
            value.Save(key, force);
            std::uint32_t dword = 0;
            if (key.ReadDword(u"V", dword)) saved = dword;
        });
        return saved;
    }
};

TEST_F(ProfileValueTest, AValueIsWrittenInEveryStateButClean) {
    VProfile<int> value;
    value.Load(nullptr, u"V"_v, 5);
    EXPECT_EQ(SavedDword(value, false), 5) << "absent";
    EXPECT_EQ(SavedDword(value, false), -1) << "clean";
    EXPECT_EQ(SavedDword(value, true), 5) << "forced";
    value.Set(6);
    EXPECT_EQ(SavedDword(value, false), 6) << "edited";
    value.Set(7);
    value.Commit();
    EXPECT_FALSE(value.IsChanged());
    EXPECT_EQ(SavedDword(value, false), 7) << "committed";
    value.Commit();
    EXPECT_FALSE(value.IsMissing()) << "nothing to commit";
    value.Set(8);
    value.Revert();
    EXPECT_EQ(value.Get(), 7);
}

TEST_F(ProfileValueTest, VariantsHaveTheTypesThatScriptsKnow) {
    VReportMessageParams report;
    VProfile<int> number;
    number.SetName(u"Count"_v);
    number.Set(1);
    EXPECT_FALSE(number.SetVariant(VVariant(VVariantType::kInt, -1), report)) << "goes in unsigned";
    EXPECT_EQ(report.GetCode(), kReportBadVariant);
    EXPECT_STREQ(VNarrowString(report.GetInserts()[0]).GetData(), "Count");
    EXPECT_EQ(number.Get(), 1);
    EXPECT_TRUE(number.SetVariant(VVariant(VUnicodeString(u" 42 ")), report));
    EXPECT_EQ(number.Get(), 42);

    VVariant::Array elements;
    elements.Add(VVariant(VUnicodeString(u"a")));
    elements.Add(VVariant());
    elements.Add(VVariant(VVariantType::kInt, 3));
    VProfileTextList list;
    EXPECT_TRUE(list.SetVariant(VVariant(&elements), report)) << "by reference";
    EXPECT_EQ(list.Get().GetCount(), 3U);
    EXPECT_EQ(list.Get()[1], u"");
    EXPECT_EQ(list.Get()[2], u"3");
}

TEST_F(ProfileValueTest, TextualFormsSetValueAndStoredCopy) {
    FakeDecoder decoder;
    VReportMessageParams report;
    VProfile<unsigned short> number;
    number.Load(nullptr, u"V"_v, std::uint16_t{1});
    EXPECT_TRUE(number.Load("0x10", decoder, report));
    EXPECT_EQ(number.Get(), 16);
    EXPECT_FALSE(number.IsMissing());
    EXPECT_FALSE(number.IsChanged());
    number.SetNumericBase(10);
    number.Load("65537", decoder, report);
    EXPECT_EQ(number.Get(), 1) << "truncated to its type";

    VProfileText text;
    EXPECT_TRUE(text.Load("abc", decoder, report));
    EXPECT_EQ(text.Get(), u"abc!");
    decoder.failure = kReportPlainText;
    EXPECT_TRUE(text.Load("raw", decoder, report));
    EXPECT_EQ(text.Get(), u"raw");
    EXPECT_EQ(report.GetCode(), 0U);
    decoder.failure = 5;
    EXPECT_FALSE(text.Load("x", decoder, report));
    VProfile<bool> flag;
    EXPECT_FALSE(flag.Load("yes", decoder, report));

    VProfileTextList list;
    list.Load("a", decoder, report);
    EXPECT_EQ(list.Get()[0], u"split");
    list.SetSplits(false);
    list.Load("a", decoder, report);
    EXPECT_EQ(list.Get()[0], u"whole");
}

TEST_F(ProfileValueTest, AChoiceThatFollowsTheGlobalSettingIsNotPut) {
    FakeExchange exchange;
    VProfile<VTriState> choice;
    choice.Set(VTriState::kFollowGlobal);
    EXPECT_TRUE(choice.PutValue(exchange, u"c"));
    EXPECT_EQ(exchange.number, 77U);
    choice.Set(VTriState::kOn);
    EXPECT_TRUE(choice.PutValue(exchange, u"c"));
    EXPECT_EQ(exchange.number, 1U);
    VProfile<int> number;
    exchange.number = 0xFFFFFFFF;
    EXPECT_TRUE(number.GetValue(exchange, u"n"));
    EXPECT_EQ(number.Get(), -1);
}

class StructuredValueTest : public LibraryTest {
  protected:
    static std::string StoredBytes(VProfileKey& key, const char16_t* name) {
        std::uint32_t size = 0;
        if (!key.ReadBinary(name, nullptr, size)) return "(absent)";
        std::string bytes(size, '\0');
        key.ReadBinary(name, bytes.data(), size);
        return bytes;
    }
    /// Every byte differs, so that a field in the wrong place shows.
    static std::string CountingBytes(std::size_t size) {
        std::string bytes(size, '\0');
        for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i + 1);
        return bytes;
    }
    /// A record is read, saved again as the same bytes, and refused in any other size.
    template <class Value>
    static Value RoundTrip(VProfileKey& key, std::size_t size) {
        const std::string bytes = CountingBytes(size);
        key.WriteBinary(u"V", bytes.data(), static_cast<std::uint32_t>(size));
        Value value;
        value.Load(&key, u"V"_v, {});
        EXPECT_FALSE(value.IsMissing());
        key.GetImpl()->DeleteValue(u"V");
        value.Save(key, true);
        EXPECT_EQ(StoredBytes(key, u"V"), bytes);
        for (const std::size_t other : {size - 1, size + 1}) {
            const std::string wrong = CountingBytes(other);
            key.WriteBinary(u"V", wrong.data(), static_cast<std::uint32_t>(other));
            Value absent;
            absent.Load(&key, u"V"_v, {});
            EXPECT_TRUE(absent.IsMissing()) << other;
        }
        return value;
    }
};

TEST_F(StructuredValueTest, RecordsKeepTheirPublishedLayout) {
    WithKey(u"k", [](VProfileKey& key) {
        const VWindowPlacement placement = RoundTrip<VProfileWindowPlacement>(key, 44).Get();
        EXPECT_EQ(placement.length, 0x04030201U);
        EXPECT_EQ(placement.showState, 0x0C0B0A09U);
        EXPECT_EQ(placement.maximized.y, 0x1C1B1A19);
        EXPECT_EQ(placement.normal.bottom, 0x2C2B2A29);

        const VLogFont font = RoundTrip<VProfileLogFont>(key, 96).Get();
        EXPECT_EQ(font.weight, 0x14131211);
        EXPECT_EQ(font.pitchAndFamily, 0x1C);
        EXPECT_EQ(font.face[0], 0x1E1D);
        EXPECT_EQ(font.size, 0x605F5E5D);
        RoundTrip<VProfileMarginData>(key, 32);

        constexpr double kNumbers[] = {0.5, -1, 1e300, 0};
        key.WriteBinary(u"V", kNumbers, sizeof kNumbers);
        VProfileMarginData margins;
        margins.Load(&key, u"V"_v, {});
        EXPECT_EQ(margins.Get(), (VMarginData{0.5, -1, 1e300, 0}));
        margins.Edit().bottom = 0.25;
        EXPECT_TRUE(margins.IsChanged());
        VReportMessageParams report;
        VVariant variant;
        EXPECT_FALSE(margins.GetVariant(variant, report));
        EXPECT_EQ(report.GetCode(), kReportNotSupported);
    });
}

TEST(ListViewState, TextsOfBothFormsAndNoForm) {
    const auto parsed = [](const char16_t* text) {
        VProfileListViewState state;
        state.Load(nullptr, u"V"_v, text);
        return state;
    };
    constexpr const char16_t* kDefaults = u"1,1,1,0,0";
    constexpr const char16_t* kRows[][2] = {
        {u"1,1,1,0,2,100,1,1,200,0,0", u"1,1,1,0,2,100,1,1,200,0,0"},
        {u"0,5,4294967295,7,3,10,20,30", u"0,5,4294967295,7,3,10,1,0,20,1,1,30,1,2"},
        {u" 7, +2,\t3,4,1,-1 behind", u"1,2,3,4,1,-1,1,0"},
        {u"0,2,3,4,2,,10,\"20\",", u"0,2,3,4,2,10,1,0,20,1,1"},
        {u"0,99999999999,1,-99999999999,0", u"0,2147483647,1,-2147483648,0"},
        // Malformed:
        {u"", kDefaults},
        {u"0,2,3,4,2,10", kDefaults},
        {u"0,2,3,4,-1", kDefaults},
        {u"0,2,3,4,1431655766,10,20", kDefaults},
    };
    for (const auto& [text, expected] : kRows)
        EXPECT_EQ(VUnicodeString(parsed(text).FormatFields()), expected) << VNarrowString(text).GetData();
    EXPECT_FALSE(parsed(u"1,1,1,0,1,100,0,0").GetFields().columns[0].visible);
}

TEST_F(StructuredValueTest, FieldsReachTheTextWhenTheyAreSaved) {
    WithKey(u"k", [](VProfileKey& key) {
        VProfileExplorerFrameState state;
        state.Load(&key, u"V"_v, u"1,-1,-1");
        EXPECT_TRUE(state.IsMissing());
        state.EditFields().firstSize = 200;
        EXPECT_FALSE(state.IsChanged()) << "not before the text is made";
        state.Save(key, false);
        EXPECT_EQ(StoredText(key), u"1,200,-1");

        VReportMessageParams report;
        ASSERT_TRUE(state.SetVariant(VVariant(VUnicodeString(u"0,3,4")), report));
        EXPECT_EQ(state.GetFields().secondSize, 4);
        EXPECT_TRUE(state.IsChanged());
        VProfileExplorerFrameState other;
        other.Assign(state);
        EXPECT_EQ(other.GetFields().secondSize, 4);
        state.Revert();
        state.Save(key, true);
        EXPECT_EQ(StoredText(key), u"1,200,-1");

        key.WriteString(u"V", u"0,3");
        state.Load(&key, u"V"_v, u"");
        EXPECT_EQ(state.GetFields(), VProfileExplorerFrameState::Fields()) << "malformed";
        VProfileFiveNumberState five;
        five.SetName(u"V"_v);
        five.EditFields() = {};
        five.EditFields().flags[1] = false;
        five.EditFields().secondSize = 9;
        five.Save(key, true);
        EXPECT_EQ(StoredText(key), u"1,0,1,-1,9");
        VProfileListViewState list;
        list.Load(&key, u"1,1,1,0,0");
        EXPECT_EQ(list.GetName(), u"Remote ListView State");
    });
}

class UnitOfWork : public LibraryTest {
  protected:
    std::uint32_t Stored(const char16_t* name) { return ReadDwordOr(*GetProfileFactory(), u"Key", name, 0); }
};

TEST_F(UnitOfWork, OneRefusedWriteTakesTheOthersToTheKeyBack) {
    ASSERT_TRUE(WriteToKey(u"Key", [](VProfileKey& key) { key.WriteDword(u"Kept", 1); }));
    EXPECT_FALSE(WriteToKey(u"Key", [](VProfileKey& key) {
        key.WriteDword(u"Kept", 2);
        key.WriteDword(std::u16string(70000, u'x').c_str(), 2);
        key.WriteDword(u"Later", 2);
    }));
    EXPECT_EQ(Stored(u"Kept"), 1U);
    EXPECT_EQ(Stored(u"Later"), 0U);
}

TEST_F(UnitOfWork, StepsThatThrowOrGiveUpLeaveNothing) {
    const auto write = [] { return WriteToKey(u"Key", [](VProfileKey& key) { key.WriteDword(u"V", 1); }); };
    EXPECT_FALSE(AsOneUnit([&] { return write() && false; }));
    EXPECT_EQ(Stored(u"V"), 0U);
    EXPECT_THROW(AsOneUnit([&]() -> bool { throw std::runtime_error(write() ? "written" : ""); }), std::runtime_error);
    EXPECT_EQ(Stored(u"V"), 0U);
    EXPECT_TRUE(AsOneUnit(write));
    EXPECT_EQ(Stored(u"V"), 1U);
}

}  // namespace
}  // namespace connectdialog::test
