#include "catalogue/pro_commands.h"

#include "catalogue/mapkey_lookup.h"
#include "support/os.h"

#include <exception>

namespace {

std::wstring ParentOf(const std::wstring& path) {
    std::size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash);
}

}  // namespace

std::wstring FindHostInstallDir() {
    std::wstring dir = qvx::os::GetEnv(L"PRO_DIRECTORY").value_or(L"");
    if (!dir.empty() && qvx::os::StatFile(dir)) return dir;
    std::wstring program = qvx::os::ExecutablePath();
    for (int i = 0; i < 3; ++i) program = ParentOf(program);
    return program;
}

std::wstring FindUserHome() {
    if (auto home = qvx::os::GetEnv(L"HOME")) return *home;
    auto drive = qvx::os::GetEnv(L"HOMEDRIVE");
    auto path = qvx::os::GetEnv(L"HOMEPATH");
    if (drive || path) return qvx::os::JoinPath(drive.value_or(L""), path.value_or(L""));
    return qvx::os::GetEnv(L"USERPROFILE").value_or(L"");
}

CProECommands::CProECommands() : m_installDir(FindHostInstallDir()) {
    using qvx::os::JoinPath;
    m_mapkeyFiles.emplace_back(JoinPath(JoinPath(m_installDir, L"text"), L"config.pro"));
    m_mapkeyFiles.emplace_back(JoinPath(FindUserHome(), L"config.pro"));
    m_mapkeyFiles.emplace_back(JoinPath(qvx::os::CurrentDirectory(), L"config.pro"));
}

CProECommands::~CProECommands() = default;

bool CProECommands::ReloadMapkeys() {
    m_mapkeys.clear();
    bool any = false;
    try {
        for (CQvxProEMapkeyFile& file : m_mapkeyFiles) any = file.Read(m_mapkeys) || any;
    } catch (const std::exception&) {
        // The files behind the one that failed are not read.
    }
    return any;
}

bool CProECommands::GetMapkeys(std::vector<CMapkeyEntry>& out) {
    if (m_mapkeys.empty()) ReloadMapkeys();
    for (const auto& [key, entry] : m_mapkeys) out.push_back(entry);
    return !m_mapkeys.empty();
}

bool CProECommands::CheckMapkeyFiles() {
    for (CQvxProEMapkeyFile& file : m_mapkeyFiles) {
        if (file.Changed()) {
            ReloadMapkeys();
            return true;
        }
    }
    return false;
}

CProECommands& TheProECommands() {
    static CProECommands commands;
    return commands;
}

namespace {

// The catalogue is made when the library loads, and actions find its mapkeys from then on.
const bool g_registered = [] {
    qvx::catalogue::SetMapkeyProvider(
        [](std::vector<CMapkeyEntry>& out) { return TheProECommands().GetMapkeys(out); });
    return true;
}();

}  // namespace
