#include "config/printerconfig.h"

#include <limits>

#include "support/fakesuite.h"

namespace connectdialog::test {
namespace {

class PrinterConfigTest : public LibraryTest {
  protected:
    static PrinterConfig Load(const std::function<void(VProfileKey&)>& fill) {
        std::optional<PrinterConfig> printer;
        WithKey(u"k", [&](VProfileKey& key) {
            fill(key);
            printer.emplace(&key);
        });
        return *printer;
    }
};

TEST_F(PrinterConfigTest, AFreshPrinterHasMarginsAndAFont) {
    const PrinterConfig printer(nullptr);
    EXPECT_EQ(printer.pageMargins.Get(), (VMarginData{0.5, 0.5, 0.5, 0.5}));
    std::array<std::byte, VLogFont::kStoredSize> record;
    printer.font.Get().Pack(record);
    // Height -13, weight 400, then from the italic switch on; the size in tenths of a point stands at the end.
    constexpr int kBytes[] = {0xF3, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0,  0,  0,
                              0,    0x90, 1,    0,    0, 0, 0, 0, 0, 3, 2, 1, 49, 'C'};
    for (std::size_t i = 0; i < std::size(kBytes); ++i) EXPECT_EQ(record[i], static_cast<std::byte>(kBytes[i])) << i;
    EXPECT_EQ(printer.font.Get().GetFace(), u"Courier New");
    EXPECT_EQ(printer.font.Get().size, 100);
    EXPECT_FALSE(printer.IsChanged());
}

TEST_F(PrinterConfigTest, OurEndOfTheLineFollowsTheFarEndUntilItIsStored) {
    const PrinterConfig follows = Load([](VProfileKey& key) {
        key.WriteDword(u"Printer CTS Flow", 0);
        key.WriteDword(u"Printer DSR Flow", 1);
    });
    EXPECT_EQ(follows.serialDevice.rtsFlowControl.Get(), 1);
    EXPECT_EQ(follows.serialDevice.dtrFlowControl.Get(), 2);
    const PrinterConfig stored = Load([](VProfileKey& key) { key.WriteDword(u"Printer RTS Flow Control", 0); });
    EXPECT_EQ(stored.serialDevice.rtsFlowControl.Get(), 0);
    EXPECT_FALSE(stored.IsChanged());
}

TEST_F(PrinterConfigTest, RawModeTurnsThePortOff) {
    const PrinterConfig printer = Load([](VProfileKey& key) {
        key.WriteDword(u"Use Raw Mode", 1);
        key.WriteDword(u"Use Printer Port", 1);
    });
    EXPECT_FALSE(printer.usePrinterPort.Get());
    EXPECT_TRUE(printer.IsChanged());
    WithKey(u"k", [](VProfileKey& key) { key.WriteDword(u"Use Raw Mode", 0); });
    EXPECT_TRUE(Load([](VProfileKey&) {}).usePrinterPort.Get());
}

TEST_F(PrinterConfigTest, MarginsThatAreNoNumbersAreRepaired) {
    PrinterConfig printer = Load([](VProfileKey& key) {
        VProfileMarginData margins;
        margins.SetName(u"Page Margins"_v);
        margins.Set({1, std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity(), 2});
        margins.Save(key, true);
    });
    EXPECT_EQ(printer.pageMargins.Get(), (VMarginData{1, 0.5, 0.5, 2}));
    EXPECT_TRUE(printer.IsChanged());
    WithKey(u"k", [&](VProfileKey& key) {
        printer.Save(key, false);
        EXPECT_FALSE(PrinterConfig(&key).IsChanged());
    });
}

TEST_F(PrinterConfigTest, ValuesAreFoundAtTheirOwnLevel) {
    PrinterConfig printer(nullptr);
    EXPECT_EQ(printer.serialDevice.FindValue(u"printer baud rate"), &printer.serialDevice.baudRate);
    EXPECT_EQ(printer.FindValue(u"printer baud rate"), nullptr);
    EXPECT_EQ(printer.FindValue(u"paper size"), &printer.paperSize);
    EXPECT_EQ(printer.GetMember(10), &printer.serialDevice);
    EXPECT_EQ(printer.GetMember(12), nullptr);
}

}  // namespace
}  // namespace connectdialog::test
