// The trace file, for diagnostics.
//
// It is `<program>.trace.log` in the folder of the variable TEMP or, when that is not set, in the library's state
// folder: new at each run, UTF-16 little-endian, for the user alone. A file of another user or a link in its place is
// left alone, and so is the trace of another run that goes on: there is no trace then. Each line begins with the local
// time: "2024-02-29 23:59:58.007 : ".
#pragma once

#include <cstddef>

#include "foundation/formatargument.h"

namespace connectdialog {

/// Writes one line. Never fails its caller: what cannot be written is left out, and the last error stays as it was. May
/// be called from any thread. Never trace a secret.
void VTraceList(const char16_t* messageTemplate, const FormatArgument* arguments, std::size_t count) noexcept;

/// The same with a template and its inserts as VUnicodeString::Format takes them.
template <class... Arguments>
void VTrace(const char16_t* messageTemplate, const Arguments&... arguments) {
    const FormatArgument list[] = {FormatArgument(arguments)..., FormatArgument()};
    VTraceList(messageTemplate, list, sizeof...(Arguments));
}

}  // namespace connectdialog
