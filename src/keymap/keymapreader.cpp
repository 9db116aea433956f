#include "keymap/keymapreader.h"

#include <algorithm>
#include <iterator>

#include "foundation/casefold.h"
#include "keymap/keynames.h"

namespace connectdialog {

namespace {

constexpr std::u16string_view kBlanks = u" \t";
constexpr std::size_t kMostErrorText = 65536;
/// Of a word in an error.
constexpr std::size_t kLongestWord = 256;

std::u16string_view WithoutLeadingBlanks(std::u16string_view text) {
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

/// Takes the next word and the blank behind it from the start of the line.
std::u16string_view TakeWord(std::u16string_view& line) {
    line = WithoutLeadingBlanks(line);
    const std::u16string_view word = line.substr(0, line.find_first_of(kBlanks));
    line.remove_prefix(std::min(word.size() + 1, line.size()));
    return word;
}

std::u16string ToUpperCase(std::u16string_view text) {
    std::u16string upper(text);
    std::ranges::transform(upper, upper.begin(), ToUpper);
    return upper;
}

}  // namespace

template <class... Arguments>
void KeymapReader::AddError(const char16_t* messageTemplate, const Arguments&... arguments) {
    ++errorCount;
    if (errorText.size() >= kMostErrorText) return;
    VUnicodeString text;
    text.Format(messageTemplate, arguments...);
    if (!errorText.empty()) errorText += u'\n';
    errorText += text.View();
}

void KeymapReader::ReadLine(std::u16string_view line) {
    if (!WantsMore()) return;
    ++lineNumber;
    if (line.starts_with(u';'))
        hasComments = true;
    else if (!line.empty())
        ReadBinding(line);
}

void KeymapReader::ReadBinding(std::u16string_view line) {
    isTooLong = bindingCount == kMostBindings;
    if (isTooLong) return;
    ++bindingCount;
    const std::u16string_view modifiers = TakeWord(line);
    const std::u16string key = ToUpperCase(TakeWord(line));
    const std::u16string_view action = line.substr(0, line.find(u'\n'));
    if (modifiers.empty() || key.empty() || action.empty()) return AddSyntaxError();
    const std::int32_t code = GetKeyCode(key);
    if (code == kUnknownKeyName) {
        const std::u16string_view shown = std::u16string_view(key).substr(0, kLongestWord);
        return AddError(u"unknown virtual key '%1' on line %2!d!", shown, lineNumber);
    }
    BindAction(static_cast<std::uint32_t>(code) | ReadModifiers(modifiers), action);
}

/// Each letter counts once; what is left over is wrong.
std::uint32_t KeymapReader::ReadModifiers(std::u16string_view letters) {
    std::uint32_t bits = 0;
    bool isNone = false;
    for (const char16_t letter : ToUpperCase(letters)) {
        const auto* modifier = std::ranges::find(kKeyModifiers, letter, &KeyModifier::letter);
        if (letter == u'N' && !isNone)
            isNone = true;
        else if (modifier != std::end(kKeyModifiers) && (bits & modifier->bit) == 0)
            bits |= modifier->bit;
        else
            AddError(u"unknown modifier '%1!c!' on line %2!d!", letter, lineNumber);
    }
    return bits;
}

void KeymapReader::BindAction(std::uint32_t key, std::u16string_view action) {
    action = WithoutLeadingBlanks(action);
    if (action.starts_with(u'"'))
        BindText(key, action);
    else if (action.starts_with(u"RUN"))
        BindProgram(key, kKeyFunctionRun, action);
    else if (action.starts_with(u"LAUNCH"))
        BindProgram(key, kKeyFunctionLaunch, action);
    else
        BindFunction(key, action);
}

void KeymapReader::BindText(std::uint32_t key, std::u16string_view action) {
    const std::size_t lastQuote = action.rfind(u'"');
    if (lastQuote == 0) AddError(u"expected closing quote on line %1!d!", lineNumber);
    const std::u16string_view text = lastQuote == 0 ? std::u16string_view() : action.substr(1, lastQuote - 1);
    keymap.SetEntry(key, {kKeyFunctionSend, text, {}});
}

void KeymapReader::BindProgram(std::uint32_t key, std::uint32_t function, std::u16string_view action) {
    std::size_t position = 0;
    std::u16string_view program;
    std::u16string_view arguments;
    if (!ReadQuotedPart(action, position, false, program)) return;
    ++position;  // behind the closing quote, which must not be found again
    if (function == kKeyFunctionRun && !ReadQuotedPart(action, position, true, arguments)) return;
    keymap.SetEntry(key, {function, program, arguments});
}

void KeymapReader::BindFunction(std::uint32_t key, std::u16string_view action) {
    const std::u16string_view name = action.substr(0, action.find_first_of(kBlanks));
    const std::int32_t function = GetKeyFunctionID(name);
    if (function <= static_cast<std::int32_t>(kKeyFunctionSend)) {
        return AddError(u"illegal string or unknown function, '%1', on line %2!d!", name.substr(0, kLongestWord),
                        lineNumber);
    }
    keymap.SetEntry(key, {static_cast<std::uint32_t>(function), {}, {}});
}

/// The text between `("` and `")` from `position` on, which moves to the closing mark.
bool KeymapReader::ReadQuotedPart(std::u16string_view action, std::size_t& position, bool isOptional,
                                  std::u16string_view& part) {
    const std::size_t opening = action.find(u"(\"", position);
    const std::size_t closing = action.find(u"\")", position);
    if (isOptional && opening == action.npos && closing == action.npos) return true;
    if (opening == action.npos || closing == action.npos || closing < opening + 2) {
        AddSyntaxError();
        return false;
    }
    part = action.substr(opening + 2, closing - opening - 2);
    position = closing;
    return true;
}

}  // namespace connectdialog
