// secret: texts in the form in which the store keeps what only this user may read.
#include <cstdio>

#include "foundation/vnarrowstring.h"
#include "platform/codepage.h"
#include "profile/vprofilecapistring.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/standardinput.h"
#include "tools/connectctl/subcommands.h"

namespace connectdialog::connectctl {

namespace {

/// The protected form of a text of kMostInputBytes: each unit of it is four digits, and the head some more.
constexpr std::size_t kMostProtectedBytes = 4 * kMostInputBytes + 1024;

Failure FailureOf(VReportMessageParams& report) {
    std::string text = "standard input is ";
    if (report.GetCode() == kReportOddDigits) return text + "no protected text: a digit is missing";
    text += report.GetCode() == kReportNotProtected ? "not protected: " : "not unprotected: ";
    return text + platform::ToNarrow(report.GetInserts()[1]);
}

struct NoArguments {};

Failure Protect(const NoArguments&) {
    VNarrowString input;
    if (Failure failure = ReadStandardInput(input)) return failure;
    const VUnicodeString text(input);
    if (VNarrowString(text) != input) return "standard input is not UTF-8";
    VProfileCapiString value;
    const VUnicodeString stored = value.Protect(text);
    if (value.GetLastReport()->GetCode() != 0) return FailureOf(*value.GetLastReport());
    Print(VNarrowString(stored).View());
    return kDone;
}

Failure Unprotect(const NoArguments&) {
    VNarrowString input;
    if (Failure failure = ReadStandardInput(input, kMostProtectedBytes)) return failure;
    DropLineEnd(input);
    VProfileCapiString value;
    VUnicodeString text = value.Unprotect(VUnicodeString(input));
    text.MarkSensitive();
    if (value.GetLastReport()->GetCode() != 0) return FailureOf(*value.GetLastReport());
    const VNarrowString plain(text);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    Print(plain.View());
    return kDone;
}

void DeclareNothing(CLI::App&, NoArguments&) {}

constexpr Subcommand<NoArguments> kSecretCommands[] = {
    {"protect", "Print the text of standard input as the store keeps it, readable for this user alone", DeclareNothing,
     Protect},
    {"unprotect", "Print the text that protect was given", DeclareNothing, Unprotect},
};

}  // namespace

CommandBody DeclareSecret(CLI::App& parser) {
    return DeclareSubcommands(parser, kSecretCommands);
}

}  // namespace connectdialog::connectctl
