// The plug-in's menu in the simulated host, the host's callbacks of a UI command, and where
// the help file is looked for.
#include "core/help.h"
#include "core/ui_command.h"
#include "plugin_fixture.h"

#include <set>
#include <stdexcept>

namespace qvx::testing {
namespace {

using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;

int g_runs = 0;
int CountRun(uiCmdCmdId, uiCmdValue*, void*) { return ++g_runs; }
int Other(uiCmdCmdId, uiCmdValue*, void*) { return 0; }

class HostMenuTest : public PluginTest {
protected:
    void SetUp() override {
        PluginTest::SetUp();
        g_runs = 0;
        sim::CSession::Instance().OpenModel("block.prt");  // a current window to give back
    }

    static const sim::CSession::CMenu* Menu(const std::string& name) {
        for (const auto& menu : sim::CSession::Instance().menuBar)
            if (menu.name == name) return &menu;
        return nullptr;
    }
    static std::vector<std::string> Items(const std::string& name) {
        std::vector<std::string> items;
        if (const auto* menu = Menu(name))
            for (const auto& entry : menu->entries) items.push_back(entry.item);
        return items;
    }
};

TEST_F(HostMenuTest, RefusedEntryTakesTheEntriesPlacedAfterItAlong) {
    // The nth call of ProMenubarmenuPushbuttonAdd refused, and what stays in the menu. Each
    // entry is placed after the one before, so the host cannot place those behind a gap.
    struct Case {
        int nth;
        std::vector<std::string> items;
        int result;
    };
    const Case cases[] = {
        {1, {}, 0},
        {2, {"QvxButtonMappingEditor"}, 0},
        {3, {"QvxButtonMappingEditor", "QvxHelp"}, 0},
    };
    for (const Case& c : cases) {
        sim::CSession::Instance().Reset();
        sim::CSession::Instance().faults["ProMenubarmenuPushbuttonAdd"] = {
            sim::CSession::EFault::Status, PRO_TK_GENERAL_ERROR, c.nth, 0};
        toolkit::InstallHostTable(sim::CSession::Instance().Args());
        CQvxProE plugin(L"x");
        EXPECT_EQ(plugin.SetupMenu(), c.result) << "refused call " << c.nth;
        EXPECT_EQ(Items("QvxProE"), c.items) << "refused call " << c.nth;
        toolkit::InstallHostTable(nullptr);
    }
}

TEST_F(HostMenuTest, SecondCommandOfOneFunctionThrowsUntilTheFirstIsGone) {
    {
        CQvxUiCommand<&CountRun> first("First");
        EXPECT_THROW(
            {
                try {
                    CQvxUiCommand<&CountRun> second("Second");
                } catch (const std::logic_error& e) {
                    EXPECT_STREQ(e.what(), "Only one instance allowed");
                    throw;
                }
            },
            std::logic_error);
        CQvxUiCommand<&Other> otherFunction("Other");  // another instantiation is free
    }
    CQvxUiCommand<&CountRun> again("Again");
}

TEST_F(HostMenuTest, AccessCallbackRunsTheFunctionOnlyForAChoiceAndActionOnlyReports) {
    toolkit::InstallHostTable(sim::CSession::Instance().Args());
    using Command = CQvxUiCommand<&CountRun>;
    Command command("ProQvxTest");
    ASSERT_EQ(command.Add(), PRO_TK_NO_ERROR);

    CaptureStdout();
    EXPECT_EQ(Command::ProUiCmdAccessFn(UI_CMD_ACCESS_LOOK), ACCESS_AVAILABLE);
    EXPECT_EQ(g_runs, 0);
    EXPECT_EQ(Command::ProUiCmdCmdActFn(command.Id(), nullptr, nullptr), 0);
    EXPECT_EQ(g_runs, 0) << "the action callback does no work";
    for (int mode : {1, 2, -1}) {
        EXPECT_EQ(Command::ProUiCmdAccessFn(mode), ACCESS_HANDLED) << mode;
    }
    std::string out = GetCapturedStdout();
    EXPECT_EQ(g_runs, 3);
    EXPECT_NE(out.find("CQvxUiCommand::ProUiCmdAccessFn(uiCmdAccessMode=0)\n"), std::string::npos);
    EXPECT_NE(out.find("CQvxUiCommand::ProUiCmdCmdActFn uiCmdCmdId="), std::string::npos);
    // The focus goes back to the window that was current, after each choice.
    int activations = 0;
    for (const auto& line : sim::CSession::Instance().calls)
        activations += line == "ProWindowActivate 1";
    EXPECT_EQ(activations, 3);
}

TEST_F(HostMenuTest, FailingHostCallsAroundTheFunctionAreReportedAndItStillRuns) {
    sim::CSession::Instance().faults["ProCmdActionAdd"] = {sim::CSession::EFault::Status,
                                                           PRO_TK_E_FOUND, 0, 0};
    sim::CSession::Instance().model.reset();  // no current window: both window calls fail
    toolkit::InstallHostTable(sim::CSession::Instance().Args());
    using Command = CQvxUiCommand<&CountRun>;
    Command command("ProQvxTest");
    CaptureStdout();
    EXPECT_EQ(command.Add(), PRO_TK_E_FOUND);
    EXPECT_EQ(Command::ProUiCmdAccessFn(UI_CMD_ACCESS_CHOSEN), ACCESS_HANDLED);
    std::string out = GetCapturedStdout();
    EXPECT_EQ(g_runs, 1);
    EXPECT_NE(out.find("CQvxUiCommand::ProCmdActionAdd(ProQvxTest...) failed error=-5\n"),
              std::string::npos);
    EXPECT_NE(out.find("ProWindowCurrentGet() failed error="), std::string::npos);
    EXPECT_NE(out.find("ProWindowActivate(-1 ) failed error="), std::string::npos);
}

TEST(HelpFileTest, LanguageFolderFirstThenEnglishElseNothing) {
    struct Case {
        const wchar_t* home;
        std::set<std::wstring> files;
        std::optional<std::wstring> found;
    };
    const std::wstring de = L"C:\\H\\de-DE\\halvane.chm";
    const std::wstring en = L"C:\\H\\en-US\\halvane.chm";
    const Case cases[] = {
        {L"C:\\H\\", {de, en}, de},
        {L"C:\\H", {de}, de},  // the backslash is put in
        {L"C:\\H", {en}, en},  // the German folder lacks the file
        {L"C:\\H\\", {}, std::nullopt},
        {L"", {L"de-DE\\halvane.chm", L"\\de-DE\\halvane.chm"}, std::nullopt},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const Case& c = cases[i];
        auto found = core::FindHelpFile(
            c.home, L"de-DE", [&](const std::wstring& path) { return c.files.count(path) > 0; });
        EXPECT_EQ(found, c.found) << "case " << i;
    }
}

}  // namespace
}  // namespace qvx::testing
