#include "sim/host/protk_file.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

TEST(ProtkFileTest, BlocksByNameWithKeywordsInAnyCaseAndCrLf) {
    auto blocks = ParseProtk(
        "! written by the package\r\n"
        "name        Other\r\n"
        "exec_file   C:\\other.dll\r\n"
        "end\r\n"
        "\r\n"
        "NAME        QvxProENGINEER\r\n"
        "startup     dll\r\n"
        "exec_file   C:\\Program Files\\Quorvex\\QvxProENGINEER\\x86e_win64\\obj\\q.dll  \r\n"
        "text_dir    C:\\Q\\session\r\n"
        "end\r\n"
        "name Unended\n"
        "exec_file u.dll");
    ASSERT_EQ(blocks.size(), 3u);
    EXPECT_EQ(ProtkValue(blocks, "QvxProENGINEER", "exec_file"),
              "C:\\Program Files\\Quorvex\\QvxProENGINEER\\x86e_win64\\obj\\q.dll");
    EXPECT_EQ(ProtkValue(blocks, "QvxProENGINEER", "text_dir"), "C:\\Q\\session");
    EXPECT_EQ(ProtkValue(blocks, "", "exec_file"), "C:\\other.dll") << "the first block";
    EXPECT_EQ(ProtkValue(blocks, "Unended", "exec_file"), "u.dll");
    EXPECT_EQ(ProtkValue(blocks, "Missing", "exec_file"), std::nullopt);
    EXPECT_EQ(ProtkValue(blocks, "Other", "text_dir"), std::nullopt);
}

}  // namespace
}  // namespace sim
