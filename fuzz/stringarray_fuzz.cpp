// Any bytes as the binary form of an array of strings: what is read is written so that it reads the same.
#include <cstddef>
#include <cstdint>

#include "foundation/vbasicbuffer.h"
#include "foundation/vstringarray.h"
#include "fuzz/require.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

VRef<VBasicBuffer> MakeBuffer() {
    return VRef<VBasicBuffer>::Adopt(new VBasicBuffer(0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const VRef<VBasicBuffer> buffer = MakeBuffer();
    buffer->Append(data, size, 0);
    VStringArray strings;
    strings.Add(u"before");
    if (!strings.ReadFrom(buffer.Get())) {
        Require(strings.IsEmpty(), "a failure leaves an empty array");
        return 0;
    }
    std::uint64_t bytes = 4;
    for (const VUnicodeString& text : strings) bytes += 4 + 2 * text.GetLength();
    Require(bytes <= size, "nothing is read from behind the buffer");
    const VRef<VBasicBuffer> written = MakeBuffer();
    Require(strings.WriteTo(written.Get()) && written->GetDataLength() == bytes, "what was read can be written");
    VStringArray again;
    Require(again.ReadFrom(written.Get()) && again == strings, "what was written reads the same");
    return 0;
}
