// Any bytes as a description of menus and toolbars: reading ends, its result and its reports agree, the tree is of
// bounded depth, and the operands of each line are those of VSplitCommaList.
#include <cstddef>
#include <cstdint>

#include "foundation/texttools.h"
#include "fuzz/memoryfile.h"
#include "fuzz/require.h"
#include "menutoolbar/menuline.h"
#include "menutoolbar/menureports.h"
#include "menutoolbar/standardcommands.h"
#include "menutoolbar/vcustommenutoolbar.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

/// The same by the library's own splitting, one string a token.
void CompareOperands(std::u16string_view text, const MenuLine& line) {
    VStringArray tokens;
    VSplitCommaList(text, tokens);
    Require(tokens.GetCount() == line.tokenCount, "the number of operands");
    bool isValid = true;
    for (std::uint64_t i = 0; i < tokens.GetCount(); ++i) {
        VUnicodeString token = tokens[i];
        token.TrimRight();
        token.TrimLeft();
        const bool isQuoted = token.View().starts_with(u'"');
        const bool isClosed = token.GetLength() > 1 && token.View().ends_with(u'"');
        if (isQuoted) isValid &= isClosed;
        if (isQuoted && isClosed) token = token.Mid(1, token.GetLength() - 2);
        if (i < MenuLine::kMostTokens) Require(line.Token(i) == token.View(), "an operand");
    }
    Require(isValid == line.isValid, "quotes pair");
}

void CheckLines(const VUnicodeString& name) {
    VTextFile file;
    VUnicodeString text;
    Require(file.Open(name, platform::kGenericRead, platform::kOpenExisting), "the file opens");
    while (file.ReadLine(text)) {
        const std::u16string_view prepared = PrepareMenuLine(text);
        if (prepared.empty()) continue;
        MenuLine line;
        ReadMenuLine(prepared, line);
        if (line.kind == MenuLineKind::kData) CompareOperands(prepared, line);
        if (line.kind == MenuLineKind::kMenuItem) CompareOperands(prepared.substr(8), line);
    }
}

class Walker : public IMenuToolbarBuilder {
  public:
    explicit Walker(const VCustomMenuToolbar& menus) : menus(menus) {}
    void AddItem(const VMenuToolbarItem& item) override {
        VMenuToolbarItem found;
        Require(menus.FindCommand(item.GetCommandId(), found), "an item is a command");
        Require(found.GetType() == item.GetType(), "of its own function");
    }
    void AddSeparator() override {}
    void BeginPopup(const VUnicodeString&) override {
        Require(++depth <= VMenuToolbarTextRep::kDeepestPopup, "depth is bounded");
    }
    void EndPopup() override { --depth; }

  private:
    const VCustomMenuToolbar& menus;
    int depth = 0;
};

void CheckReports(VMenuToolbarTextRep& rep, MenuParseResult result) {
    const bool isFailed = result == MenuParseResult::kFailed;
    Require(rep.GetError().GetCode() == 0 || isFailed, "an error fails");
    Require(!isFailed || rep.GetError().GetCode() != 0 || rep.GetStrayLine() != 0, "a failure has a reason");
    Require(result != MenuParseResult::kWarnings || !rep.GetWarnings().IsEmpty(), "warnings are there");
    std::uint64_t last = 1;
    for (VReportMessageParams& warning : rep.GetWarnings()) {
        Require(warning.GetUserData() >= last && warning.GetUserData() <= rep.GetLineCount(), "lines go up");
        last = warning.GetUserData();
        Require(std::u16string_view(warning.GetText()).size() > 1, "it has a text");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::MemoryFile memory;
    memory.Write({reinterpret_cast<const char*>(data), size});
    CheckLines(memory.Name());

    VCustomMenuToolbar menus;
    VMenuToolbarTextRep& rep = menus.GetRep();
    rep.SetCommandTable(&GetStandardMenuCommands());
    rep.SetFileName(memory.Name());
    CheckReports(rep, rep.Parse());
    for (const auto& menu : rep.GetMenus()) {
        menus.RegisterCommands(*menu);
        Walker walker(menus);
        BuildMenuToolbar(*menu, walker);
    }
    rep.Reset();
    return 0;
}
