#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "foundation/messagetable.h"
#include "foundation/vreportmessageparams.h"

namespace connectdialog {
namespace {

using Text = std::u16string;

TEST(Report, FindsItsText) {
    struct Row {
        std::uint32_t code;
        const char16_t* insert;
        const char16_t* expected;
    };
    const Row rows[] = {
        {0, nullptr, u"The operation succeeded."},
        {5, u"unused", u"Access was denied."},
        {0x61090001, u"a", u"\"a\" 未找到。"},
        {0x61090001, nullptr, u"\"%1\" 未找到。"},
        {0x61090002, u"3",
         u"你将编辑 3 个会话的设置。\r\n第一个会话的设置将显示在会话属性对话框中。\r\n"
         u"只有改变的设置才会被应用到\r\n所选的 3 个会话。"},
        {0xE1090003, u"a", u"以下会话正在使用中，不能删除：\r\na"},
    };
    for (const Row& row : rows) {
        VReportMessageParams report(row.code);
        if (row.insert != nullptr) report.AddInsert(row.insert);
        EXPECT_EQ(report.GetTextLength(), 0u);
        EXPECT_EQ(Text(report.GetText()), row.expected);
        EXPECT_EQ(report.GetTextLength(), Text(row.expected).size());
    }
}

TEST(Report, LooksInTheOwnModuleBeforeTheFallbackAndAfterTheSystem) {
    int module = 0;
    const MessageRow rows[] = {{5, u"never shown"}, {0xE1040047, u"own %1"}};
    RegisterMessageTable(&module, rows);
    EXPECT_EQ(Text(VReportMessageParams(5, &module).GetText()), u"Access was denied.");
    VReportMessageParams own(0xE1040047, &module);
    own.AddInsert("n\xC3\xA4me");
    EXPECT_EQ(Text(own.GetText()), u"own n\u00E4me");
    RemoveMessageTables(&module);
    VReportMessageParams fallback(0xE1040047, &module);
    fallback.AddInsert(u"a");
    EXPECT_NE(Text(fallback.GetText()).find(u"“a”"), Text::npos);
    EXPECT_NE(Text(VReportMessageParams(77777, &module).GetText()).find(u"<Unknown Module>:317"), Text::npos);
    EXPECT_EQ(Text(VReportMessageParams(0xE1040099).GetText()),
              u"Could not retrieve the error text for error code 0xe1040099.\r\n"
              u"Status codes from FormatMessage were " +
                  platform::GetModuleFile(platform::GetLibraryModule()) + u":317 and 317.");
}

TEST(Report, TheTextStaysUntilTheMessageIsSetAnew) {
    VReportMessageParams report(0x61090001);
    const char16_t* text = report.GetText();
    report.SetCode(5);
    report.AddInsert(u"late");
    EXPECT_EQ(report.GetText(), text);
    report.SetMessage(5);
    EXPECT_EQ(Text(report.GetText()), u"Access was denied.");
    EXPECT_EQ(report.GetInsertCount(), 0u);
    EXPECT_FALSE(report.Fail(0x61090001, u"a"));
    EXPECT_FALSE(report.Fail(0x61090001, report.GetInserts()[0])) << "an insert of its own";
    EXPECT_EQ(Text(report.GetText()), u"\"a\" 未找到。");
    report.Clear();
    EXPECT_EQ(report.GetCode() + report.GetInsertCount(), 0u);
}

TEST(Report, CopiesAreDeepAndLeaveTheSeverity) {
    int module = 0;
    auto source = std::make_unique<VReportMessageParams>(0x61090001, &module);
    source->AddInsert(u"one");
    source->AddInsert(static_cast<const char16_t*>(nullptr));
    const FormatArgument number(5);
    source->AddInsertFormatted(u"<%1!03d!>", &number, 1);
    source->SetSeverity(3);
    source->SetUserData(9);
    VReportMessageParams copy;
    EXPECT_EQ(copy.Assign(nullptr), nullptr);
    copy = *source;
    copy = *&copy;
    source.reset();
    ASSERT_EQ(copy.GetInsertCount(), 3u);
    EXPECT_EQ(Text(copy.GetInserts()[0]) + copy.GetInserts()[1] + copy.GetInserts()[2], u"one<005>");
    EXPECT_EQ(copy.GetModule(), &module);
    EXPECT_EQ(copy.GetUserData(), 9u);
    EXPECT_EQ(copy.GetSeverity(), -1);
}

struct TestRouter : VReportMessageRouter {
    std::uint32_t HandleReport(IReportMessageParams* report) override {
        handled = report;
        EXPECT_EQ(Text(report->GetInserts()[0]), u"insert");
        return 42;
    }
    IReportMessageParams* handled = nullptr;
};

TEST(Report, IsRoutedToTheHost) {
    static TestRouter router;
    VReportMessageParams report(0x61090001);
    report.AddInsert(u"insert");
    EXPECT_EQ(RouteReport(&report), 0x61090001u);
    SetReportRouterGetter([]() -> VReportMessageRouter* { return &router; });
    EXPECT_EQ(RouteReport(&report), 42u);
    EXPECT_EQ(router.handled, &report);
    EXPECT_EQ(RouteReportCopy(&report), 42u);
    EXPECT_NE(router.handled, &report);
    SetReportFactory([](std::uint32_t, ModuleHandle) -> IReportMessageParams* { return nullptr; });
    EXPECT_EQ(RouteReportCopy(&report), 0x61090001u);
    SetReportFactory(nullptr);
    SetReportRouterGetter(nullptr);
}

}  // namespace
}  // namespace connectdialog
