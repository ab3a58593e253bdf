// The device settings: the file they are kept in, and the driver's configuration values.
#include "client/oxapp/device_interfaces.h"
#include "support/os.h"
#include "support/settings/mouse_settings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
const std::string kDefaults =
    "<configuration><userSettings><_3dmouse.properties.settings>"
    "<setting name=\"QvxPanZoom\" serializeAs=\"String\"><value>true</value></setting>"
    "<setting name=\"QvxRotation\" serializeAs=\"String\"><value>true</value></setting>"
    "<setting name=\"QvxDominant\" serializeAs=\"String\"><value>false</value></setting>"
    "<setting name=\"Speed\" serializeAs=\"String\"><value>1</value></setting>"
    "</_3dmouse.properties.settings></userSettings></configuration>";

/// A settings section holding `settings` (the "setting" elements as text).
std::string File(const std::string& settings, const std::string& beside = "") {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><configuration>" + beside +
           "<userSettings><_3dmouse.properties.settings>" + settings +
           "</_3dmouse.properties.settings></userSettings></configuration>";
}

std::string Setting(const std::string& name, const std::string& value) {
    return "<setting name=\"" + name + "\" serializeAs=\"String\"><value>" + value +
           "</value></setting>";
}

/// The driver's configuration values as the settings see them.
class CFakeConfig final : public oxapp::IAppcfg {
public:
    void AddRef() override {}
    void Release() override {}
    bool WriteActionImages(const oxImage_t*, std::uint32_t) override { return false; }
    bool WriteActions(const oxActionNodeEx_s*) override { return false; }
    bool ActivateActionSet(const char*) override { return false; }
    bool GetValue(const char* key, char* buffer, std::uint32_t* size) override {
        sizesOffered.push_back(*size);
        auto it = values.find(key);
        if (refuse || it == values.end() || it->second.size() >= *size) return false;
        std::copy(it->second.c_str(), it->second.c_str() + it->second.size() + 1, buffer);
        return true;
    }
    bool SetValue(const char* key, const char* value) override {
        written.emplace_back(std::string(key) + "=" + value);
        values[key] = value;
        return !refuse;
    }

    std::map<std::string, std::string> values;
    std::vector<std::string> written;
    std::vector<std::uint32_t> sizesOffered;
    bool refuse = false;
};

class MouseSettingsTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_root = fs::temp_directory_path() /
                 ("qvx_settings_" +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(m_root);
    }
    void TearDown() override {
        std::error_code ec;
        fs::remove_all(m_root, ec);
    }

    /// Settings whose roaming folder is the test's own.
    std::unique_ptr<s3dm::C3dmouseSettings> Make() {
        return std::make_unique<s3dm::C3dmouseSettings>(
            L"QvxProENGINEER", [this](const std::wstring& sub) -> std::optional<std::wstring> {
                std::string relative = qvx::os::NarrowUtf8(sub);
                for (char& c : relative) c = c == '\\' ? '/' : c;
                fs::path dir = (m_root / relative).make_preferred();
                fs::create_directories(dir);
                return dir.wstring();
            });
    }
    fs::path Path() const {
        return m_root / "Quorvex" / "QvxProENGINEER" / "QvxProENGINEER.user.config";
    }
    void Plant(const std::string& text) {
        fs::create_directories(Path().parent_path());
        std::ofstream(Path(), std::ios::binary) << text;
    }
    std::string Saved(s3dm::C3dmouseSettings& settings) {
        settings.Save();
        settings.WaitForSaves();
        std::ifstream in(Path(), std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    fs::path m_root;
};

TEST_F(MouseSettingsTest, FirstStartMakesTheFolderAndWritesTheDefaultsOnOneLine) {
    auto settings = Make();
    settings->Load();
    EXPECT_EQ(Saved(*settings), kDeclaration + kDefaults);
    EXPECT_EQ(settings->FilePath(), Path().wstring());
}

TEST_F(MouseSettingsTest, LoadTakesEachKeyByExactNameAndKeepsWhatIsMissingOrMalformed) {
    Plant(File(Setting("speed", "3") + Setting("Speed", "abc") + Setting("QvxPanZoom", "0") +
               Setting("QvxRotation", "0") + Setting("QvxRotation", "1") +
               Setting("QvxDominant", "1")));
    auto settings = Make();
    settings->SetSpeed(0.5f);
    settings->Load();
    EXPECT_FLOAT_EQ(settings->GetSpeed(), 0.5f) << "\"speed\" is not \"Speed\"; \"abc\" no number";
    EXPECT_FALSE(settings->GetPanZoom());
    EXPECT_FALSE(settings->GetRotation()) << "the first setting of a name counts";
    EXPECT_TRUE(settings->GetDominant()) << "the file's \"1\" is true";
}

TEST_F(MouseSettingsTest, MissingCorruptOrSectionlessFilesLeaveTheValuesAndSaveRepairsThem) {
    for (const char* content : {"", "<configuration><userSettings>", "<other/>"}) {
        Plant(content);
        auto settings = Make();
        settings->SetSpeed(2.0f);
        settings->Load();
        EXPECT_FLOAT_EQ(settings->GetSpeed(), 2.0f) << content;
        EXPECT_TRUE(settings->GetPanZoom()) << content;
        settings->SetSpeed(1.0f);
        std::string saved = Saved(*settings);
        EXPECT_NE(saved.find(kDefaults), std::string::npos) << content << " became " << saved;
    }
}

TEST_F(MouseSettingsTest, SaveUpdatesItsOwnKeysInPlaceAndKeepsEveryOtherWritersSettings) {
    Plant(File(Setting("PivotMode", "2") + Setting("Speed", "8") + Setting("LockHorizon", "true"),
               "<appSettings><add key=\"x\"/></appSettings>"));
    auto settings = Make();
    settings->Load();
    EXPECT_FLOAT_EQ(settings->GetSpeed(), 8.0f);
    settings->SetSpeed(0.25f);
    settings->SetDominant(true);
    std::string saved = Saved(*settings);
    EXPECT_NE(saved.find("<appSettings><add key=\"x\"/></appSettings>"), std::string::npos)
        << saved;
    EXPECT_NE(saved.find("<_3dmouse.properties.settings>" + Setting("PivotMode", "2") +
                         Setting("Speed", "0.25") + Setting("LockHorizon", "true") +
                         Setting("QvxPanZoom", "true") + Setting("QvxRotation", "true") +
                         Setting("QvxDominant", "true") + "</_3dmouse.properties.settings>"),
              std::string::npos)
        << saved;
}

TEST_F(MouseSettingsTest, WithoutAFolderNothingIsReadOrWritten) {
    s3dm::C3dmouseSettings settings(L"QvxProENGINEER",
                                    [](const std::wstring&) { return std::nullopt; });
    settings.SetSpeed(4.0f);
    settings.Load();
    settings.Save();
    settings.WaitForSaves();
    EXPECT_FLOAT_EQ(settings.GetSpeed(), 4.0f);
    EXPECT_FALSE(settings.FilePath());
    EXPECT_FALSE(fs::exists(m_root));
}

TEST_F(MouseSettingsTest, ManySavesInARowLeaveTheNewestOnDiskAndNoThreadBehind) {
    {
        auto settings = Make();
        for (int i = 1; i <= 20; ++i) {
            settings->SetSpeed(static_cast<float>(i));
            settings->Save();
        }
        // The destructor waits for the saves still writing.
    }
    auto reread = Make();
    reread->Load();
    EXPECT_FLOAT_EQ(reread->GetSpeed(), 20.0f);
}

TEST(MouseSettingsDriverTest, ReadTakesOnlyTrueAsTrueAndKeepsWhatTheDriverDoesNotGive) {
    CFakeConfig config;
    config.values = {{"QvxPanZoom", "1"}, {"QvxRotation", "true"}, {"Speed", "0.5"}};
    s3dm::C3dmouseSettings settings(L"QvxProENGINEER", nullptr);
    settings.SetRotation(false);
    settings.SetDominant(true);
    settings.Read(&config);
    EXPECT_FALSE(settings.GetPanZoom()) << "the driver's \"1\" is false";
    EXPECT_TRUE(settings.GetRotation());
    EXPECT_TRUE(settings.GetDominant()) << "no value from the driver";
    EXPECT_FLOAT_EQ(settings.GetSpeed(), 0.5f);
    EXPECT_EQ(config.sizesOffered, (std::vector<std::uint32_t>(4, 1024u))) << "reset before each";

    config.values["Speed"] = "fast";
    settings.Read(&config);
    EXPECT_FLOAT_EQ(settings.GetSpeed(), 0.5f) << "no number";
    config.refuse = true;
    config.values["Speed"] = "3";
    settings.Read(&config);
    settings.Read(nullptr);
    EXPECT_FLOAT_EQ(settings.GetSpeed(), 0.5f) << "a refusing driver changes nothing";
}

TEST(MouseSettingsDriverTest, WriteGivesTheFourValuesInOrderAsText) {
    CFakeConfig config;
    s3dm::C3dmouseSettings settings(L"QvxProENGINEER", nullptr);
    settings.SetPanZoom(false);
    settings.SetSpeed(0.25f);
    settings.Write(&config);
    EXPECT_EQ(config.written, (std::vector<std::string>{"QvxPanZoom=false", "QvxRotation=true",
                                                        "QvxDominant=false", "Speed=0.25"}));
    config.refuse = true;
    settings.Write(&config);
    settings.Write(nullptr);
    EXPECT_EQ(config.written.size(), 8u) << "a refusal is not retried";
}

}  // namespace
