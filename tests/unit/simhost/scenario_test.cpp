#include "sim/host/scenario.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

TEST(ScenarioParseTest, WordsQuotesCommentsAndLineNumbers) {
    std::vector<CScenarioError> errors;
    auto steps = ParseScenario(
        "# a comment\n"
        "\n"
        "registry set HKLM\\SOFTWARE\\Q \"Home Directory\" \"C:\\\\x\" # trailing\r\n"
        "expect message \"a \\\"b\\\"\\tc\"\n"
        "file ${SANDBOX}\\a.txt \"\"",
        &errors);
    EXPECT_TRUE(errors.empty());
    ASSERT_EQ(steps.size(), 3u);
    EXPECT_EQ(steps[0].line, 3);
    EXPECT_EQ(steps[0].words, (std::vector<std::string>{"registry", "set", "HKLM\\SOFTWARE\\Q",
                                                        "Home Directory", "C:\\x"}));
    EXPECT_EQ(steps[1].words.back(), "a \"b\"\tc");
    EXPECT_EQ(steps[2].line, 5);
    EXPECT_EQ(steps[2].words.back(), "") << "an empty quoted word is a word";
}

TEST(ScenarioParseTest, BrokenQuotesAreErrorsOnTheirLine) {
    std::vector<CScenarioError> errors;
    auto steps = ParseScenario("load\nexpect message \"open\nwait 10 \"\\q\"\n", &errors);
    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors[0].line, 2);
    EXPECT_EQ(errors[1].line, 3);
    ASSERT_EQ(steps.size(), 1u);
    EXPECT_EQ(steps[0].words[0], "load");
}

TEST(ScenarioParseTest, VariablesExpandAndUnknownOnesStay) {
    std::map<std::string, std::string> vars = {{"SANDBOX", "C:\\s"}};
    EXPECT_EQ(ExpandVariables("${SANDBOX}\\a${X}b${", vars), "C:\\s\\a${X}b${");
}

}  // namespace
}  // namespace sim
