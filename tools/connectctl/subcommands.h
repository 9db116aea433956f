// A command of several: one table, from which its parsers and its body follow.
#pragma once

#include <CLI/CLI.hpp>
#include <cstddef>
#include <memory>

#include "tools/connectctl/command.h"

namespace connectdialog::connectctl {

/// One row: `declare` adds the arguments to the subcommand's parser, `run` does its work with them.
template <class Arguments>
struct Subcommand {
    const char* name;
    const char* summary;
    void (*declare)(CLI::App& parser, Arguments& arguments);
    Failure (*run)(const Arguments& arguments);
};

/// Requires: `rows` lives as long as the process. All share one record of arguments.
template <class Arguments, std::size_t count>
CommandBody DeclareSubcommands(CLI::App& parser, const Subcommand<Arguments> (&rows)[count],
                               std::shared_ptr<Arguments> arguments = std::make_shared<Arguments>()) {
    parser.require_subcommand(1);
    for (const Subcommand<Arguments>& row : rows)
        row.declare(*parser.add_subcommand(row.name, row.summary), *arguments);
    return [&parser, &rows, arguments]() -> Failure {
        for (const Subcommand<Arguments>& row : rows)
            if (parser.got_subcommand(row.name)) return row.run(*arguments);
        return kDone;
    };
}

}  // namespace connectdialog::connectctl
