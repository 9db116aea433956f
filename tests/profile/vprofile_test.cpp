#include "profile/vprofile.h"

#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "profile/vprofile2.h"
#include "profile/vprofilemultilinestring.h"
#include "support/fakesuite.h"

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

TEST_F(ProfileValueTest, NumbersKeepTheirTypeInTheStore) {
    VProfile<short> negative;
    negative.Load(nullptr, u"V"_v, -1);
    EXPECT_EQ(SavedDword(negative, false), 0xFFFFFFFF);
    WithKey(u"k", [](VProfileKey& key) {
        key.WriteDword(u"V", 0xFFFFFFFF);
        VProfile<short> number;
        EXPECT_TRUE(number.Load(&key, u"V"_v, 0));
        EXPECT_EQ(number.Get(), -1);
        VProfile<bool> flag;
        flag.Load(&key, u"V"_v, false);
        EXPECT_TRUE(flag.Get());
        VProfile<VTriState> choice;
        choice.Load(&key, u"V"_v, VTriState::kOff);
        EXPECT_EQ(choice.Get(), VTriState::kFollowGlobal);
        VProfile<int> absent;
        absent.SetName(u"W"_v);
        absent.Set(3);
        EXPECT_FALSE(absent.Load(&key));
        EXPECT_EQ(absent.Get(), 3);
    });
}

TEST_F(ProfileValueTest, VariantsHaveTheTypesThatScriptsKnow) {
    VReportMessageParams report;
    VVariant variant;
    VProfile<VTriState> choice;
    choice.Load(nullptr, u"V"_v, VTriState::kFollowGlobal);
    EXPECT_TRUE(choice.GetVariant(variant, report));
    EXPECT_EQ(variant.GetType(), VVariantType::kEmpty);
    EXPECT_TRUE(choice.SetVariant(VVariant(VVariantType::kInt, 2), report));
    EXPECT_EQ(choice.Get(), VTriState::kOn);

    VProfile<bool> flag;
    flag.Set(true);
    flag.GetVariant(variant, report);
    EXPECT_EQ(variant.GetNumber(), -1);

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
    VVariant::Array nested;
    nested.Add(VVariant(elements));
    EXPECT_FALSE(list.SetVariant(VVariant(nested), report));
    EXPECT_EQ(list.Get().GetCount(), 3U) << "a first element that fails leaves the old value";
    list.GetVariant(variant, report);
    EXPECT_EQ(variant.GetType(), VVariantType::kArray);
    EXPECT_EQ(variant.GetArray()->GetCount(), 3U);
}

TEST_F(ProfileValueTest, VariantsConvertOnlyWhatFits) {
    const std::tuple<VVariant, VVariantType, const char16_t*> rows[] = {
        // The last one is the result as text; null: refused.
        {VVariant(VUnicodeString(u"-32768")), VVariantType::kInt16, u"-32768"},
        {VVariant(VUnicodeString(u"32768")), VVariantType::kInt16, nullptr},
        {VVariant(VUnicodeString(u"65535")), VVariantType::kUInt16, u"65535"},
        {VVariant(VUnicodeString(u"12x")), VVariantType::kInt, nullptr},
        {VVariant(VUnicodeString(u"")), VVariantType::kInt, nullptr},
        {VVariant(VUnicodeString(u"99999999999999999999")), VVariantType::kInt, nullptr},
        {VVariant(VUnicodeString(u"TRUE")), VVariantType::kBool, u"-1"},
        {VVariant(VVariantType::kUInt32, 4294967295), VVariantType::kInt, nullptr},
        {VVariant(), VVariantType::kUInt, u"0"},
        {VVariant(VVariantType::kBool, 1), VVariantType::kUInt, u"4294967295"},
        {VVariant(VVariant::Array()), VVariantType::kText, nullptr},
    };
    for (const auto& [source, type, expected] : rows) {
        VVariant result;
        ASSERT_EQ(VVariant::Convert(source, type, result), expected != nullptr);
        if (expected == nullptr) continue;
        EXPECT_EQ(result.GetType(), type);
        VVariant text;
        VVariant::Convert(result, VVariantType::kText, text);
        EXPECT_EQ(text.GetText(), expected);
    }
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

TEST_F(ProfileValueTest, LinesSplitAndJoin) {
    VProfileMultiLineString lines;
    lines.SetText(u"one\r\n\ntwo\r");
    for (const bool carriageReturns : {true, false}) {
        VUnicodeString text;
        lines.GetText(text, carriageReturns);
        EXPECT_EQ(text, carriageReturns ? u"one\r\n\r\ntwo" : u"one\n\ntwo");
    }
}

}  // namespace
}  // namespace connectdialog::test
