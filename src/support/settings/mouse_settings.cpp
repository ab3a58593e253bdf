#include "support/settings/mouse_settings.h"

#include "client/oxapp/device_interfaces.h"
#include "support/halvane_folders.h"
#include "support/os.h"
#include "support/settings/save_threads.h"
#include "support/xml_file.h"

#include <cstring>
#include <sstream>

namespace s3dm {
namespace {

using boost::property_tree::ptree;

/// The settings element's path; '/'-separated since its own name holds dots.
const ptree::path_type kSettingsPath("configuration/userSettings/_3dmouse.properties.settings",
                                     '/');
constexpr const char* kPanZoomKey = "QvxPanZoom";
constexpr const char* kRotationKey = "QvxRotation";
constexpr const char* kDominantKey = "QvxDominant";
constexpr const char* kSpeedKey = "Speed";
constexpr std::uint32_t kValueBufferSize = 1024;

/// The first "setting" child whose name is exactly `key`.
const ptree* FindSetting(const ptree& settings, const char* key) {
    for (const auto& [name, child] : settings) {
        if (name != "setting") continue;
        if (child.get<std::string>("<xmlattr>.name", "") == key) return &child;
    }
    return nullptr;
}

template <typename T>
void LoadValue(const ptree& settings, const char* key, T& field) {
    if (const ptree* setting = FindSetting(settings, key)) {
        field = setting->get<T>("value", field);
    }
}

template <typename T>
void AddSetting(ptree& settings, const char* key, T value) {
    ptree setting;
    setting.put("<xmlattr>.name", key);
    setting.put("<xmlattr>.serializeAs", "String");
    setting.put("value", value);
    settings.add_child("setting", setting);
}

/// The driver's text of `key`, or nothing when it gives none.
std::optional<std::string> ReadValue(oxapp::IAppcfg& config, const char* key) {
    char buffer[kValueBufferSize];
    std::memset(buffer, 0, sizeof buffer);
    std::uint32_t size = kValueBufferSize;
    if (!config.GetValue(key, buffer, &size)) return std::nullopt;
    buffer[kValueBufferSize - 1] = '\0';
    return std::string(buffer);
}

void ReadFlag(oxapp::IAppcfg& config, const char* key, bool& field) {
    // Only "true" is true: the driver's "1" is false, unlike the file's.
    if (auto text = ReadValue(config, key)) field = *text == "true";
}

const char* FlagText(bool on) { return on ? "true" : "false"; }

}  // namespace

C3dmouseSettings::C3dmouseSettings(const std::wstring& appName)
    : C3dmouseSettings(appName, &ovklib::GetRoamingSubFolder) {}

C3dmouseSettings::C3dmouseSettings(const std::wstring& appName, FolderLookup folders)
    : m_folder(L"Quorvex\\" + appName),
      m_fileName(appName + L".user.config"),
      m_folders(std::move(folders)),
      m_saves(std::make_unique<CSaveThreads>()) {}

C3dmouseSettings::~C3dmouseSettings() { WaitForSaves(); }

std::optional<std::wstring> C3dmouseSettings::FilePath() const {
    std::optional<std::wstring> folder = m_folders ? m_folders(m_folder) : std::nullopt;
    if (!folder) return std::nullopt;
    return qvx::os::JoinPath(*folder, m_fileName);
}

void C3dmouseSettings::Load() {
    auto path = FilePath();
    if (!path) return;
    // A missing or corrupt file leaves the tree empty, and every field as it was.
    ptree root;
    ovklib::CXmlFile::Read(*path, root);
    auto settings = root.get_child_optional(kSettingsPath);
    if (!settings) return;
    LoadValue(*settings, kPanZoomKey, m_panZoom);
    LoadValue(*settings, kRotationKey, m_rotation);
    LoadValue(*settings, kDominantKey, m_dominant);
    LoadValue(*settings, kSpeedKey, m_speed);
}

ptree C3dmouseSettings::SettingsTree() const {
    ptree settings;
    AddSetting(settings, kPanZoomKey, m_panZoom);
    AddSetting(settings, kRotationKey, m_rotation);
    AddSetting(settings, kDominantKey, m_dominant);
    AddSetting(settings, kSpeedKey, m_speed);
    ptree root;
    root.add_child(kSettingsPath, settings);
    return root;
}

void C3dmouseSettings::Save() {
    auto path = FilePath();
    if (!path) return;
    // The thread gets its own copy and never touches this object: settings may change, and
    // further saves start, while it writes. Saves exclude each other on the file itself.
    auto tree = std::make_shared<const ptree>(SettingsTree());
    m_saves->Start(
        [file = *path, tree] { ovklib::CXmlFile::Write(file, *tree, "name", /*indentation=*/0); });
}

void C3dmouseSettings::WaitForSaves() { m_saves->JoinAll(); }

void C3dmouseSettings::Read(oxapp::IAppcfg* config) {
    if (!config) return;
    ReadFlag(*config, kPanZoomKey, m_panZoom);
    ReadFlag(*config, kRotationKey, m_rotation);
    ReadFlag(*config, kDominantKey, m_dominant);
    if (auto text = ReadValue(*config, kSpeedKey)) {
        // A text that is no number leaves the speed as it was, as the file's does.
        std::istringstream in(*text);
        float speed = 0.0f;
        if (in >> speed) m_speed = speed;
    }
}

void C3dmouseSettings::Write(oxapp::IAppcfg* config) {
    if (!config) return;
    config->SetValue(kPanZoomKey, FlagText(m_panZoom));
    config->SetValue(kRotationKey, FlagText(m_rotation));
    config->SetValue(kDominantKey, FlagText(m_dominant));
    std::ostringstream speed;
    speed << m_speed;
    config->SetValue(kSpeedKey, speed.str().c_str());
}

}  // namespace s3dm
