// CAction's macros, text form and execution against the simulated host.
#include "catalogue/action.h"
#include "catalogue/mapkey_lookup.h"
#include "catalogue/s3dm_handlers.h"
#include "sim/host/session.h"
#include "toolkit/host_table.h"

#include "tests/unit/common/fake_main_loop.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

class ActionTest : public ::testing::Test {
protected:
    void SetUp() override {
        sim::CSession::Instance().Reset();
        qvx::toolkit::InstallHostTable(sim::CSession::Instance().Args());
    }
    void TearDown() override {
        qvx::catalogue::SetMapkeyProvider({});
        qvx::toolkit::InstallHostTable(nullptr);
    }

    static CAction Parse(const std::string& id) {
        CAction action;
        std::istringstream in(id);
        in >> action;
        return action;
    }
    static const std::vector<std::string>& Macros() { return sim::CSession::Instance().macros; }

    qvx::testing::CFakeMainLoop m_loop;
};

const std::wstring kShadingMacro =
    L"~ Command `ProCmdEnvMdlDisp` `Shading`;~ Command `ProCmdViewRepaint`";

TEST_F(ActionTest, DisplayStyleNamesBecomeTheirMacrosIgnoringCaseAndCheckFlag) {
    EXPECT_EQ(CAction(L"PROCMDVIEWSHADED", L"", CAction::kProCmd, L"", L"").GetText(),
              kShadingMacro);
    EXPECT_EQ(CAction(L"ProCmdViewShaded", L"", CAction::kProCmdCheck, L"", L"").GetText(),
              kShadingMacro);
    EXPECT_EQ(CAction(L"ProCmdFoo", L"", CAction::kProCmdCheck, L"", L"").GetText(),
              L"~ Command `ProCmdFoo` 1;");
    EXPECT_EQ(CAction(L"ProCmdFoo", L"", CAction::kProCmd, L"", L"").GetText(),
              L"~ Command `ProCmdFoo`;");
    EXPECT_EQ(CAction(L"ProCmdViewShaded", L"", CAction::kProMacro, L"", L"").GetText(),
              L"ProCmdViewShaded")
        << "other kinds keep their text";
}

TEST_F(ActionTest, CheckButtonCommandReadsBackAsKind3AndRuns) {
    CAction check(L"ProCmdFoo", L"Foo", CAction::kProCmdCheck, L"foo.png", L"tip");
    std::string id = check.ToIdentifier();
    EXPECT_EQ(id, "ProCmd ~ Command `ProCmdFoo` 1;");
    CAction back = Parse(id);
    EXPECT_EQ(back.GetKind(), CAction::kProCmd);
    EXPECT_EQ(back.GetText(), check.GetText());
    EXPECT_FALSE(check.Execute()) << "kind 4 itself is never run";
    EXPECT_TRUE(back.Execute());
    ASSERT_EQ(Macros().size(), 1u);
    EXPECT_EQ(Macros()[0], "~ Command `ProCmdFoo` 1;");
}

TEST_F(ActionTest, TextFormOfEveryKind) {
    EXPECT_EQ(CAction(7u, L"", CAction::kMenuItem, L"", L"").ToIdentifier(), "MenuItem 7");
    EXPECT_EQ(CAction(L"x y", L"", CAction::kUnknown, L"", L"").ToIdentifier(), "Unknown 0 x y");
    EXPECT_EQ(CAction(L"h", L"", CAction::kS3dm, L"", L"").ToIdentifier(), "s3dm h");
    EXPECT_EQ(CAction(L"$F2\x00E4", L"", CAction::kProMacro, L"", L"").ToIdentifier(),
              "ProMacro $F2\xC3\xA4");
    EXPECT_EQ(CAction(L"t", L"", 9, L"", L"").ToIdentifier(), "");
}

TEST_F(ActionTest, ParsingKeepsMapkeyKeysAndStripsOuterBlanks) {
    CAction mapkey = Parse("ProMacro   $F2 \t\r\n");
    EXPECT_EQ(mapkey.GetKind(), CAction::kProMacro);
    EXPECT_EQ(mapkey.GetText(), L"$F2");
    EXPECT_EQ(Parse("ProMacro a  b").GetText(), L"a  b");
    EXPECT_EQ(Parse("ProMacro \xE4\xB8\xAD").GetText(), L"\x4E2D");
}

TEST_F(ActionTest, UnknownWordsEmptyAndMenuZeroDoNothing) {
    struct Case {
        const char* id;
        std::int32_t kind;
    } cases[] = {{"Bogus ~ Command `ProCmdFoo`;", CAction::kUnknown},
                 {"", CAction::kUnknown},
                 {"   ", CAction::kUnknown},
                 {"procmd lower case kind word", CAction::kUnknown},
                 {"MenuItem 0", CAction::kMenuItem},
                 {"MenuItem notanumber", CAction::kMenuItem},
                 {"s3dm NoSuchHandler", CAction::kS3dm}};
    for (const Case& c : cases) {
        CAction action = Parse(c.id);
        EXPECT_EQ(action.GetKind(), c.kind) << c.id;
        EXPECT_FALSE(action.Execute()) << c.id;
    }
    EXPECT_TRUE(Macros().empty());
    EXPECT_TRUE(m_loop.TakePosted().empty());
}

TEST_F(ActionTest, MenuItemPostsItsCommandAndNamedHandlersRun) {
    EXPECT_TRUE(Parse("MenuItem 40001").Execute());
    EXPECT_EQ(m_loop.TakePosted(), std::vector<std::uint32_t>{40001});
    int calls = 0;
    qvx::catalogue::S3dmHandlers()["Spin"] = {[&] { ++calls; }};
    EXPECT_TRUE(Parse("s3dm Spin").Execute());
    qvx::catalogue::S3dmHandlers().clear();
    EXPECT_EQ(calls, 1);
}

TEST_F(ActionTest, MapkeyTriesEachRefusedDefinitionThenItsOwnKey) {
    CAction key(L"$F2", L"", CAction::kProMacro, L"", L"");
    qvx::catalogue::SetMapkeyProvider([&](std::vector<CMapkeyEntry>& out) {
        out.push_back({CAction(L"$F1", L"", CAction::kProMacro, L"", L""), "first other"});
        out.push_back({key, "body one"});
        out.push_back({key, "body two"});
        return true;
    });
    sim::CSession& host = sim::CSession::Instance();
    host.refusedMacros = {"body one", "body two", "$F2"};
    EXPECT_FALSE(key.Execute());
    EXPECT_EQ(Macros(), (std::vector<std::string>{"body one", "body two", "$F2"}));

    host.refusedMacros = {"body one"};
    host.macros.clear();
    EXPECT_TRUE(key.Execute());
    EXPECT_EQ(Macros(), (std::vector<std::string>{"body one", "body two"}));
}

TEST_F(ActionTest, MapkeyWithoutDefinitionRunsItsTextAsAMacro) {
    EXPECT_TRUE(Parse("ProMacro ##DONE/RETURN").Execute());
    EXPECT_EQ(Macros(), std::vector<std::string>{"##DONE/RETURN"});
}

TEST_F(ActionTest, FromDriverActsOnPressOnlyAndSurvivesNull) {
    CAction::ExecuteFromDriver("ProCmd ~ Command `ProCmdA`;", false);
    CAction::ExecuteFromDriver(nullptr, true);
    EXPECT_TRUE(Macros().empty());
    CAction::ExecuteFromDriver("ProCmd ~ Command `ProCmdA`;", true);
    EXPECT_EQ(Macros(), std::vector<std::string>{"~ Command `ProCmdA`;"});
}

TEST_F(ActionTest, HostWithoutMacroLoadRefusesEverything) {
    sim::CSession::Instance().Omit("ProMacroLoad");
    qvx::toolkit::InstallHostTable(sim::CSession::Instance().Args());
    ::testing::internal::CaptureStdout();
    EXPECT_FALSE(Parse("ProCmd ~ Command `ProCmdA`;").Execute());
    ::testing::internal::GetCapturedStdout();
}

}  // namespace
