// A command of several: one table, from which its parsers and its body follow.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <span>

#include "tools/connectctl/command.h"

namespace connectdialog::connectctl {

/// `rows` has name, summary, declare(parser, arguments) and run(arguments) of each subcommand; it must live as long as
/// the process. All share one record of arguments.
template <class Arguments, class Row, std::size_t count>
CommandBody DeclareSubcommands(CLI::App& parser, const Row (&rows)[count],
                               std::shared_ptr<Arguments> arguments = std::make_shared<Arguments>()) {
    parser.require_subcommand(1);
    for (const Row& row : rows) row.declare(*parser.add_subcommand(row.name, row.summary), *arguments);
    return [&parser, &rows, arguments]() -> Failure {
        for (const Row& row : rows)
            if (parser.got_subcommand(row.name)) return row.run(*arguments);
        return kDone;
    };
}

}  // namespace connectdialog::connectctl
