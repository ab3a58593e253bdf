// The mapkey reader and the catalogue's merge of the three configuration files.
#include "catalogue/halvane_folder.h"
#include "catalogue/mapkey_file.h"
#include "catalogue/pro_commands.h"
#include "support/os.h"
#include "support/registry.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

CMapkeyMap ReadText(std::string text) {
    CMapkeyMap map;
    ReadMapkeyText(text.data(), L"img.png", map);
    return map;
}

TEST(MapkeyParseTest, NameLabelAndTheGapsBetweenThem) {
    auto d = ParseMapkeyLine("mapkey a @MAPKEY_NAMEOpen;@MAPKEY_LABELOp;~ Command `ProCmdFoo`;");
    EXPECT_EQ(d.key, "a");
    EXPECT_EQ(d.name, "Open");
    EXPECT_EQ(d.label, "Op");
    EXPECT_EQ(d.body, "~ Command `ProCmdFoo`;");
    EXPECT_EQ(ParseMapkeyLine("mapkey a @MAPKEY_NAMEN;x").label, "N");
    EXPECT_EQ(ParseMapkeyLine("mapkey a @MAPKEY_LABELL;x").name, "L");
    auto bare = ParseMapkeyLine("mapkey k x");
    EXPECT_EQ(bare.name, "k");
    EXPECT_EQ(bare.label, "k");
    auto twoBlanks = ParseMapkeyLine("mapkey  x");
    EXPECT_EQ(twoBlanks.key, "");
    EXPECT_EQ(twoBlanks.body, "x");
    EXPECT_EQ(ParseMapkeyLine("mapkey q ;").body, "") << "a lone ';' is an empty body";
    EXPECT_EQ(ParseMapkeyLine("mapkey q no semicolon at all").body, "no semicolon at all");
}

TEST(MapkeyReadTest, ContinuationsJoinLoseAndEnd) {
    auto map = ReadText(
        "mapkey b ~ Command `X`;\\\nmapkey(continued)   ~ Command `Y`;\n"
        "mapkey d one;\\\nnot a continuation\nmapkey(continued) two;\n"
        "mapkey s x;\\ \n"
        "mapkey z tail\\");
    ASSERT_EQ(map.count("b"), 1u);
    EXPECT_EQ(map["b"].second, "~ Command `X`;~ Command `Y`;");
    EXPECT_EQ(map["d"].second, "one;") << "the line without the word is lost";
    EXPECT_EQ(map["s"].second, "x;\\") << "a blank behind the backslash ends the line";
    EXPECT_EQ(map["z"].second, "tail");
    EXPECT_EQ(map.size(), 4u);
}

TEST(MapkeyReadTest, CommentedDefinitionsCountAndEmptyBodiesErase) {
    auto map = ReadText("! mapkey a ~ Close;\r\nMAPKEY up ~ x;\nmapkey b x;\nmapkey b ;\n");
    EXPECT_EQ(map.count("a"), 1u);
    EXPECT_EQ(map.count("up"), 0u) << "the word is found with its case only";
    EXPECT_EQ(map.count("b"), 0u);
    const CAction& action = map["a"].first;
    EXPECT_EQ(action.GetKind(), CAction::kProMacro);
    EXPECT_EQ(action.GetText(), L"a");
    EXPECT_EQ(action.GetImage(), L"img.png");
}

TEST(MapkeyReadTest, BinaryAndUnbalancedInputIsHarmless) {
    std::string junk = "mapkey \xff\xfe @MAPKEY_NAME\x80;\\\\\\\\\n\x01\x02mapkey ;;;;\n";
    junk += std::string(1000, '\\');
    auto map = ReadText(junk);
    EXPECT_LE(map.size(), 2u);
}

class CatalogueFilesTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_savedHome = qvx::os::GetEnv(L"HOME");
        m_savedProDirectory = qvx::os::GetEnv(L"PRO_DIRECTORY");
        m_root = fs::temp_directory_path() / "qvx_catalogue_files";
        fs::remove_all(m_root);
        fs::create_directories(m_root / "install" / "text");
        fs::create_directories(m_root / "home");
        qvx::os::SetEnv(L"PRO_DIRECTORY", (m_root / "install").wstring());
        qvx::os::SetEnv(L"HOME", (m_root / "home").wstring());
        ovklib::SetHalvaneInstallFolderOverride(std::wstring(L"halvane"));
    }
    void TearDown() override {
        qvx::os::SetEnv(L"PRO_DIRECTORY", m_savedProDirectory);
        qvx::os::SetEnv(L"HOME", m_savedHome);
        ovklib::SetHalvaneInstallFolderOverride(std::nullopt);
        std::error_code ec;
        fs::remove_all(m_root, ec);
    }
    void Write(const fs::path& path, const std::string& text) {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
    }
    std::map<std::string, std::string> Bodies(CProECommands& commands) {
        std::vector<CMapkeyEntry> list;
        commands.GetMapkeys(list);
        std::map<std::string, std::string> bodies;
        for (const auto& [action, body] : list)
            bodies[qvx::os::NarrowUtf8(action.GetText())] = body;
        return bodies;
    }
    fs::path m_root;
    std::optional<std::wstring> m_savedHome;
    std::optional<std::wstring> m_savedProDirectory;
};

TEST_F(CatalogueFilesTest, LaterFilesWinAndAnEmptyBodyErasesUntilRedefined) {
    Write(m_root / "install" / "text" / "config.pro", "mapkey a one;\nmapkey b one;\n");
    Write(m_root / "home" / "config.pro", "mapkey b ;\nmapkey c two;\n");
    CProECommands commands;
    auto bodies = Bodies(commands);
    EXPECT_EQ(bodies, (std::map<std::string, std::string>{{"a", "one;"}, {"c", "two;"}}));
    ASSERT_EQ(commands.MapkeyFiles().size(), 3u);
}

TEST_F(CatalogueFilesTest, AChangedFileReloadsAndADeletedOneIsNoChange) {
    fs::path home = m_root / "home" / "config.pro";
    Write(home, "mapkey a one;\n");
    CProECommands commands;
    EXPECT_EQ(Bodies(commands)["a"], "one;");
    EXPECT_FALSE(commands.CheckMapkeyFiles());
    Write(home, "mapkey a three;\n");
    fs::last_write_time(home, fs::last_write_time(home) + std::chrono::seconds(5));
    EXPECT_TRUE(commands.CheckMapkeyFiles());
    EXPECT_EQ(Bodies(commands)["a"], "three;");
    fs::remove(home);
    EXPECT_FALSE(commands.CheckMapkeyFiles());
    EXPECT_EQ(Bodies(commands)["a"], "three;") << "mapkeys stay until another file changes";
}

TEST_F(CatalogueFilesTest, WithoutTheDeviceSoftwareFolderNothingIsRead) {
    Write(m_root / "home" / "config.pro", "mapkey a one;\n");
    ovklib::SetHalvaneInstallFolderOverride(std::nullopt);
    qvx::os::WriteRegistryString(qvx::os::RegistryRoot::LocalMachine, L"SOFTWARE\\Quorvex\\Halvane",
                                 L"Home Directory", std::nullopt);
    CProECommands commands;
    EXPECT_FALSE(commands.ReloadMapkeys());
    EXPECT_TRUE(Bodies(commands).empty());
}

}  // namespace
