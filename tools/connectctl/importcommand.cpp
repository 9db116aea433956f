// import: sessions from another program's configuration.
#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "platform/paths.h"
#include "suite/importers/openssh/opensshimport.h"
#include "suite/importers/openssh/sshfiles.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/jsonimport.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"
#include "tools/connectctl/userfile.h"

namespace connectdialog::connectctl {

namespace {

struct ImportArguments {
    std::string file;
    std::string folder;
    bool isDryRun = false;
    bool asJson = false;
};

/// The outcomes in the order in which they are told, as the summary and as JSON name them.
struct OutcomeName {
    SshImportOutcome outcome;
    const char* text;
    const char* json;
};
constexpr OutcomeName kOutcomes[] = {
    {SshImportOutcome::kMade, "made", "made"},
    {SshImportOutcome::kUpdated, "updated", "updated"},
    {SshImportOutcome::kLeftAlone, "left alone", "leftAlone"},
    {SshImportOutcome::kSkipped, "skipped", "skipped"},
};

std::string PlaceText(const std::string& file, std::size_t line) {
    return line == 0 ? file + ": " : file + ':' + std::to_string(line) + ": ";
}

void PrintSummary(const SshImportResult& result, bool isDryRun) {
    std::string summary = isDryRun ? "dry run" : "";
    for (const OutcomeName& name : kOutcomes)
        summary += (summary.empty() ? "" : ", ") + std::to_string(result.Count(name.outcome)) + ' ' + name.text;
    PrintLine(summary);
    for (const SshImportEntry& entry : result.entries) {
        if (entry.text.empty()) continue;
        const bool isSkipped = entry.outcome == SshImportOutcome::kSkipped;
        const std::string text = (isSkipped ? "skipped " : "updated ") + entry.alias + ": " + entry.text;
        PrintLine(Printable(platform::ToWide(text)));
    }
}

nlohmann::json DescribeEntry(const SshImportEntry& entry) {
    const OutcomeName& name = kOutcomes[static_cast<std::size_t>(entry.outcome)];
    nlohmann::json description = {
        {"alias", entry.alias}, {"file", entry.file}, {"line", entry.line}, {"outcome", name.json}};
    if (!entry.path.IsEmpty()) description["path"] = JsonText(entry.path);
    if (!entry.text.empty()) description["text"] = entry.text;
    return description;
}

nlohmann::json DescribeResult(const SshImportResult& result) {
    nlohmann::json description;
    for (const OutcomeName& name : kOutcomes) description[name.json] = result.Count(name.outcome);
    nlohmann::json& hosts = description["hosts"] = nlohmann::json::array();
    for (const SshImportEntry& entry : result.entries) hosts.push_back(DescribeEntry(entry));
    nlohmann::json& findings = description["findings"] = nlohmann::json::array();
    for (const SshDiagnostic& finding : result.diagnostics.All())
        findings.push_back({{"file", finding.file}, {"line", finding.line}, {"text", finding.text}});
    return description;
}

void PrintFindings(const SshDiagnostics& diagnostics) {
    for (const SshDiagnostic& finding : diagnostics.All())
        PrintNotice(PlaceText(finding.file, finding.line) + finding.text);
    if (diagnostics.Dropped() > 0) PrintNotice(std::to_string(diagnostics.Dropped()) + " more findings");
}

Failure ImportOpenSshFile(const ImportArguments& arguments) {
    SshImportRequest request;
    if (Failure failure = DecodeArgument(arguments.folder, request.folder)) return failure;
    if (request.folder.View().ends_with(u'\\')) request.folder = request.folder.Left(request.folder.GetLength() - 1);
    request.file = arguments.file;
    request.user = GetCurrentSshUser();
    request.isDryRun = arguments.isDryRun;
    DiskSshFiles files;
    SshImportResult result;
    VReportMessageParams report;
    if (!ImportOpenSshConfig(files, request, result, report)) return ReportText(report);
    if (arguments.asJson) {
        PrintLine(PrintableJson(DescribeResult(result)));
        return kDone;
    }
    PrintSummary(result, arguments.isDryRun);
    PrintFindings(result.diagnostics);
    return kDone;
}

CommandBody DeclareOpenSsh(CLI::App& parser) {
    auto arguments = std::make_shared<ImportArguments>();
    parser.add_option("FILE", arguments->file, "The configuration, as ~/.ssh/config")->required();
    parser.add_option("--into", arguments->folder, "The folder for the sessions; the root when left out");
    parser.add_flag("--dry-run", arguments->isDryRun, "Tell what would happen and change nothing");
    parser.add_flag("--json", arguments->asJson, "Print one JSON object, with the findings in it");
    parser.footer(
        "Each host that is named without a wildcard becomes a session, all of them or none. A session that stands\n"
        "already is updated when a value differs and left alone otherwise. What the reader found goes to standard\n"
        "error, one line each with file and line. Nothing that the configuration names is run.");
    return [arguments] { return ImportOpenSshFile(*arguments); };
}

Failure ImportJson(const ImportArguments& arguments, std::istream& text) {
    Entry folder;
    JsonImportCounts counts;
    const auto find = [&]() -> Failure {
        if (Failure failure = FindStoredEntry(arguments.folder, folder)) return failure;
        return folder.isSession ? Failure(Quoted(folder.path) + " is a session, a folder is needed") : kDone;
    };
    const auto take = [&]() -> Failure {
        if (Failure fault = ImportEntries(text, folder.path, counts)) return arguments.file + ": " + *fault;
        return kDone;
    };
    if (Failure failure = CheckAndChange(find, take, arguments.isDryRun)) return failure;
    PrintLine((arguments.isDryRun ? "dry run, " : "") + std::to_string(counts.folders) + " folders and " +
              std::to_string(counts.sessions) + " sessions made");
    return kDone;
}

Failure ImportJsonFile(const ImportArguments& arguments) {
    if (arguments.file == "-") {
        std::stringstream text;  // nobody waits for standard input under the lock
        text << std::cin.rdbuf();
        text.clear();
        return ImportJson(arguments, text);
    }
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.file, name)) return failure;
    if (const std::uint32_t code = ProbeFile(name)) return FileFailure(name, code);
    std::ifstream file(platform::ToNativePath(name), std::ios::binary);
    return ImportJson(arguments, file);
}

CommandBody DeclareJson(CLI::App& parser) {
    auto arguments = std::make_shared<ImportArguments>();
    parser.add_option("FILE", arguments->file, "What export wrote; - is standard input")->required();
    parser.add_option("--into", arguments->folder, "The folder for the entries; the root when left out");
    parser.add_flag("--dry-run", arguments->isDryRun, "Tell what would happen and change nothing");
    parser.footer("All entries are stored or none. An entry whose name is taken is refused.");
    return [arguments] { return ImportJsonFile(*arguments); };
}

}  // namespace

CommandBody DeclareImport(CLI::App& parser) {
    parser.require_subcommand(1);
    CLI::App& openSsh = *parser.add_subcommand("openssh", "From an OpenSSH client configuration");
    CLI::App& json = *parser.add_subcommand("json", "From what export wrote");
    const CommandBody fromOpenSsh = DeclareOpenSsh(openSsh);
    const CommandBody fromJson = DeclareJson(json);
    return [&parser, fromOpenSsh, fromJson] { return parser.got_subcommand("json") ? fromJson() : fromOpenSsh(); };
}

}  // namespace connectdialog::connectctl
