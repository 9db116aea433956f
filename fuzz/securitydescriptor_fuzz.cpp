// Any bytes as a security descriptor and as an access control list: what is read comes back byte for byte, and what is
// put together anew from it reads the same.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/vsecuritydescriptor.h"
#include "fuzz/require.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

using Bytes = std::span<const std::uint8_t>;

bool AreSame(const VSid& a, const VSid& b) {
    return std::ranges::equal(a.GetBytes(), b.GetBytes());
}

bool AreSame(const VAcl* a, const VAcl* b) {
    if (a == nullptr || b == nullptr) return a == b;
    return std::ranges::equal(a->GetBytes(), b->GetBytes());
}

void TryDescriptor(Bytes bytes) {
    VSecurityDescriptor read;
    if (!read.LoadSelfRelative(bytes)) return;
    Require(std::ranges::equal(read.MakeSelfRelative(), bytes), "the bytes come back");
    VSecurityDescriptor absolute(read);
    absolute.MakeAbsolute();
    VSecurityDescriptor again;
    Require(again.LoadSelfRelative(absolute.MakeSelfRelative()), "what was put together anew is valid");
    Require(AreSame(again.GetOwner(), read.GetOwner()) && AreSame(again.GetGroup(), read.GetGroup()),
            "the accounts stay");
    Require(again.HasDacl() == read.HasDacl() && AreSame(again.GetDacl(), read.GetDacl()), "the list stays");
    Require(again.MakeSelfRelative() == absolute.MakeSelfRelative(), "putting together anew comes to rest");
}

void TryList(Bytes bytes) {
    VAcl list;
    if (!list.Load(bytes)) return;
    const std::size_t count = list.GetCount();
    const std::uint32_t subAuthorities[] = {1};
    VAclEntry entry;
    for (std::size_t i = 0; i < count; ++i) {
        Require(list.GetEntry(i, entry), "each entry is there");
        VSid sid;
        if (!entry.sid.GetBytes().empty() && entry.sid.GetLength() > VSid::kHeaderLength) {
            Require(sid.LoadText(entry.sid.ToText()) && sid == entry.sid, "an identifier comes back from its text");
        }
    }
    if (list.AddEntry(AccessKind::kDeny, 7, VSid(1, subAuthorities))) {
        Require(list.GetEntry(count, entry) && entry.mask == 7, "the new entry is the last one");
        Require(list.ExtendEntry(count, 8) && VAcl().Load(list.GetBytes()), "the list stays valid");
    }
    while (list.GetCount() > 0) Require(list.RemoveEntry(list.GetCount() / 2), "each entry can be removed");
    Require(VAcl().Load(list.GetBytes()), "an emptied list is valid");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TryDescriptor({data, size});
    TryList({data, size});
    return 0;
}
