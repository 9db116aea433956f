// menu: descriptions of menus and toolbars.
#include <CLI/CLI.hpp>
#include <filesystem>

#include "foundation/vpath.h"
#include "menutoolbar/standardcommands.h"
#include "menutoolbar/vmenutoolbartextrep.h"
#include "platform/codepage.h"
#include "platform/paths.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/subcommands.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

struct MenuArguments {
    std::string file;
};

/// A description with what is wrong in it.
struct ParsedMenus {
    VMenuToolbarTextRep rep;
    MenuParseResult result = MenuParseResult::kFailed;
    VArray<VReportMessageParams> reports;  ///< the error comes last
};

/// From the root on: the folder above it is told from its name alone.
VUnicodeString FolderOf(const VUnicodeString& file) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(platform::ToNativePath(file), error);
    return VUnicodeString(platform::FromNativePath(path.lexically_normal().parent_path().string()));
}

Failure Parse(const MenuArguments& arguments, ParsedMenus& parsed) {
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.file, name)) return failure;
    parsed.rep.SetCommandTable(&GetStandardMenuCommands());
    parsed.rep.SetFileName(name);
    VSetDotPathBase(FolderOf(name));
    parsed.result = parsed.rep.Parse();
    parsed.reports = parsed.rep.GetWarnings();
    if (parsed.rep.GetError().GetCode() != 0) parsed.reports.Add(parsed.rep.GetError());
    return kDone;
}

/// With the parser's result as exit code.
Failure ResultFailure(const ParsedMenus& parsed) {
    const std::string name = Quoted(parsed.rep.GetFileName());
    const std::uint64_t count = parsed.reports.GetCount();
    Failure failure;
    if (parsed.result == MenuParseResult::kWarnings)
        failure = name + " has " + (count == 1 ? "a warning" : std::to_string(count) + " warnings");
    if (parsed.result == MenuParseResult::kFailed) failure = name + " cannot be used";
    // Such a line has no report.
    if (parsed.rep.GetStrayLine() != 0 && failure)
        *failure += "; line " + std::to_string(parsed.rep.GetStrayLine()) + " stands outside all blocks";
    failure.exitCode = static_cast<int>(parsed.result);
    return failure;
}

/// Code, line and text with tabs between them. What concerns the file as a whole has the line 0.
void PrintReport(VReportMessageParams& report) {
    VUnicodeString place;
    place.Format(u"0x%1!08X!\t%2!u!\t", report.GetCode(), static_cast<std::uint32_t>(report.GetUserData()));
    PrintLine(platform::ToNarrow(place) + Printable(platform::ToWide(ReportText(report))));
}

Failure Check(const MenuArguments& arguments) {
    ParsedMenus parsed;
    if (Failure failure = Parse(arguments, parsed)) return failure;
    for (VReportMessageParams& report : parsed.reports) PrintReport(report);
    if (Failure failure = ResultFailure(parsed)) return failure;
    PrintLine("menus and toolbars: " + std::to_string(parsed.rep.GetMenus().size()));
    return kDone;
}

/// A text in quotes: whole, while Quoted cuts.
std::string InQuotes(std::u16string_view text) {
    return '"' + Printable(text) + '"';
}

std::string DescribeAccelerator(const VMenuAccelerator& accelerator) {
    std::string text = (accelerator.flags & VMenuAccelerator::kControl) != 0 ? "Ctrl+" : "";
    if ((accelerator.flags & VMenuAccelerator::kAlt) != 0) text += "Alt+";
    if ((accelerator.flags & VMenuAccelerator::kShift) != 0) text += "Shift+";
    const char16_t key = accelerator.key;
    return text + Printable({&key, 1});
}

/// Prints the entries of a block, one a line, indented by their depth.
class TreePrinter : public IMenuToolbarBuilder {
  public:
    void AddItem(const VMenuToolbarItem& item) override {
        const VUnicodeString text = TextOf(item, &VMenuToolbarItem::GetText);
        std::string line = "item " + Printable(TextOf(item, &VMenuToolbarItem::GetFunctionName));
        line += ' ' + std::to_string(item.GetCommandId());
        AddText(line, "label", text.View().substr(0, text.View().find(u'\t')));
        AddText(line, "argument", TextOf(item, &VMenuToolbarItem::GetArgument));
        if (item.GetBitmapIndex() >= 0) line += ", image " + std::to_string(item.GetBitmapIndex());
        if (item.GetBitmap() != nullptr) line += ", image from a file";
        AddText(line, "prompt", TextOf(item, &VMenuToolbarItem::GetPrompt));
        AddText(line, "tip", TextOf(item, &VMenuToolbarItem::GetToolTip));
        if (item.GetAccelerator() != VMenuAccelerator()) line += ", key " + DescribeAccelerator(item.GetAccelerator());
        Line(line);
    }
    void AddSeparator() override { Line("separator"); }
    void BeginPopup(const VUnicodeString& label) override {
        Line("popup " + InQuotes(label));
        ++depth;
    }
    void EndPopup() override { --depth; }

  private:
    static VUnicodeString TextOf(const VMenuToolbarItem& item,
                                 void (VMenuToolbarItem::*getter)(VUnicodeString&) const) {
        VUnicodeString text;
        (item.*getter)(text);
        return text;
    }
    static void AddText(std::string& line, const char* name, std::u16string_view text) {
        if (!text.empty()) line.append(", ").append(name).append(" ").append(InQuotes(text));
    }
    void Line(const std::string& line) const { PrintLine(std::string(depth * 2, ' ') + line); }

    std::size_t depth = 1;
};

const char* KindName(MenuBlockKind kind) {
    if (kind == MenuBlockKind::kToolbar) return "toolbar ";
    return kind == MenuBlockKind::kMenu ? "menu " : "popup ";
}

Failure Show(const MenuArguments& arguments) {
    ParsedMenus parsed;
    if (Failure failure = Parse(arguments, parsed)) return failure;
    for (VReportMessageParams& report : parsed.reports) PrintNotice(ReportText(report));
    if (parsed.result == MenuParseResult::kFailed) return ResultFailure(parsed);
    for (const MenuEntryPtr<VMenuToolbar>& menu : parsed.rep.GetMenus()) {
        VUnicodeString name;
        menu->GetText(name);
        PrintLine(KindName(menu->GetKind()) + InQuotes(name));
        TreePrinter printer;
        BuildMenuToolbar(*menu, printer);
    }
    if (!parsed.rep.GetFont().IsEmpty()) PrintLine("font " + InQuotes(parsed.rep.GetFont()));
    return kDone;
}

void AddFile(CLI::App& parser, MenuArguments& arguments) {
    parser.add_option("FILE", arguments.file, "A description of menus and toolbars")->required();
}

constexpr Subcommand<MenuArguments> kMenuCommands[] = {
    {"check", "Tell what is wrong in a description: code, line and text; ends with 1 for errors, 2 for warnings",
     AddFile, Check},
    {"show", "Print the menus and toolbars of a description as trees", AddFile, Show},
};

}  // namespace

CommandBody DeclareMenu(CLI::App& parser) {
    return DeclareSubcommands(parser, kMenuCommands);
}

}  // namespace connectdialog::connectctl
