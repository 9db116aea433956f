#include "resources/dialogids.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "support/fakepages.h"
#include "wizard/newsessionwizard.h"

namespace connectdialog::test {
namespace {

constexpr int kFirst = WizardIds::kTerminalPage;
constexpr int kTransfer = WizardIds::kTransferPage;
constexpr int kLast = WizardIds::kFinishPage;

class WizardTest : public LibraryTest {
  protected:
    WizardTest() {
        panels.table.Clear();
        panels.table.Add(MakePagedRow<kFakeSshPage>(AppKind::kNorHalden, u"SSH2"));
        panels.table.Add(MakePagedRow<kFakeTelnetPage>(AppKind::kNorHalden, u"Telnet"));
        panels.table.Add(MakeRow(AppKind::kNorHalden, u"Pageless"));
        panels.table.Add(MakeRow(AppKind::kNorHalden, u"None", false));
        panels.table.Add(MakePagedRow<kFakeSftpPage>(AppKind::kTessaly, u"SFTP"));
        panels.table.Add(MakeRow(AppKind::kTessaly, u"None", false));
        config = VRef<SessionConfig>::Adopt(new SessionConfig(u"New", nullptr));
    }
    ~WizardTest() override {
        EXPECT_EQ(kit.TakeFaults(), "");
        EXPECT_EQ(FakeWizardPage::alive, 0);
    }

    std::int64_t Run(const HeadlessDialogKit::DialogScript& script) {
        kit.ExpectDialog(WizardIds::kSheet, script);
        NewSessionWizard wizard(config.Get(), static_cast<int>(AppKind::kNorHalden), nullptr, 0);
        const std::int64_t result = wizard.DoModal();
        usesWizard = wizard.GetUseWizard();
        return result;
    }
    /// Walks as the words say: "<" Back, ">" Next, "!" Finish, "h:" types a host, "n:" a name, anything else is a
    /// protocol that is chosen. Gives the page that shows in the end.
    static int Walk(HeadlessDialog& sheet, const std::vector<std::u16string>& words) {
        for (const std::u16string& word : words) {
            HeadlessDialog& page = *sheet.GetPage();
            const VUnicodeString text(std::u16string_view(word).substr(std::min<std::size_t>(2, word.size())));
            const bool isDone = word == u"<"              ? sheet.Press(WizardIds::kBack)
                                : word == u">"            ? sheet.Press(WizardIds::kNext)
                                : word == u"!"            ? sheet.Press(WizardIds::kFinish)
                                : word.starts_with(u"h:") ? page.Type(kFakeHost, text)
                                : word.starts_with(u"n:") ? page.Type(WizardIds::kName, text)
                                                          : page.Pick(WizardIds::kProtocol, word.c_str());
            EXPECT_TRUE(isDone) << testing::PrintToString(word);
        }
        return sheet.GetPage() != nullptr ? sheet.GetPage()->GetTemplateId() : 0;
    }

    HeadlessDialogKit kit;
    VRef<SessionConfig> config;
    bool usesWizard = true;
};

TEST_F(WizardTest, EachAnswerLeadsToItsPageAndBackTheSameWay) {
    const int ssh = kFakeSshPage.id;
    const int telnet = kFakeTelnetPage.id;
    const int sftp = kFakeSftpPage.id;
    const std::pair<std::vector<std::u16string>, int> rows[] = {
        {{}, kFirst},
        {{u"SSH2", u">"}, ssh},
        {{u"SSH2", u">", u">"}, kTransfer},
        {{u"SSH2", u">", u">", u"SFTP", u">"}, kLast},
        {{u"Telnet", u">", u">", u"SFTP", u">"}, sftp},
        {{u"Telnet", u">", u">", u"SFTP", u">", u">"}, kLast},
        {{u"Telnet", u">", u">", u"None", u">"}, kLast},
        {{u"Telnet", u">", u">", u"None", u">", u"<", u"<"}, telnet},
        {{u"Telnet", u">", u">", u"None", u">", u"<", u"<", u"<", u"SSH2", u">"}, ssh},
        {{u"Pageless", u">"}, kLast},
        {{u"None", u">"}, kTransfer},
        {{u"None", u">", u">"}, sftp},
        {{u"None", u">", u">", u"<", u"<"}, kFirst},
        {{u"SSH2", u">", u"h:bad", u">"}, ssh},
        {{u"SSH2", u">", u"h:bad", u">", u"h:good", u"<"}, kFirst},
        {{u"SSH2", u">", u"h:bad", u"<"}, ssh},
        {{u"SSH2", u">", u"h:bad", u"<", u"h:good", u"<"}, kFirst},
    };
    for (const auto& row : rows) {
        config = VRef<SessionConfig>::Adopt(new SessionConfig(u"New", nullptr));
        EXPECT_EQ(
            Run([&](HeadlessDialog& sheet) { EXPECT_EQ(Walk(sheet, row.first), row.second) << row.first.size(); }),
            kDialogCancelled);
    }
}

TEST_F(WizardTest, NoneCanBeChosenOnOneSideOnly) {
    Run([](HeadlessDialog& sheet) {
        Walk(sheet, {u"None", u">"});
        EXPECT_FALSE(sheet.GetPage()->Pick(WizardIds::kProtocol, u"None"_v));
        Walk(sheet, {u"<", u"Telnet", u">", u">"});
        EXPECT_TRUE(sheet.GetPage()->Pick(WizardIds::kProtocol, u"None"_v));
    });
}

TEST_F(WizardTest, OneApplicationHasOnePageOfProtocols) {
    panels.isTransferInstalled = false;
    EXPECT_EQ(Run([this](HeadlessDialog& sheet) {
                  panels.isTransferInstalled = true;  // too late for this run
                  EXPECT_EQ(sheet.GetPage()->GetTemplateId(), WizardIds::kSinglePage);
                  EXPECT_FALSE(sheet.GetPage()->Pick(WizardIds::kProtocol, u"None"_v));
                  EXPECT_FALSE(sheet.IsShown(WizardIds::kBack));
                  EXPECT_EQ(Walk(sheet, {u"Telnet", u">", u"h:web", u">"}), kLast);
                  Walk(sheet, {u"!"});
              }),
              VWizardSheet::kFinished);
    EXPECT_EQ(config->GetName(), u"web");
    VUnicodeString protocol;
    config->GetProtocolName(protocol);
    EXPECT_EQ(protocol, u"Telnet");
}

TEST_F(WizardTest, TheNameIsSuggestedFreeAndMustStand) {
    MakeSession(u"f\\web");
    const std::u16string tooLong(10000, u'h');
    const std::pair<std::u16string, const char16_t*> rows[] = {
        {u"web", u"web (1)"}, {u"", u"New"}, {u"2001:db8::1", u"2001_db8__1"}, {u"\\", u"_"}, {tooLong, u"New"},
    };
    for (const auto& row : rows) {
        config = VRef<SessionConfig>::Adopt(new SessionConfig(u"New", nullptr));
        config->SetPath(u"f");
        Run([&](HeadlessDialog& sheet) {
            EXPECT_EQ(Walk(sheet, {u"Telnet", u">", u"h:" + row.first, u">", u"None", u">"}), kLast);
            EXPECT_EQ(sheet.GetPage()->GetText(WizardIds::kName), row.second);
        });
    }
    panels.refusedNames.clear();
    EXPECT_EQ(Run([](HeadlessDialog& sheet) {
                  Walk(sheet, {u"Telnet", u">", u"h:x", u">", u"None", u">", u"n:"});
                  EXPECT_FALSE(sheet.Press(WizardIds::kFinish)) << "a name that is empty";
                  EXPECT_EQ(Walk(sheet, {u"n:web", u"!"}), kLast);
                  EXPECT_FALSE(sheet.IsClosed());
                  EXPECT_EQ(sheet.GetPage()->GetFocus(), WizardIds::kName);
                  EXPECT_EQ(Walk(sheet, {u"<"}), kTransfer) << "a refused name is no reason to stay";
                  EXPECT_EQ(Walk(sheet, {u">", u"n:  mine  "}), kLast);
                  sheet.GetPage()->Type(WizardIds::kDescription, u"two\nlines"_v);
                  Walk(sheet, {u"!"});
              }),
              VWizardSheet::kFinished);
    EXPECT_EQ(panels.refusedNames, std::vector{u"web"_v});
    EXPECT_EQ(config->GetName(), u"mine");
    EXPECT_EQ(config->description.Get().GetCount(), 2U);
}

TEST_F(WizardTest, WhoDeclinesFinishesAtOnce) {
    EXPECT_EQ(Run([](HeadlessDialog& sheet) {
                  ASSERT_FALSE(sheet.Press(WizardIds::kFinish));
                  sheet.GetPage()->Tick(WizardIds::kDeclineWizard, true);
                  EXPECT_FALSE(sheet.Press(WizardIds::kNext));
                  EXPECT_TRUE(sheet.Press(WizardIds::kFinish));
              }),
              VWizardSheet::kFinished);
    EXPECT_FALSE(usesWizard);
}

/// A sheet of an application's own.
class Sheet : public NewSessionWizardBase {
  public:
    Sheet() : NewSessionWizardBase(nullptr, static_cast<int>(AppKind::kNorHalden)) {}
    using NewSessionWizardBase::AddWizardPage;
    int GetFinishPageID() override { return kLast; }
    int GetTransferPageID() override { return kTransfer; }
    void SetButtons(unsigned, unsigned) override {}
    void AddPage(NewSessionWizardPage* page, int& id) override {
        ++pages;
        id = static_cast<int>(page->GetResourceID());
    }
    int pages = 0;
};

TEST_F(WizardTest, OneSshPageAndNoneWhereAPlugInHasNone) {
    panels.table.Clear();
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"ssh1.new"));
    for (const char16_t* name : {u"SSH1.new", u"SSH2"})
        panels.table.Add(MakePagedRow<kFakeSshPage>(AppKind::kNorHalden, name));
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"Pageless"));
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"TAPI"));
    panels.table[4].createPage = [](ISessionConfig*) -> NewSessionWizardPage* { throw 1; };
    Sheet sheet;
    for (std::size_t row = 0; row < 5; ++row) sheet.AddWizardPage(row);
    EXPECT_EQ(sheet.pages, 1);
    EXPECT_EQ(sheet.GetNextProtocolResourceID(u"SSH2"), kFakeSshPage.id);
    for (const char16_t* name : {u"Pageless", u"TAPI", u"unknown", u""})
        EXPECT_EQ(sheet.GetNextProtocolResourceID(name), kLast);
    EXPECT_NE(sheet.GetLastError().GetCode(), 0U);
}

TEST_F(WizardTest, APlugInThatFailsIsToldAndTheWizardGoesOn) {
    panels.table[0].createPage = [](ISessionConfig*) -> NewSessionWizardPage* { throw 1; };
    panels.table[4].createPage = [](ISessionConfig* session) -> NewSessionWizardPage* {
        return new BrokenPage<FakeWizardPage>(session, kFakeSftpPage);
    };
    Run([this](HeadlessDialog& sheet) {
        kit.ExpectBox(u"无法显示协议 SSH2 的设置页。"_v, kAnswerOk);
        EXPECT_EQ(Walk(sheet, {u"SSH2", u">"}), kLast);
        EXPECT_EQ(Walk(sheet, {u"<", u"Telnet", u">", u">"}), kTransfer);
        kit.ExpectBox(u"无法显示协议 SFTP 的设置页。"_v, kAnswerOk);
        EXPECT_EQ(Walk(sheet, {u"SFTP", u">"}), kTransfer);
        EXPECT_EQ(Walk(sheet, {u"<"}), kFakeTelnetPage.id);
    });
}

TEST_F(WizardTest, TheErrorOfTapisPageIsToldWhenTapiIsChosen) {
    panels.table.Clear();
    panels.table.Add(MakePagedRow<kFakeSshPage>(AppKind::kNorHalden, u"SSH2"));
    panels.table.Add(MakePagedRow<kFakeTelnetPage>(AppKind::kNorHalden, u"TAPI"));
    panels.table[1].createPage = [](ISessionConfig* session) {
        auto* page = new FakeWizardPage(session, kFakeTelnetPage);
        page->error.Fail(0x61090001, u"modem");
        return static_cast<NewSessionWizardPage*>(page);
    };
    Run([this](HeadlessDialog& sheet) {
        kit.ExpectBox(u"\"modem\" 未找到。"_v, kAnswerOk);
        EXPECT_TRUE(sheet.GetPage()->Pick(WizardIds::kProtocol, u"TAPI"_v));
        EXPECT_TRUE(sheet.GetPage()->Pick(WizardIds::kProtocol, u"SSH2"_v));
    });
    panels.table.Clear();
    EXPECT_EQ(Run([](HeadlessDialog& sheet) { EXPECT_EQ(Walk(sheet, {u">"}), kLast); }), kDialogCancelled)
        << "a table without rows";
}

}  // namespace
}  // namespace connectdialog::test
