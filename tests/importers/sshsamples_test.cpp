// Configurations that people use, compared with the tables of values that ssh gives for them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "importers/importtest.h"
#include "suite/importers/openssh/sshfiles.h"

namespace connectdialog::test {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTableSuffix = ".expected.tsv";
const std::string kHome = "/home/somebody";

/// The machine's files with a folder of the samples in the place of `.ssh` in the home folder.
class SampleFiles : public DiskSshFiles {
  public:
    explicit SampleFiles(std::string folder) : folder(std::move(folder)) {}
    SshReadResult Read(const std::string& path, std::size_t maxBytes, std::string& text, std::string& error) override {
        return DiskSshFiles::Read(Mapped(path), maxBytes, text, error);
    }
    std::vector<std::string> List(const std::string& path, std::size_t maxNames) override {
        return DiskSshFiles::List(Mapped(path), maxNames);
    }
    bool Exists(const std::string& path) override { return DiskSshFiles::Exists(Mapped(path)); }

  private:
    std::string folder;
    std::string Mapped(const std::string& path) const {
        const std::string from = kHome + "/.ssh/";
        return path.starts_with(from) ? folder + '/' + path.substr(from.size()) : path;
    }
};

/// A table: what its comments say, and its rows below the line of titles.
struct Table {
    std::string comment;
    std::vector<std::string> rows;
};

Table ReadTable(const fs::path& path) {
    Table table;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) {
            table.comment += line + '\n';
        } else if (!line.starts_with("alias\t")) {
            table.rows.push_back(line);
        }
    }
    return table;
}

/// The number behind "line " in a table's comment: where ssh stumbled.
std::size_t StumblingLine(const std::string& comment) {
    const std::size_t at = comment.find(" line ");
    return at == std::string::npos ? 0 : std::stoul(comment.substr(at + 6));
}

class Samples : public ImportTest {
  protected:
    std::size_t Compare(const fs::path& config, const fs::path& sshFolder, const Table& table);
};

/// Imports one configuration and compares the sessions with its table; gives the number of rows that agree.
std::size_t Samples::Compare(const fs::path& config, const fs::path& sshFolder, const Table& table) {
    StartOver();
    SampleFiles files(sshFolder.string());
    SshImportResult result;
    VReportMessageParams report;
    EXPECT_TRUE(ImportOpenSshConfig(files, {config.string(), u"f", {"localuser", kHome}, false}, result, report));
    std::vector<std::string> rows;
    for (const SshImportEntry& entry : result.entries) {
        std::string values = ValuesAt(entry.path);
        const std::size_t user = values.find('\t', values.find('\t') + 1) + 1;
        if (values[user] == '\t') values.insert(user, "localuser");
        rows.push_back(entry.alias + '\t' + values);
    }
    const std::size_t line = StumblingLine(table.comment);
    const auto& found = result.diagnostics.All();
    const bool isFound = std::ranges::find(found, line, &SshDiagnostic::line) != found.end();
    EXPECT_TRUE(isFound || line == 0) << config;
    if (table.comment.find("REFUSES") != std::string::npos) {
        EXPECT_TRUE(line != 0 && result.diagnostics.IsRefused()) << config;
        return 0;
    }
    EXPECT_EQ(rows, table.rows) << config;
    return rows == table.rows ? rows.size() : 0;
}

TEST_F(Samples, AgreeWithSsh) {
    const fs::path folder = fs::path(CONNECTDIALOG_SAMPLES) / "ssh_config";
    if (std::string_view(CONNECTDIALOG_SAMPLES).empty() || !fs::exists(folder)) {
        GTEST_SKIP() << "no samples: CONNECTDIALOG_SAMPLES names no folder that has ssh_config";
    }
    std::size_t files = 0;
    std::size_t rows = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().string();
        if (!name.ends_with(kTableSuffix)) continue;
        const fs::path relative = entry.path().lexically_relative(folder / "_trees_expected");
        const bool isTree = *relative.begin() != "..";
        fs::path config = isTree ? folder / "_trees" / relative : entry.path();
        config = config.string().substr(0, config.string().size() - kTableSuffix.size());
        fs::path sshFolder = isTree ? folder / "_trees" / *relative.begin() : folder / "none";
        if (fs::exists(sshFolder / ".ssh")) sshFolder /= ".ssh";
        rows += Compare(config, sshFolder, ReadTable(entry.path()));
        ++files;
    }
    EXPECT_GT(files, 0U);
    std::cout << rows << " rows of " << files << " files agree\n";
}

}  // namespace
}  // namespace connectdialog::test
