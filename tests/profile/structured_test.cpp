// Records and lines of numbers in the store.
#include <array>
#include <cstring>
#include <limits>

#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "profile/vlogfont.h"
#include "profile/vmargindata.h"
#include "profile/vprofileexplorerframestate.h"
#include "profile/vprofilelistviewstate.h"
#include "profile/vwindowplacement.h"
#include "support/fakesuite.h"

namespace connectdialog::test {
namespace {

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

TEST(LogFont, IsMadeFromAHeightAndAFace) {
    const VLogFont font(16, u"Mono");
    EXPECT_TRUE(font.height == -16 && font.size == 120 && font.weight == 400);
    EXPECT_EQ(font.GetFace(), u"Mono");
    EXPECT_EQ(VLogFont(-13, u"").size, 97);
    EXPECT_EQ(VLogFont(std::numeric_limits<std::int32_t>::min(), std::u16string(40, u'x')).GetFace().size(), 32U);
    VLogFont other = font;
    other.face[20] = u'!';
    EXPECT_EQ(other, font) << "behind the face's end";
    other.quality = 2;
    EXPECT_NE(other, font);
}

TEST_F(StructuredValueTest, TheOldNarrowFontIsReadAndLeftInTheStore) {
    const std::pair<std::string, const char16_t*> kRows[] = {
        {"Courier", u"Courier"},
        {"", u""},
        {"Schr\xC3\xB6"
         "der",
         u"Schröder"},
        {std::string(32, 'x'), u"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
        {std::string(31, 'x') + "\xC3", u"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
    };
    for (const auto& row : kRows) {
        WithKey(u"k", [&](VProfileKey& key) {
            key.GetImpl()->DeleteValue(u"Font v2");
            std::string old = CountingBytes(64);
            old.replace(28, 32, row.first + std::string(32 - row.first.size(), '\0'));
            key.WriteBinary(u"Font", old.data(), 64);
            VProfileLogFont font;
            font.Load(&key, u"Font v2"_v, VLogFont(1, u"default"));
            EXPECT_FALSE(font.IsMissing());
            EXPECT_EQ(font.Get().GetFace(), row.second);
            EXPECT_EQ(font.Get().width, 0x08070605);
            EXPECT_EQ(font.Get().pitchAndFamily, 0x1C);
            EXPECT_EQ(font.Get().size, 0x403F3E3D);
            font.Save(key, true);
            EXPECT_EQ(StoredBytes(key, u"Font"), old);
            EXPECT_EQ(StoredBytes(key, u"Font v2").size(), 96U);
        });
    }
    WithKey(u"other", [&](VProfileKey& key) {
        VProfileLogFont font;
        for (const char16_t* name : {u"Font", u"Font v2"}) {
            font.Load(&key, name, VLogFont(1, u"default"));
            EXPECT_TRUE(font.IsMissing());
            EXPECT_EQ(font.Get().GetFace(), u"default");
        }
        EXPECT_FALSE(font.Read(nullptr));
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
        {u"0,2,3,-4,0", u"0,2,3,-4,0"},
        {u"1,1,1,0,2,100,1,1,200,0,0", u"1,1,1,0,2,100,1,1,200,0,0"},
        {u"0,5,4294967295,7,3,10,20,30", u"0,5,4294967295,7,3,10,1,0,20,1,1,30,1,2"},
        {u" 7, +2,\t3,4,1,-1 behind", u"1,2,3,4,1,-1,1,0"},
        {u"1,1,1,0,1,x", u"1,1,1,0,1,0,1,0"},
        {u"0,2,3,4,2,,10,\"20\",", u"0,2,3,4,2,10,1,0,20,1,1"},
        {u"0,99999999999,1,-99999999999,0", u"0,2147483647,1,-2147483648,0"},
        // Malformed:
        {u"", kDefaults},
        {u"0,2,3,4", kDefaults},
        {u"0,2,3,4,2,10", kDefaults},
        {u"0,2,3,4,2,10,1,0,20,1", kDefaults},
        {u"0,2,3,4,0,10", kDefaults},
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
        const VProfileExplorerFrameState copy = state;
        EXPECT_EQ(copy.GetFields().firstSize, 200);
        state.Save(key, false);
        EXPECT_EQ(StoredText(key), u"1,200,-1");

        VReportMessageParams report;
        ASSERT_TRUE(state.SetVariant(VVariant(VUnicodeString(u"0,3,4")), report));
        EXPECT_EQ(state.GetFields().secondSize, 4);
        EXPECT_TRUE(state.IsChanged());
        VProfileExplorerFrameState other;
        other.Load(&key, u"V"_v, u"");
        other.Assign(state);
        other.Save(key, false);
        EXPECT_EQ(StoredText(key), u"0,3,4");
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

}  // namespace
}  // namespace connectdialog::test
