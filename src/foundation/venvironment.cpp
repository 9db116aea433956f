#include "foundation/venvironment.h"

#include <string>

#include "platform/environment.h"

namespace connectdialog {

namespace {

constexpr char16_t kDataPathVariable[] = u"U3_APP_DATA_PATH";
constexpr char16_t kDocumentPathVariable[] = u"U3_DEVICE_DOCUMENT_PATH";
/// The buffer that templates are expanded into has room for these and a terminator.
constexpr std::size_t kTemplateLimit = 511;

void ReplaceToken(VUnicodeString& text, const char16_t* token, const char16_t* variable) {
    VUnicodeString value;
    if (VGetEnvironment(variable, value)) text.Replace(token, value.GetData());
}

}  // namespace

bool VGetEnvironment(const char16_t* name, VUnicodeString& value) {
    std::u16string found;
    if (name == nullptr || !platform::GetEnvironmentText(name, found)) return false;
    value = found;
    return true;
}

VUnicodeString VExpandVariables(std::u16string_view text, std::size_t limit) {
    std::u16string expanded;
    while (!text.empty() && expanded.size() < limit) {
        std::u16string value;
        const std::size_t closing = text[0] == u'%' ? text.find(u'%', 1) : text.npos;
        if (closing != text.npos && platform::GetEnvironmentText(text.substr(1, closing - 1), value)) {
            expanded += value;
            text.remove_prefix(closing + 1);
        } else {
            const std::size_t plain = text.find(u'%', 1);
            expanded += text.substr(0, plain);
            text.remove_prefix(plain == text.npos ? text.size() : plain);
        }
    }
    return VUnicodeString(std::u16string_view(expanded).substr(0, limit));
}

VUnicodeString VExpandEnvironment(const VUnicodeString& text) {
    return VExpandVariables(text.GetData(), kTemplateLimit);
}

bool VIsPortableInstall() {
    VUnicodeString value;
    return VGetEnvironment(kDataPathVariable, value);
}

VUnicodeString VExpandPortableTokens(const VUnicodeString& text) {
    VUnicodeString expanded(text);
    ReplaceToken(expanded, u"%u3data%", kDataPathVariable);
    ReplaceToken(expanded, u"%u3doc%", kDocumentPathVariable);
    return expanded;
}

}  // namespace connectdialog
