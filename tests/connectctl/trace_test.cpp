#include <gmock/gmock.h>
#include <string>

#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {

namespace {

TEST_F(ToolTest, ATemplateOfALogFilesNameIsExpanded) {
    environment = {"TRACE_FOLDER=/tmp/\x1b"};
    EXPECT_THAT(RunWell({"trace", "%TRACE_FOLDER%/log-%Y%M%D-%h%m%s.%t-100%%"}),
                testing::MatchesRegex("/tmp/<U\\+001B>/log-2[0-9]{3}[01][0-9][0-3][0-9]-"
                                      "[0-2][0-9][0-5][0-9][0-6][0-9]\\.[0-9]{3}-100%\n"));
    EXPECT_EQ(RunWell({"trace", "plain"}), "plain\n");
}

TEST_F(ToolTest, AFaultyTemplateIsExplained) {
    EXPECT_EQ(
        RunBadly({"trace", "%NO_SUCH_VARIABLE%.log"}),
        "connectctl: \"%NO_SUCH_VARIABLE%\" is neither a token nor a variable that is set; %% is a percent sign\n");
    EXPECT_EQ(RunBadly({"trace", "x%q"}),
              "connectctl: \"%q\" is neither a token nor a variable that is set; %% is a percent sign\n");
    EXPECT_EQ(RunBadly({"trace", "100%"}), "connectctl: the template ends with a lone %; %% is a percent sign\n");
    RunBadly({"trace", "\xff"});
}

}  // namespace

}  // namespace connectdialog::test
