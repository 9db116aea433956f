// buttons: the user's button bars.
#include <algorithm>
#include <charconv>
#include <span>
#include <vector>

#include "foundation/vstringarray.h"
#include "keymap/keynames.h"
#include "platform/codepage.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "sessiondb/buttonbarupgrade.h"
#include "sessiondb/userbuttonbar.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/subcommands.h"

namespace connectdialog::connectctl {

namespace {

struct ButtonsArguments {
    std::string bar = "Default";
    std::string action;
    std::vector<std::string> words;
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
        const VUnicodeString function = GetFunctionName(button);
        std::string text = function.IsEmpty() ? "?" : Printable(function);
        for (const VUnicodeString& field : {button.label, button.argument1, button.argument2, button.argument3})
            text += '\t' + Printable(field);
        PrintLine(text);
    }
    return kDone;
}

/// What is wrong with a button that does not work.
struct FaultRow {
    ButtonFault fault;
    const char* text;
};
constexpr FaultRow kFaults[] = {
    {ButtonFault::kNoFunction, "its function is not known, or does nothing"},
    {ButtonFault::kNoText, "it has no text"},
    {ButtonFault::kNoArgument, "SEND, RUN and LAUNCH need an argument"},
    {ButtonFault::kControl, "a text holds a control character"},
    {ButtonFault::kTooManyLines, "its text has more than two lines"},
    {ButtonFault::kTooLong, "a text is too long"},
};
/// Null for a button that works.
const char* FaultOf(const UserButton& button) {
    const auto* row = std::ranges::find(kFaults, FindButtonFault(button), &FaultRow::fault);
    return row != std::end(kFaults) ? row->text : nullptr;
}

Failure Check(const ButtonsArguments& arguments) {
    VStringArray lines;
    if (Failure failure = ReadLines(arguments, lines)) return failure;
    std::size_t faults = 0;
    for (std::uint64_t i = 0; i < lines.GetCount(); ++i) {
        const UserButton button = DecodeButtonLine(lines[i]);
        const char* const fault = button.function == UserButton::kNoFunction
                                      ? "it has no function, or another number of fields than 4 or 5"
                                      : FaultOf(button);
        if (fault == nullptr) continue;
        PrintLine(std::to_string(i + 1) + ": " + fault + ": " + Quoted(lines[i]));
        ++faults;
    }
    if (faults == 0) return kDone;
    return std::to_string(faults) + " of " + std::to_string(lines.GetCount()) + " lines are no working buttons";
}

/// A place, from 1 on. `count` places are there.
Failure ReadPlace(const std::string& word, std::size_t count, std::size_t& place) {
    const char* const end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, place);
    if (error == std::errc() && rest == end && place >= 1 && place <= count) {
        --place;
        return kDone;
    }
    if (count == 0) return "the button bar is empty";
    return Quoted(platform::ToWide(word)) + " is no place: a number from 1 to " + std::to_string(count) + " is needed";
}

/// FUNCTION TEXT [ARGUMENT1 [ARGUMENT2 [ARGUMENT3]]]
Failure ReadButton(std::span<const std::string> words, UserButton& button) {
    VUnicodeString texts[5];
    for (std::size_t i = 0; i < words.size(); ++i)
        if (Failure failure = DecodeArgument(words[i], texts[i])) return failure;
    button.function = GetKeyFunctionID(texts[0]);
    texts[1].Replace(u"\\n", u"\n");
    SetButtonText(button, texts[1]);
    button.argument1 = texts[2];
    button.argument2 = texts[3];
    button.argument3 = texts[4];
    const char* const fault = FaultOf(button);
    return fault == nullptr ? Failure(kDone) : std::string("the button cannot be saved: ") + fault;
}

template <bool isNew>
Failure PutButton(UserButtonBar& bar, std::span<const std::string> words) {
    std::size_t place = 0;
    UserButton button;
    if (Failure failure = ReadPlace(words[0], bar.GetCount() + (isNew ? 1 : 0), place)) return failure;
    if (Failure failure = ReadButton(words.subspan(1), button)) return failure;
    isNew ? bar.Insert(place, button) : bar.Set(place, button);
    return kDone;
}

Failure RemoveButton(UserButtonBar& bar, std::span<const std::string> words) {
    std::size_t place = 0;
    if (Failure failure = ReadPlace(words[0], bar.GetCount(), place)) return failure;
    bar.Remove(place);
    return kDone;
}

Failure MoveButton(UserButtonBar& bar, std::span<const std::string> words) {
    std::size_t from = 0;
    std::size_t to = 0;
    if (Failure failure = ReadPlace(words[0], bar.GetCount(), from)) return failure;
    if (Failure failure = ReadPlace(words[1], bar.GetCount(), to)) return failure;
    bar.Move(from, to);
    return kDone;
}

struct EditRow {
    const char* action;
    const char* usage;
    std::size_t fewestWords;
    std::size_t mostWords;
    Failure (*edit)(UserButtonBar& bar, std::span<const std::string> words);
    bool makesBar;
};
constexpr EditRow kEdits[] = {
    {"add", "add PLACE FUNCTION TEXT [ARGUMENT ...]", 3, 6, PutButton<true>, true},
    {"set", "set PLACE FUNCTION TEXT [ARGUMENT ...]", 3, 6, PutButton<false>, false},
    {"remove", "remove PLACE", 1, 1, RemoveButton, false},
    {"move", "move PLACE PLACE", 2, 2, MoveButton, false},
};

Failure EditBar(const EditRow& row, const VUnicodeString& name, std::span<const std::string> words) {
    UserButtonBar bar;
    if (!bar.Load(name)) return "the button bar " + Quoted(name) + " cannot be read";
    if (!bar.IsThere() && !row.makesBar) return "there is no button bar " + Quoted(name);
    if (Failure failure = row.edit(bar, words)) return failure;
    return bar.Save() ? Failure(kDone) : "the button bar " + Quoted(name) + " cannot be saved";
}

Failure Edit(const ButtonsArguments& arguments) {
    const auto* row =
        std::ranges::find(kEdits, arguments.action, [](const EditRow& edit) { return std::string(edit.action); });
    if (row == std::end(kEdits)) return "there is no action " + Quoted(platform::ToWide(arguments.action));
    if (arguments.words.size() < row->fewestWords || arguments.words.size() > row->mostWords)
        return std::string("wanted: buttons edit BAR ") + row->usage;
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.bar, name)) return failure;
    if (name.IsEmpty()) return "a button bar needs a name";
    UpgradeButtonBars();  // before the unit, which drops all that was written in it when the edit is at fault
    Failure failure;
    const bool isSaved = AsOneUnit([&] {
        failure = EditBar(*row, name, arguments.words);
        return !failure;
    });
    return failure || isSaved ? failure : "the button bar " + Quoted(name) + " cannot be saved";
}

void DeclareEdit(CLI::App& parser, ButtonsArguments& arguments) {
    parser.add_option("BAR", arguments.bar, "The button bar")->required();
    parser.add_option("ACTION", arguments.action, "add, set, remove or move")->required();
    parser.add_option(
        "WORDS", arguments.words,
        "PLACE, from 1 on; for add and set then FUNCTION TEXT [ARGUMENT ...], where \\n in TEXT begins a second "
        "line; for move the new PLACE");
}

void DeclareNothing(CLI::App&, ButtonsArguments&) {}
void DeclareBar(CLI::App& parser, ButtonsArguments& arguments) {
    parser.add_option("BAR", arguments.bar, "The button bar; \"Default\" when left out");
}

constexpr Subcommand<ButtonsArguments> kButtonsCommands[] = {
    {"ls", "List the button bars", DeclareNothing, List},
    {"show", "Print the buttons of a bar: function, label and arguments", DeclareBar, Show},
    {"edit", "Change a bar: add, set, remove or move a button", DeclareEdit, Edit},
    {"check", "Tell which lines of a bar are no working buttons", DeclareBar, Check},
};

}  // namespace

CommandBody DeclareButtons(CLI::App& parser) {
    return DeclareSubcommands(parser, kButtonsCommands);
}

}  // namespace connectdialog::connectctl
