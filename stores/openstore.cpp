#include "stores/openstore.h"

#include <filesystem>
#include <string>
#include <string_view>

#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "stores/memory/memorystore.h"
#include "stores/sqlite/sqlitestore.h"

namespace connectdialog::stores {

namespace {

using Factory = std::unique_ptr<VProfileStoreFactory>;

Factory Refuse(std::u16string_view url, const char* cause, VReportMessageParams& report) {
    report.Fail(platform::kInvalidParameter, std::u16string(url).c_str());
    report.AddInsert(cause);
    return nullptr;
}

Factory OpenMemory(std::u16string_view rest, VReportMessageParams& report) {
    return rest.empty() ? MakeMemoryStoreFactory() : Refuse(rest, "memory: takes no path", report);
}

Factory OpenSqlite(std::u16string_view path, VReportMessageParams& report) {
    if (path.empty()) return Refuse(u"sqlite:", "the path is missing", report);
    return OpenSqliteStore(platform::ToNarrow(path), SqliteStoreOptions(), report);
}

struct Scheme {
    std::u16string_view name;
    Factory (*open)(std::u16string_view rest, VReportMessageParams& report);
};

constexpr Scheme kSchemes[] = {
    {u"memory:", OpenMemory},
    {u"sqlite:", OpenSqlite},
};

}  // namespace

std::unique_ptr<VProfileStoreFactory> OpenProfileStoreFactory(const VUnicodeString& url, VReportMessageParams& report) {
    report.Clear();
    const std::u16string_view text = url.View();
    for (const Scheme& scheme : kSchemes) {
        if (text.starts_with(scheme.name)) return scheme.open(text.substr(scheme.name.size()), report);
    }
    return Refuse(text, "a store is named as sqlite:PATH or memory:", report);
}

VUnicodeString GetAbsoluteStoreUrl(const VUnicodeString& url) {
    constexpr std::u16string_view kFile = u"sqlite:";
    if (!url.View().starts_with(kFile)) return url;
    std::error_code error;
    const std::filesystem::path path =
        std::filesystem::absolute(platform::ToNarrow(url.View().substr(kFile.size())), error);
    return error ? url : VUnicodeString(kFile) + VUnicodeString(platform::ToWide(path.string()));
}

}  // namespace connectdialog::stores
