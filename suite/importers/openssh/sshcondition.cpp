#include "suite/importers/openssh/sshcondition.h"

#include <algorithm>
#include <array>
#include <optional>

#include "suite/importers/openssh/sshdiagnostics.h"
#include "suite/importers/openssh/sshlexer.h"

namespace connectdialog {
namespace {

using TestKind = SshTest::Kind;

struct CriterionRow {
    std::string_view name;
    TestKind kind;
    std::string_view since = {};  ///< The OpenSSH version that has it first when that is later than 9.2.
};

constexpr std::array kCriteria = std::to_array<CriterionRow>({
    {"canonical", TestKind::kFinal},  // Both ask whether this is the second pass; "final" also asks for one.
    {"final", TestKind::kFinal},
    {"host", TestKind::kHost},
    {"originalhost", TestKind::kOriginalHost},
    {"user", TestKind::kUser},
    {"localuser", TestKind::kLocalUser},
    {"exec", TestKind::kUnknowable},
    {"tagged", TestKind::kTagged, "9.4"},
    {"localnetwork", TestKind::kUnknowable, "9.4"},
    {"sessiontype", TestKind::kUnknowable, "10.0"},
    {"command", TestKind::kUnknowable, "10.0"},
    {"version", TestKind::kUnknowable, "10.0"},
});

const CriterionRow* FindCriterion(std::string_view name) {
    const auto row = std::ranges::find_if(
        kCriteria, [name](const CriterionRow& candidate) { return EqualsIgnoringAsciiCase(candidate.name, name); });
    return row == kCriteria.end() ? nullptr : &*row;
}

bool IsEnd(const std::optional<std::string>& word) {
    return !word || word->empty() || word->front() == '#';
}

/// Reads the criteria of one line, each with its argument.
class MatchParser {
  public:
    MatchParser(std::string_view text, SshMatchReport& report) : words(text), report(report) {}

    /// Empty on failure, with the report's error.
    std::vector<SshTest> Parse() {
        std::optional<std::string> word = words.Next();
        for (; !IsEnd(word) && !isDone; word = isDone ? std::nullopt : words.Next()) {
            if (!Take(*word)) return {};
        }
        const bool hasRest = !isDone && word && word->empty() && !words.Rest().empty();
        if (tests.empty() || hasRest) Fail("Match has no criteria that can be read");
        return report.error.empty() ? tests : std::vector<SshTest>();
    }

  private:
    SshWords words;
    SshMatchReport& report;
    std::vector<SshTest> tests;
    bool isDone = false;

    bool Fail(std::string error) {
        report.error = std::move(error);
        return false;
    }

    bool Take(std::string_view word) {
        const bool isNegated = word.starts_with('!');
        const std::string_view name = word.substr(isNegated ? 1 : 0);
        if (EqualsIgnoringAsciiCase(name, "all")) {
            isDone = true;
            if (tests.size() > 1 || !IsEnd(words.Next())) return Fail("Match all stands with other criteria");
            tests.push_back({TestKind::kAll, isNegated, {}});
            return true;
        }
        const CriterionRow* const row = FindCriterion(name);
        if (row != nullptr && row->kind == TestKind::kFinal) {
            report.hasFinal = report.hasFinal || row->name == "final";
            tests.push_back({TestKind::kFinal, isNegated, {}});
            return true;
        }
        const std::optional<std::string> argument = words.Next();
        if (IsEnd(argument)) return Fail("Match criterion " + QuoteForMessage(name) + " lacks its argument");
        if (row == nullptr) return Fail("Match has the unknown criterion " + QuoteForMessage(name));
        Add(*row, isNegated, *argument);
        return true;
    }

    void Add(const CriterionRow& row, bool isNegated, const std::string& argument) {
        const std::string name(row.name);
        const bool isHost = row.kind == TestKind::kHost || row.kind == TestKind::kOriginalHost;
        if (!row.since.empty()) {
            report.notes.push_back("OpenSSH before " + std::string(row.since) + " refuses Match " + name);
        }
        if (row.kind == TestKind::kUnknowable) {
            report.notes.push_back(
                (name == "exec" ? "the command of Match exec is not run" : "Match " + name + " is not tested") +
                std::string(" and counts as false"));
        }
        SshTest& test = tests.emplace_back(SshTest{row.kind, isNegated, {}});
        test.patterns.AddList(isHost ? ToAsciiLower(argument) : argument);
    }
};

bool IsTrue(const SshTest& test, const SshMatchSubject& subject, std::uint64_t& steps) {
    switch (test.kind) {
        case TestKind::kAll:
            return true;
        case TestKind::kFinal:
            return subject.isFinalPass;
        case TestKind::kHost:
            return test.patterns.Matches(subject.realHost, steps);
        case TestKind::kOriginalHost:
            return test.patterns.Matches(ToAsciiLower(subject.originalHost), steps);
        case TestKind::kUser:
            return test.patterns.Matches(subject.user, steps);
        case TestKind::kLocalUser:
            return test.patterns.Matches(subject.localUser, steps);
        case TestKind::kTagged:
            return test.patterns.Matches(subject.tag, steps);
        case TestKind::kUnknowable:
            return false;
    }
    return false;
}

}  // namespace

SshCondition SshCondition::Host(SshPatternSet patterns) {
    SshCondition condition(Kind::kHost);
    condition.hosts = std::move(patterns);
    return condition;
}

SshCondition SshCondition::Match(std::string_view text, SshMatchReport& report) {
    SshCondition condition(Kind::kMatch);
    condition.tests = MatchParser(text, report).Parse();
    return condition.tests.empty() ? Never() : condition;
}

bool SshCondition::Holds(const SshMatchSubject& subject, std::uint64_t& steps) const {
    ++steps;
    if (kind == Kind::kHost) return hosts.Matches(subject.host, steps);
    return kind != Kind::kNever && std::ranges::all_of(tests, [&](const SshTest& test) {
               return IsTrue(test, subject, ++steps) != test.isNegated;
           });
}

const std::set<std::string, std::less<>>* SshCondition::OnlyHosts() const {
    return kind == Kind::kHost && !hosts.HasWildcards() ? &hosts.Literals() : nullptr;
}

}  // namespace connectdialog
