// Records that are kept as one line of numbers, so that a person and an older version can read them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "profile/vprofile2.h"

namespace connectdialog {

/// The text in the store and, apart from it, the fields that a derived class reads from it. Whatever sets the text sets
/// the fields too; a field that is edited reaches the text at the next Save, and counts as a change only then.
/// Malformed text gives the fields their defaults.
class VProfileStateText : public VProfileText {
  public:
    using VProfileText::Load;

    /// Loads text and fields. An absent value takes `defaultText` and is missing. Always true.
    bool Load(VProfileKey* key, const VUnicodeString& defaultText);
    bool Load(VProfileKey* key, const VUnicodeString& name, const VUnicodeString& defaultText);

    bool Load(const char* text, IProfileTextDecoder& decoder, VReportMessageParams& report) override;
    void Save(VProfileKey& key, bool force) override;
    void Revert() override;
    void Assign(const VProfileData& other) override;
    bool SetVariant(const VVariant& in, VReportMessageParams& report) override;
    bool GetValue(IProfileValueExchange& exchange, const char16_t* name) override;

    /// The text of the fields as they stand.
    virtual std::u16string FormatFields() const = 0;

  protected:
    virtual void ParseFields(std::u16string_view text) = 0;
};

/// Appends a decimal number, behind a comma when something stands before it.
void AppendNumber(std::u16string& text, std::int64_t number);

/// Reads a decimal number at the start of `text`, with white space and a sign before it, and takes it off; what does
/// not fit becomes the nearest number that does. False when there is none; `text` and `number` stay then.
bool TakeNumber(std::u16string_view& text, std::int32_t& number);
bool TakeNumber(std::u16string_view& text, std::uint32_t& number);
/// Takes off a comma. False when there is none.
bool TakeComma(std::u16string_view& text);

}  // namespace connectdialog
