// Reads the lines of a keymap.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "keymap/keymap.h"

namespace connectdialog {

/// Binds in a keymap what its lines say (see keymap.h for their form), one line after the other, and collects what is
/// wrong with them. It takes untrusted text: time and memory grow with the text and no faster.
class KeymapReader {
  public:
    static constexpr int kMostErrors = 3;
    /// More than all keys that have a name, with all modifiers. Keys by number could otherwise make one chain of the
    /// map as long as the text.
    static constexpr int kMostBindings = 16384;

    /// Requires: `keymap` outlives the reader.
    explicit KeymapReader(Keymap& keymap) : keymap(keymap) {}

    /// Reads the next line, which has no line end. After the last one that it wants, it does nothing.
    void ReadLine(std::u16string_view line);
    /// False after the third error, and when there was a binding too many.
    bool WantsMore() const { return errorCount < kMostErrors && !isTooLong; }

    /// A line may have several errors.
    int GetErrorCount() const { return errorCount; }
    /// A line of text for each error, with line feeds between them. Cut short when that becomes very long.
    const std::u16string& GetErrorText() const { return errorText; }
    bool HasComments() const { return hasComments; }
    bool IsTooLong() const { return isTooLong; }

  private:
    void ReadBinding(std::u16string_view line);
    std::uint32_t ReadModifiers(std::u16string_view letters);
    void BindAction(std::uint32_t key, std::u16string_view action);
    void BindText(std::uint32_t key, std::u16string_view action);
    void BindProgram(std::uint32_t key, std::uint32_t function, std::u16string_view action);
    void BindFunction(std::uint32_t key, std::u16string_view action);
    bool ReadQuotedPart(std::u16string_view action, std::size_t& position, bool isOptional, std::u16string_view& part);
    template <class... Arguments>
    void AddError(const char16_t* messageTemplate, const Arguments&... arguments);
    void AddSyntaxError() { AddError(u"syntax error on line %1!d!", lineNumber); }

    Keymap& keymap;
    int lineNumber = 0;
    int bindingCount = 0;
    int errorCount = 0;
    std::u16string errorText;
    bool hasComments = false;
    bool isTooLong = false;
};

}  // namespace connectdialog
