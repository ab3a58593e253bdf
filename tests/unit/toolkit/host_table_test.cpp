// The toolkit layer's search of the host table and its cache of entries.
#include "toolkit/host_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qvx::toolkit {
namespace {

int Answer1() { return 1; }
int Answer2() { return 2; }

class HostTableTest : public ::testing::Test {
protected:
    void TearDown() override { InstallHostTable(nullptr); }

    void Install(std::vector<QvxHostFunction> functions) {
        m_functions = std::move(functions);
        m_args = QvxToolkitArgs{};
        m_args.functions = m_functions.data();
        m_args.functionCount = static_cast<std::uint32_t>(m_functions.size());
        InstallHostTable(&m_args);
    }

    std::vector<QvxHostFunction> m_functions;
    QvxToolkitArgs m_args{};
};

TEST_F(HostTableTest, EveryNameOfASortedTableIsFoundAndGapsAreNot) {
    // Names chosen so that strcmp order differs from case-insensitive order.
    static const char* names[] = {"ProA_v", "ProB_v", "ProZ_v", "Pro_v", "Proa_v", "Prob_v"};
    std::vector<QvxHostFunction> table;
    for (std::size_t i = 0; i < std::size(names); ++i) {
        table.push_back({names[i], reinterpret_cast<void*>(i + 1)});
    }
    Install(table);
    for (std::size_t i = 0; i < std::size(names); ++i) {
        EXPECT_EQ(FindHostEntry(names[i]), reinterpret_cast<void*>(i + 1)) << names[i];
    }
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(FindHostEntry("ProC_v"), nullptr);
    EXPECT_EQ(FindHostEntry("Pro"), nullptr);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "couldn't find pointer to ProE-side function ProC_v\n"
              "couldn't find pointer to ProE-side function Pro\n");
}

TEST_F(HostTableTest, MissingEntryGivesMinusOneAndANewTableReplacesTheCache) {
    static CHostEntry<int()> entry("ProAnswer_v");
    Install({});
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(CallHost(entry), -1);
    ::testing::internal::GetCapturedStdout();
    Install({{"ProAnswer_v", reinterpret_cast<void*>(&Answer1)}});
    EXPECT_EQ(CallHost(entry), 1);
    Install({{"ProAnswer_v", reinterpret_cast<void*>(&Answer2)}});
    EXPECT_EQ(CallHost(entry), 2);
}

TEST_F(HostTableTest, ToolkitCallsAnswerFromTheLoadArgument) {
    Install({});
    m_args.wcharSize = 2;
    m_args.textDirectory = L"C:\\ptc\\text";
    InstallHostTable(&m_args);
    int size = 0;
    EXPECT_EQ(QvxTkWcharSizeCheck(2, &size), 0);
    EXPECT_EQ(size, 2);
    EXPECT_NE(QvxTkWcharSizeCheck(4, &size), 0);
    wchar_t small[5];
    QvxTkTextDirectoryGet(small, 5);
    EXPECT_STREQ(small, L"C:\\p");
}

}  // namespace
}  // namespace qvx::toolkit
