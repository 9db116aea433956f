// Opens a profile store, saves a value in a key and reads it back.
#include <cstdio>
#include <memory>

#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"
#include "stores/openstore.h"

namespace {

using connectdialog::VNarrowString;
using connectdialog::VProfileKey;
using connectdialog::VProfileStore;
using connectdialog::VReportMessageParams;
using connectdialog::VUnicodeString;

int Fail(VReportMessageParams& report) {
    std::fprintf(stderr, "embed: %s\n", VNarrowString(report.GetTextOneLine()).GetData());
    return 1;
}

// Keys close before the store they were opened from: hence the scope of its own for each.
bool SaveHost(VProfileStore& store, const char16_t* session, const char16_t* host) {
    VProfileKey key(store.GetRootKey(), session, 0);
    return key.WriteString(u"Host", host);
}

bool LoadHost(VProfileStore& store, const char16_t* session, VUnicodeString& host) {
    VProfileKey key(store.GetRootKey(), session, 0);
    return key.ReadString(u"Host", host);
}

}  // namespace

int main(int argc, char** argv) {
    VReportMessageParams report;
    const VUnicodeString url(argc > 1 ? argv[1] : "memory:");
    const auto factory = connectdialog::stores::OpenProfileStoreFactory(url, report);
    if (!factory) return Fail(report);

    VProfileStore writer(factory.get());
    // What was written becomes durable when the store closes, all of it or nothing.
    if (!SaveHost(writer, u"Sessions\\Work\\gate", u"gate.example.net") || !writer.Close())
        return Fail(*writer.GetLastReport());

    VProfileStore reader(factory.get());
    VUnicodeString host;
    if (!LoadHost(reader, u"Sessions\\Work\\gate", host)) return Fail(*reader.GetLastReport());
    std::printf("%s\n", VNarrowString(host).GetData());
    return 0;
}
