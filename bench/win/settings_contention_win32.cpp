// Settings under contention: two processes save the device settings (C3dmouseSettings, as two
// hosts with the plug-in would) SAVES times each into one file, beside a third process that
// merges a section of another program into the same file as often. Meanwhile this process reads
// the file over and over. At the end the file must parse, the section planted before the start
// and the third writer's section must be there with its last value, and the settings must be
// the last values of one of the two savers.
//
//   bench_settings_contention.exe [SAVES] [FOLDER]
//   bench_settings_contention.exe --saver ID SAVES FOLDER     (a child: one host's plug-in)
//   bench_settings_contention.exe --other SAVES FILE          (a child: the other program)
#include "support/os.h"
#include "support/settings/mouse_settings.h"
#include "support/win32_handles.h"
#include "support/windows_api.h"
#include "support/xml_file.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using boost::property_tree::ptree;

const ptree::path_type kSettingsPath("configuration/userSettings/_3dmouse.properties.settings",
                                     '/');
const ptree::path_type kOtherPath("configuration/userSettings/OtherProgram.Settings", '/');
const ptree::path_type kPlantedPath("configuration/userSettings/PlantedBeforeStart", '/');
constexpr wchar_t kAppName[] = L"QvxProENGINEER";

/// Speed of saver `id`'s save `i`: unique across savers and exact as a float.
float SpeedOf(int id, int i) { return static_cast<float>(id * 100000 + i); }

std::wstring SettingsFile(const std::wstring& folder) {
    return folder + L"\\Quorvex\\" + kAppName + L"\\" + kAppName + L".user.config";
}

ptree Section(const char* name, const std::string& value) {
    ptree setting;
    setting.put("<xmlattr>.name", name);
    setting.put("value", value);
    ptree section;
    section.add_child("setting", setting);
    return section;
}

std::string SettingValue(const ptree& root, const ptree::path_type& path, const char* name) {
    auto section = root.get_child_optional(path);
    if (!section) return {};
    for (const auto& [tag, child] : *section) {
        if (tag == "setting" && child.get<std::string>("<xmlattr>.name", "") == name) {
            return child.get<std::string>("value", "");
        }
    }
    return {};
}

int Saver(int id, int saves, const std::wstring& folder) {
    s3dm::C3dmouseSettings settings(kAppName, [folder](const std::wstring& sub) {
        std::wstring path = folder + L"\\" + sub;
        std::error_code ec;
        fs::create_directories(path, ec);
        return std::optional<std::wstring>(path);
    });
    for (int i = 1; i <= saves; ++i) {
        settings.SetSpeed(SpeedOf(id, i));
        settings.SetPanZoom(i % 2 == 0);
        settings.Save();
    }
    settings.WaitForSaves();
    return 0;
}

int Other(int saves, const std::wstring& file) {
    int failed = 0;
    for (int i = 1; i <= saves; ++i) {
        ptree root;
        root.add_child(kOtherPath, Section("Counter", std::to_string(i)));
        if (!ovklib::CXmlFile::Write(file, root, "name", /*indentation=*/0)) ++failed;
    }
    if (failed) std::printf("other writer: %d merges failed\n", failed);
    return failed ? 1 : 0;
}

ovklib::CKernelHandle Spawn(const std::wstring& arguments) {
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring command = L"\"" + std::wstring(self) + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
        std::printf("cannot start %ls (error %lu)\n", command.c_str(), GetLastError());
        return ovklib::CKernelHandle();
    }
    CloseHandle(process.hThread);
    return ovklib::CKernelHandle(process.hProcess);
}

int Parent(int saves, const std::wstring& folder) {
    std::error_code ec;
    fs::remove_all(folder, ec);
    fs::create_directories(folder + L"\\Quorvex\\" + kAppName, ec);
    const std::wstring file = SettingsFile(folder);
    {
        ptree root;
        root.add_child(kPlantedPath, Section("Kept", "yes"));
        ovklib::CXmlFile::Write(file, root, /*indentation=*/0);
    }
    const std::wstring n = std::to_wstring(saves);
    auto start = std::chrono::steady_clock::now();
    std::vector<ovklib::CKernelHandle> children;
    children.push_back(Spawn(L"--saver 1 " + n + L" \"" + folder + L"\""));
    children.push_back(Spawn(L"--saver 2 " + n + L" \"" + folder + L"\""));
    children.push_back(Spawn(L"--other " + n + L" \"" + file + L"\""));
    std::vector<HANDLE> handles;
    for (const auto& child : children) {
        if (!child) return 2;
        handles.push_back(child.Get());
    }
    // Reads while they write: each must find a whole file.
    int reads = 0;
    int unreadable = 0;
    while (WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), TRUE, 0) ==
           WAIT_TIMEOUT) {
        ptree root;
        ++reads;
        if (!ovklib::CXmlFile::Read(file, root) || !root.get_child_optional(kPlantedPath)) {
            ++unreadable;
        }
        Sleep(5);
    }
    double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    int childFailures = 0;
    for (HANDLE h : handles) {
        DWORD code = 1;
        GetExitCodeProcess(h, &code);
        if (code != 0) ++childFailures;
    }

    ptree root;
    bool parses = ovklib::CXmlFile::Read(file, root);
    std::string planted = SettingValue(root, kPlantedPath, "Kept");
    std::string counter = SettingValue(root, kOtherPath, "Counter");
    std::string speed = SettingValue(root, kSettingsPath, "Speed");
    std::string panZoom = SettingValue(root, kSettingsPath, "QvxPanZoom");
    float finalSpeed = speed.empty() ? -1.0f : std::strtof(speed.c_str(), nullptr);
    int stood = finalSpeed == SpeedOf(1, saves) ? 1 : finalSpeed == SpeedOf(2, saves) ? 2 : 0;
    bool lastPanZoom = panZoom == (saves % 2 == 0 ? "true" : "false");

    std::printf("%d saves by each of 2 savers beside %d merges of another section: %.1f s\n", saves,
                saves, seconds);
    std::printf("reads while writing: %d, unreadable or without the planted section: %d\n", reads,
                unreadable);
    std::printf(
        "at the end: parses %s, planted section %s, other section's counter %s (of %d), "
        "speed %s (%s), pan-zoom %s\n",
        parses ? "yes" : "NO", planted == "yes" ? "kept" : "LOST",
        counter.empty() ? "LOST" : counter.c_str(), saves, speed.c_str(),
        stood ? (stood == 1 ? "saver 1's last" : "saver 2's last") : "NOT a last value",
        panZoom.c_str());
    bool ok = parses && planted == "yes" && counter == std::to_string(saves) && stood != 0 &&
              lastPanZoom && unreadable == 0 && childFailures == 0;
    std::printf("%s\n", ok ? "PASSED" : "FAILED");
    return ok ? 0 : 1;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    std::vector<std::wstring> args(argv + 1, argv + argc);
    if (args.size() == 4 && args[0] == L"--saver") {
        return Saver(std::stoi(args[1]), std::stoi(args[2]), args[3]);
    }
    if (args.size() == 3 && args[0] == L"--other") return Other(std::stoi(args[1]), args[2]);
    int saves = args.size() > 0 ? std::stoi(args[0]) : 10000;
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    std::wstring folder = args.size() > 1 ? args[1] : std::wstring(temp) + L"qvx-contention";
    return Parent(saves, folder);
}
