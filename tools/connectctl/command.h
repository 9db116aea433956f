// What a command of connectctl is.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace connectdialog::connectctl {

/// Nothing when all went well; else the one line that tells the user why not. It may quote names as they stand: who
/// prints it escapes it.
using Failure = std::optional<std::string>;
inline constexpr std::nullopt_t kDone = std::nullopt;

/// Does a command's work with the arguments that were parsed. Requires: the store is open when the command needs it.
using CommandBody = std::function<Failure()>;

/// One row of the table in main.cpp. Parser, help and completion scripts follow from it.
struct Command {
    const char* name;
    const char* summary;
    bool needsStore;
    /// Adds the command's arguments to its parser; gives what runs it after the parse.
    CommandBody (*declare)(CLI::App& parser);
};

CommandBody DeclareImport(CLI::App& parser);
CommandBody DeclareExport(CLI::App& parser);
CommandBody DeclareTree(CLI::App& parser);
CommandBody DeclareLs(CLI::App& parser);
CommandBody DeclareShow(CLI::App& parser);
CommandBody DeclareGet(CLI::App& parser);
CommandBody DeclareSet(CLI::App& parser);
CommandBody DeclareNew(CLI::App& parser);
CommandBody DeclareMkdir(CLI::App& parser);
CommandBody DeclareCp(CLI::App& parser);
CommandBody DeclareMv(CLI::App& parser);
CommandBody DeclareRename(CLI::App& parser);
CommandBody DeclareRm(CLI::App& parser);
CommandBody DeclareArrange(CLI::App& parser);
CommandBody DeclareFind(CLI::App& parser);
CommandBody DeclareShortcut(CLI::App& parser);
CommandBody DeclareConnect(CLI::App& parser);
CommandBody DeclareFirewall(CLI::App& parser);
CommandBody DeclareButtons(CLI::App& parser);
CommandBody DeclareHive(CLI::App& parser);
CommandBody DeclareKeymap(CLI::App& parser);
CommandBody DeclareSecret(CLI::App& parser);
CommandBody DeclareTrace(CLI::App& parser);
CommandBody DeclareCompletion(CLI::App& parser);

}  // namespace connectdialog::connectctl
