// The catalogue of host commands: the resource files of an installation made here (and the
// sample installation of sim/host), the simulated host's command table behind the toolkit.
#include "catalogue/cmd_res.h"
#include "catalogue/first_occurrences.h"
#include "catalogue/lang_file.h"
#include "catalogue/pro_commands.h"
#include "sim/host/session.h"
#include "support/language_id.h"
#include "support/os.h"
#include "toolkit/host_table.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

namespace {

namespace fs = std::filesystem;

class ProCommandsTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const wchar_t* name : {L"PRO_DIRECTORY", L"LANG"})
            m_saved.emplace_back(name, qvx::os::GetEnv(name));
        qvx::os::SetEnv(L"LANG", std::nullopt);
        m_root = fs::temp_directory_path() / "qvx_pro_commands";
        fs::remove_all(m_root);
        fs::create_directories(Resources());
        qvx::os::SetEnv(L"PRO_DIRECTORY", m_root.wstring());
        sim::CSession::Instance().Reset();
        qvx::toolkit::InstallHostTable(sim::CSession::Instance().Args());
    }
    void TearDown() override {
        for (const auto& [name, value] : m_saved) qvx::os::SetEnv(name, value);
        qvx::toolkit::InstallHostTable(nullptr);
        g_langId = 0x0409;
        std::error_code ec;
        fs::remove_all(m_root, ec);
    }
    fs::path Resources() const { return m_root / "text" / "resource"; }
    static void Write(const fs::path& path, const std::string& text) {
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
    }
    void Command(const std::string& file, const std::string& name, const std::string& label,
                 const std::string& extra = "") {
        Write(Resources() / file, "(Resources (command.ActivateCommand \"" + name +
                                      "\") (command.Label \"" + label + "\")" + extra + ")");
    }
    static std::vector<std::string> Names(const std::vector<CCommandEntry>& list) {
        std::vector<std::string> names;
        for (const auto& [name, action] : list) names.push_back(name);
        return names;
    }

    fs::path m_root;
    std::vector<std::pair<std::wstring, std::optional<std::wstring>>> m_saved;
};

TEST_F(ProCommandsTest, EntriesCarryTheFilesFieldsAndKindByCheckButton) {
    Command("procmda.res", "ProCmdViewRefit", "&Refit",
            " (command.HelpText \"Fit it\") (command.Bitmap \"refit\")");
    Command("procmdb.res", "ProCmdDatumDisplay", "Datum", " (Type (CheckButton))");
    std::vector<CCommandEntry> out{{"stale", CAction()}};
    ASSERT_TRUE(CProECommands().GetCommands(out));
    ASSERT_EQ(Names(out), (std::vector<std::string>{"ProCmdViewRefit", "ProCmdDatumDisplay"}));
    const CAction& refit = out[0].second;
    EXPECT_EQ(refit.GetKind(), CAction::kProCmd);
    EXPECT_EQ(refit.GetLabel(), L"Refit");
    EXPECT_EQ(refit.GetTooltip(), L"Fit it");
    EXPECT_EQ(refit.GetImage(), L"refit");
    EXPECT_EQ(refit.GetText(), L"~ Command `ProCmdViewRefit`;");
    EXPECT_EQ(out[1].second.GetKind(), CAction::kProCmdCheck);
}

TEST_F(ProCommandsTest, DropsUnknownNamelessAndUnlabelledCommandsAndKeepsTheFirstOfTwo) {
    Command("procmd1.res", "ProCmdFirst", "First");
    Command("procmd2.res", "ProCmdFirst", "Second");
    Command("procmd3.res", "ProCmdUnknown", "Unknown");
    Write(Resources() / "procmd4.res", "(Resources (command.ActivateCommand \"ProCmdNoLabel\"))");
    Write(Resources() / "procmd5.res", "(Resources (command.Label \"Nameless\"))");
    Write(Resources() / "procmd6.txt", "(Resources (command.ActivateCommand \"ProCmdTxt\"))");
    Command("other.res", "ProCmdOther", "Other");
    sim::CSession::Instance().unknownCommands.insert("ProCmdUnknown");
    std::vector<CCommandEntry> out;
    ASSERT_TRUE(CProECommands().GetCommands(out));
    ASSERT_EQ(Names(out), std::vector<std::string>{"ProCmdFirst"});
    EXPECT_EQ(out[0].second.GetLabel(), L"First");
}

TEST_F(ProCommandsTest, NoFolderOrNoHostFunctionGivesNoCommands) {
    std::vector<CCommandEntry> out;
    fs::remove_all(Resources());
    EXPECT_FALSE(CProECommands().GetCommands(out));
    Command("procmda.res", "ProCmdA", "A");
    sim::CSession::Instance().Omit("ProCmdCmdIdFind");
    qvx::toolkit::InstallHostTable(sim::CSession::Instance().Args());
    ::testing::internal::CaptureStdout();
    EXPECT_FALSE(CProECommands().GetCommands(out));
    ::testing::internal::GetCapturedStdout();
    EXPECT_TRUE(out.empty());
}

TEST_F(ProCommandsTest, LanguageFileTranslatesAndAChangeIsSeenByTheNextScan) {
    Command("procmda.res", "ProCmdA", "&Open");
    Command("procmdb.res", "ProCmdB", "Gone");
    qvx::os::SetEnv(L"LANG", L"de");
    Write(m_root / "text" / "resource.txt", "&Open\r\n&Oeffnen\r\nGone\r\n  \r\n");
    CProECommands commands;
    std::vector<CCommandEntry> out;
    ASSERT_TRUE(commands.GetCommands(out));
    ASSERT_EQ(Names(out), std::vector<std::string>{"ProCmdA"}) << "a blank translation drops";
    EXPECT_EQ(out[0].second.GetLabel(), L"Oeffnen");
    Write(m_root / "text" / "resource.txt", "xx&Openxx\nAuf\nGone\nWeg\n");
    ASSERT_TRUE(commands.GetCommands(out));
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0].second.GetLabel(), L"Auf");
    EXPECT_EQ(out[1].second.GetLabel(), L"Weg");
}

TEST_F(ProCommandsTest, MissingInstallationFallsBackToThreeLevelsAboveTheProgram) {
    qvx::os::SetEnv(L"PRO_DIRECTORY", (m_root / "nowhere").wstring());
    fs::path program = qvx::os::ExecutablePath();
    EXPECT_EQ(fs::path(CProECommands().InstallDir()),
              program.parent_path().parent_path().parent_path());
    qvx::os::SetEnv(L"PRO_DIRECTORY", m_root.wstring());
    EXPECT_EQ(CProECommands().InstallDir(), m_root.wstring());
}

TEST_F(ProCommandsTest, CategoryLabelsComeInTheLanguageOfTheTexts) {
    std::map<std::string, std::string> categories{{"stale", "x"}};
    CProECommands::LoadCategories(categories);
    EXPECT_EQ(categories.size(), 44u);
    EXPECT_EQ(categories.count("stale"), 0u);
    EXPECT_EQ(categories["Mapkeys"], "Mapkeys");
    EXPECT_EQ(categories["Ft"], "Feature");
    EXPECT_EQ(categories[""], "All Commands");
    g_langId = 0x0407;
    CProECommands::LoadCategories(categories);
    EXPECT_EQ(categories["Surf"],
              "Fl\xc3\xa4"
              "che");
    EXPECT_EQ(categories[""], "Alle Befehle");
    EXPECT_EQ(CProECommands().AllCommandsLabel(), L"Alle Befehle");
    EXPECT_EQ(CProECommands().ViewsLabel(), L"QvxViews");
}

TEST_F(ProCommandsTest, IconSearchOrder) {
    fs::path ui = m_root / "proe" / "uitools" / "text" / "resource";
    for (const fs::path& file :
         {Resources() / "own.png", Resources() / "own.bif", ui / "slow.bif",
          Resources() / "slow.png", ui / "two.bif.png", Resources() / "plain.jpg"}) {
        Write(file, "icon");
    }
    struct Case {
        std::string name;
        fs::path found;  // empty: nothing found
    } cases[] = {
        {"own.png", Resources() / "own.png"},      // the name's own extension first
        {"own", Resources() / "own.bif"},          //
        {"slow", ui / "slow.bif"},                 // extensions vary slowest
        {"two.bif.png", ui / "two.bif.png"},       // the split is at the last dot
        {"plain.gif", Resources() / "plain.jpg"},  //
        {"dir.v2/plain", {}},                      // a dot in a folder part splits there
        {"missing", {}},
        {(Resources() / "own.png").string(), Resources() / "own.png"},  // an existing path
    };
    // A listing of the folders taken before the search changes no result.
    std::vector<std::wstring> folders = CProECommands::IconFolders();
    folders.push_back(qvx::os::CurrentDirectory());
    qvx::catalogue::CFolderListing listing(folders);
    for (const qvx::catalogue::CFolderListing* with :
         {static_cast<qvx::catalogue::CFolderListing*>(nullptr), &listing}) {
        for (const Case& c : cases) {
            std::wstring path = L"untouched";
            EXPECT_EQ(CProECommands::FindIcon(path, c.name, with), !c.found.empty()) << c.name;
            EXPECT_EQ(path, c.found.empty() ? L"untouched" : c.found.wstring()) << c.name;
        }
    }
    std::wstring path;
    qvx::os::SetEnv(L"PRO_DIRECTORY", std::nullopt);
    EXPECT_FALSE(CProECommands::FindIcon(path, "own"));
}

TEST_F(ProCommandsTest, FolderListingRulesOutOnlyWhatItCanSettle) {
    Write(Resources() / "Cmd.GIF", "icon");
    qvx::catalogue::CFolderListing listing({Resources().wstring(), (m_root / "absent").wstring()});
    const std::wstring folder = Resources().wstring();
    EXPECT_TRUE(listing.MayHold(folder, L"cmd.gif")) << "ASCII case is ignored";
    EXPECT_FALSE(listing.MayHold(folder, L"cmd.png"));
    EXPECT_FALSE(listing.MayHold((m_root / "absent").wstring(), L"cmd.gif"));
    EXPECT_FALSE(listing.MayHold(folder, L"sub/cmd.png")) << "no entry 'sub'";
    EXPECT_FALSE(listing.MayHold(folder, L"C:\\x\\cmd.png")) << "an absolute path joined on";
    EXPECT_TRUE(listing.MayHold(folder, L"CMD.gif/x.png")) << "a path through an entry";
    EXPECT_TRUE(listing.MayHold(folder, L"/cmd.png"));
    EXPECT_TRUE(listing.MayHold(folder, L"\u00e9t\u00e9.png")) << "so is a name outside ASCII";
    EXPECT_TRUE(listing.MayHold((m_root / "unlisted").wstring(), L"x.gif"));
}

// A scan finds every key of the folder in one pass over the language file; each result must
// be the one a parse of that file alone gives.
TEST_F(ProCommandsTest, SampleInstallationScanEqualsParsingEachFileAlone) {
    qvx::os::SetEnv(L"PRO_DIRECTORY", qvx::os::WidenUtf8(QVX_SAMPLE_INSTALL));
    qvx::os::SetEnv(L"LANG", L"de");
    sim::CSession::Instance().unknownCommands.insert("ProCmdUnknownFeature");
    std::vector<CCommandEntry> out;
    ASSERT_TRUE(CProECommands().GetCommands(out));
    fs::path resources = fs::path(QVX_SAMPLE_INSTALL) / "text" / "resource";
    std::map<std::string, std::string> alone;
    for (const auto& entry : fs::directory_iterator(resources)) {
        CQvxProCmdRes res;
        if (!res.Open(entry.path().string()) || alone.count(res.GetActivateCommand())) continue;
        if (entry.path().filename() == "procmdviewrefit2.res") continue;
        alone[res.GetActivateCommand()] = res.GetLabel() + '|' + res.GetHelpText();
    }
    for (const auto& [name, action] : out) {
        EXPECT_EQ(
            qvx::os::NarrowAcp(action.GetLabel()) + '|' + qvx::os::NarrowAcp(action.GetTooltip()),
            alone[name])
            << name;
    }
    EXPECT_EQ(out.size(), 50u);
    // Every category but the mapkeys' own gets at least one command, by the rule the tree
    // build applies: greatest key first, "ProCmd" + key anywhere in the name.
    std::map<std::string, std::string> categories;
    CProECommands::LoadCategories(categories);
    std::vector<std::string> names = Names(out);
    std::map<std::string, int> counts;
    for (auto key = categories.rbegin(); key != categories.rend(); ++key) {
        for (auto it = names.begin(); it != names.end();) {
            if (it->find("ProCmd" + key->first) != std::string::npos) {
                ++counts[key->first];
                it = names.erase(it);
            } else {
                ++it;
            }
        }
    }
    for (const auto& [key, label] : categories) EXPECT_GT(counts[key], 0) << key;
    EXPECT_EQ(counts["View"], 3) << "ProCmdViewFileOpen goes to View, not File";
}

TEST(FirstOccurrencesTest, AgreesWithFindOnRandomTextsAndKeys) {
    std::mt19937 random(7);
    auto word = [&](std::size_t length) {
        std::string s;
        for (std::size_t i = 0; i < length; ++i) s += "ab\n"[random() % 3];
        return s;
    };
    for (int round = 0; round < 300; ++round) {
        std::string text = word(random() % 200);
        std::vector<std::string> keys;
        for (int k = 0; k < 12; ++k) keys.push_back(word(random() % 12));
        if (!text.empty()) keys.push_back(text.substr(random() % text.size()));
        keys.push_back(keys.front());
        std::vector<std::size_t> at = FindFirstOccurrences(text, keys);
        for (std::size_t k = 0; k < keys.size(); ++k) {
            ASSERT_EQ(at[k], text.find(keys[k])) << "round " << round << " key '" << keys[k] << "'";
        }
    }
}

TEST(FirstOccurrencesTest, PreparedLookupsEqualPlainOnes) {
    const std::string text = "xFooy\nBar\nFoo\n   \nlast\nFoo";
    const std::vector<std::string> keys = {"Foo", "Bar", "last", "none", "", "Foo\nBar"};
    CQvxProCmdLangFile plain, prepared;
    plain.OpenText(text);
    prepared.OpenText(text);
    prepared.Prepare(keys);
    for (const std::string& key : keys) {
        std::string a, b;
        EXPECT_EQ(plain.Lookup(a, key.c_str()), prepared.Lookup(b, key.c_str())) << key;
        EXPECT_EQ(a, b) << key;
    }
}

}  // namespace
