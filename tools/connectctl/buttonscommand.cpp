// buttons: the user's button bars.
#include "foundation/vstringarray.h"
#include "keymap/keynames.h"
#include "menutoolbar/profileuserbuttonmap.h"
#include "profile/vprofilekey.h"
#include "sessiondb/buttonbarupgrade.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/subcommands.h"

namespace connectdialog::connectctl {

namespace {

struct ButtonsArguments {
    std::string bar = "Default";
};

Failure List(const ButtonsArguments&) {
    VStringArray names;
    UpgradeButtonBars();
    EnumerateButtonBars(kButtonBarsKey, names);
    for (const VUnicodeString& name : names) PrintLine(Printable(name));
    return kDone;
}

/// The lines as they are stored: loading a bar drops those that are no buttons.
Failure ReadLines(const ButtonsArguments& arguments, VStringArray& lines) {
    VUnicodeString bar;
    if (Failure failure = DecodeArgument(arguments.bar, bar)) return failure;
    UpgradeButtonBars();
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), kButtonBarsKey, 0);
    return key.ReadMultiString(bar.GetData(), lines) ? Failure(kDone) : "there is no button bar " + Quoted(bar);
}

Failure Show(const ButtonsArguments& arguments) {
    VStringArray lines;
    if (Failure failure = ReadLines(arguments, lines)) return failure;
    for (const VUnicodeString& line : lines) {
        const UserButton button = DecodeButtonLine(line);
        if (button.function == UserButton::kNoFunction) continue;
        std::string text = Printable(GetKeyFunctionName(static_cast<std::uint32_t>(button.function)));
        if (button.function == UserButton::kUnknownFunction) text = "?";
        for (const VUnicodeString& field : {button.label, button.argument1, button.argument2, button.argument3})
            text += '\t' + Printable(field);
        PrintLine(text);
    }
    return kDone;
}

Failure Check(const ButtonsArguments& arguments) {
    VStringArray lines;
    if (Failure failure = ReadLines(arguments, lines)) return failure;
    std::size_t faults = 0;
    for (std::uint64_t i = 0; i < lines.GetCount(); ++i) {
        const UserButton button = DecodeButtonLine(lines[i]);
        if (button.function > UserButton::kNoFunction) continue;
        const char* const fault = button.function == UserButton::kUnknownFunction
                                      ? "its function is not known"
                                      : "it has no function, or another number of fields than 4 or 5";
        PrintLine(std::to_string(i + 1) + ": " + fault + ": " + Quoted(lines[i]));
        ++faults;
    }
    if (faults == 0) return kDone;
    return std::to_string(faults) + " of " + std::to_string(lines.GetCount()) + " lines are no working buttons";
}

void DeclareNothing(CLI::App&, ButtonsArguments&) {}
void DeclareBar(CLI::App& parser, ButtonsArguments& arguments) {
    parser.add_option("BAR", arguments.bar, "The button bar; \"Default\" when left out");
}

constexpr Subcommand<ButtonsArguments> kButtonsCommands[] = {
    {"ls", "List the button bars", DeclareNothing, List},
    {"show", "Print the buttons of a bar: function, label and arguments", DeclareBar, Show},
    {"check", "Tell which lines of a bar are no working buttons", DeclareBar, Check},
};

}  // namespace

CommandBody DeclareButtons(CLI::App& parser) {
    return DeclareSubcommands(parser, kButtonsCommands);
}

}  // namespace connectdialog::connectctl
