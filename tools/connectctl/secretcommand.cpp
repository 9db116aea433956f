// secret: texts in the form in which the store keeps what only this user may read.
#include <CLI/CLI.hpp>
#include <array>
#include <cstdio>
#include <memory>

#include "foundation/vnarrowstring.h"
#include "platform/codepage.h"
#include "profile/vprofilecapistring.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

constexpr std::size_t kMostBytes = 1 << 20;

/// All of standard input, byte for byte.
Failure ReadInput(VNarrowString& text) {
    text.MarkSensitive();
    text.SetLength(kMostBytes + 1);
    // Without a buffer of its own: nobody would wipe it.
    std::setvbuf(stdin, nullptr, _IONBF, 0);
    const std::size_t size = std::fread(text.MutableData(), 1, kMostBytes + 1, stdin);
    if (std::ferror(stdin) != 0) return "standard input cannot be read";
    if (size > kMostBytes) return "standard input holds more than " + std::to_string(kMostBytes) + " bytes";
    text.SetLength(size);
    if (text.View().find('\0') != std::string_view::npos) return "standard input is no text: it holds a zero";
    return kDone;
}

Failure FailureOf(VReportMessageParams& report) {
    std::string text = "standard input is ";
    if (report.GetCode() == kReportOddDigits) return text + "no protected text: a digit is missing";
    text += report.GetCode() == kReportNotProtected ? "not protected: " : "not unprotected: ";
    return text + platform::ToNarrow(report.GetInserts()[1]);
}

Failure Protect() {
    VNarrowString input;
    if (Failure failure = ReadInput(input)) return failure;
    const VUnicodeString text(input);
    if (VNarrowString(text) != input) return "standard input is not UTF-8";
    VProfileCapiString value;
    const VUnicodeString stored = value.Protect(text);
    if (value.GetLastReport()->GetCode() != 0) return FailureOf(*value.GetLastReport());
    Print(VNarrowString(stored).View());
    return kDone;
}

Failure Unprotect() {
    VNarrowString input;
    if (Failure failure = ReadInput(input)) return failure;
    // The line break that a file or an echo ends with.
    std::size_t length = input.GetLength();
    while (length > 0 && (input[length - 1] == '\n' || input[length - 1] == '\r')) --length;
    input.SetLength(length);
    VProfileCapiString value;
    VUnicodeString text = value.Unprotect(VUnicodeString(input));
    text.MarkSensitive();
    if (value.GetLastReport()->GetCode() != 0) return FailureOf(*value.GetLastReport());
    const VNarrowString plain(text);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    Print(plain.View());
    return kDone;
}

struct SecretCommand {
    const char* name;
    const char* summary;
    Failure (*run)();
};
constexpr std::array<SecretCommand, 2> kSecretCommands = {{
    {"protect", "Print the text of standard input as the store keeps it, readable for this user alone", Protect},
    {"unprotect", "Print the text that protect was given", Unprotect},
}};

}  // namespace

CommandBody DeclareSecret(CLI::App& parser) {
    parser.require_subcommand(1);
    for (const SecretCommand& command : kSecretCommands) parser.add_subcommand(command.name, command.summary);
    return [&parser]() -> Failure {
        for (const SecretCommand& command : kSecretCommands)
            if (parser.got_subcommand(command.name)) return command.run();
        return kDone;
    };
}

}  // namespace connectdialog::connectctl
