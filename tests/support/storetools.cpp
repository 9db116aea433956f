#include "support/storetools.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>

#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"

namespace connectdialog::test {

namespace {

std::string DescribeValue(VProfileKey& key, const char16_t* name) {
    if (std::uint32_t number = 0; key.ReadDword(name, number)) return std::to_string(number);
    if (VUnicodeString text; key.ReadString(name, text)) return '"' + Escape(text) + '"';
    if (std::uint32_t size = 0; key.ReadBinary(name, nullptr, size)) {
        std::string bytes(size, '\0');
        return key.ReadBinary(name, bytes.data(), size) ? "<" + Escape(std::u16string(bytes.begin(), bytes.end())) + ">"
                                                        : "?";
    }
    VStringArray strings;
    if (!key.ReadMultiString(name, strings)) return "";
    std::string list = "[";
    for (const VUnicodeString& text : strings) list += '"' + Escape(text) + "\",";
    return list + "]";
}

void DumpKey(VProfileKey& key, const ValueNames& names, const std::string& indent, std::string& dump) {
    for (const std::u16string& name : names) {
        const std::string value = DescribeValue(key, name.c_str());
        if (!value.empty()) dump.append(indent).append(".").append(Escape(name)).append("=").append(value).append("\n");
    }
    VProfileKeyIterator children(key, false);
    VUnicodeString name;
    for (std::uint32_t kind = 0; children.NextWithKind(name, kind);) {
        dump += indent + Escape(name) + " " + std::to_string(kind) + "\n";
        VProfileKey child(&key, name.GetData(), 0);
        DumpKey(child, names, indent + "  ", dump);
    }
}

}  // namespace

std::string Escape(std::u16string_view text) {
    std::string escaped;
    for (const char16_t unit : text) {
        if (unit > u' ' && unit < 0x7F) {
            escaped.push_back(static_cast<char>(unit));
        } else {
            std::array<char, 8> code{};
            std::snprintf(code.data(), code.size(), "{%X}", unsigned{unit});
            escaped += code.data();
        }
    }
    return escaped;
}

std::string DumpStore(VProfileStoreFactory& factory, const ValueNames& names) {
    VProfileStore store(&factory);
    std::string dump;
    DumpKey(*store.GetRootKey(), names, "", dump);
    return dump;
}

std::uint32_t CodeOf(VProfileKey& key) {
    return key.GetImpl()->GetLastReport()->GetCode();
}

void WithKey(const char16_t* path, const std::function<void(VProfileKey&)>& use) {
    VProfileStore store(nullptr);
    {
        VProfileKey key(store.GetRootKey(), path, 0);
        use(key);
    }
    ASSERT_TRUE(store.Close());
}

bool WriteDwords(VProfileStoreFactory& factory, const char16_t* path, std::initializer_list<const char16_t*> names,
                 std::uint32_t value) {
    VProfileStore store(&factory);
    bool written = true;
    {
        VProfileKey key(store.GetRootKey(), path, 0);
        for (const char16_t* name : names) written = key.WriteDword(name, value) && written;
    }
    return store.Close() && written;
}

std::uint32_t ReadDwordOr(VProfileStoreFactory& factory, const char16_t* path, const char16_t* name,
                          std::uint32_t absent) {
    VProfileStore store(&factory);
    VProfileKey key(store.GetRootKey(), path, 0);
    std::uint32_t value = absent;
    key.ReadDword(name, value);
    return value;
}

VUnicodeString StoredText(VProfileKey& key) {
    VUnicodeString text = u"(absent)";
    key.ReadString(u"V", text);
    return text;
}

}  // namespace connectdialog::test
