#include "catalogue/pro_commands.h"

#include "catalogue/cmd_res.h"
#include "catalogue/lang_file.h"
#include "catalogue/mapkey_lookup.h"
#include "support/os.h"
#include "support/text_table.h"
#include "toolkit/pro_toolkit.h"

#include <algorithm>
#include <array>
#include <exception>
#include <memory>
#include <unordered_set>

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

CProECommands::CProECommands() {
    using qvx::os::JoinPath;
    m_allCommandsLabel = qvx::LoadText(284);
    m_viewsLabel = qvx::LoadText(283);
    m_installDir = FindHostInstallDir();
    m_mapkeyFiles.emplace_back(JoinPath(JoinPath(m_installDir, L"text"), L"config.pro"));
    m_mapkeyFiles.emplace_back(JoinPath(FindUserHome(), L"config.pro"));
    m_mapkeyFiles.emplace_back(JoinPath(qvx::os::CurrentDirectory(), L"config.pro"));
}

CProECommands::~CProECommands() = default;

void CProECommands::SetMapkeyFiles(const std::vector<std::wstring>& paths) {
    m_mapkeyFiles.clear();
    for (const std::wstring& path : paths) m_mapkeyFiles.emplace_back(path);
    m_mapkeys.clear();
}

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

bool CProECommands::GetCommands(std::vector<CCommandEntry>& out) const {
    using qvx::os::JoinPath;
    out.clear();
    const std::wstring folder = JoinPath(JoinPath(m_installDir, L"text"), L"resource");
    std::vector<std::unique_ptr<CQvxProCmdRes>> files;
    for (const std::wstring& name : qvx::os::FindFiles(folder, L"procmd*.res")) {
        auto file = std::make_unique<CQvxProCmdRes>();
        if (file->OpenUntranslated(qvx::os::NarrowAcp(JoinPath(folder, name)))) {
            files.push_back(std::move(file));
        }
    }
    // Every file of the folder shares one language file: it is read once for the scan, and
    // all their keys are found in it in one pass. Translations are those of one file's parse.
    CQvxProCmdLangFile language;
    bool translated = false;
    if (auto lang = qvx::os::GetEnv(L"LANG"); lang && !lang->empty() && !files.empty()) {
        translated = language.Open(LanguageFileFor(JoinPath(folder, L"procmd.res"))) != 0;
        if (translated) {
            std::vector<std::string> keys;
            for (const auto& file : files) {
                for (const std::string& value : file->TranslatableValues()) keys.push_back(value);
            }
            language.Prepare(keys);
        }
    }
    std::unordered_set<std::string> names;
    for (const auto& file : files) {
        if (translated) file->Translate(&language);
        std::string name = file->GetActivateCommand();
        uiCmdCmdId id = nullptr;
        bool known = ProCmdCmdIdFind(name.c_str(), &id) == PRO_TK_NO_ERROR && id;
        std::string label = file->GetLabel();
        if (known && !label.empty() && names.insert(name).second) {
            using qvx::os::WidenAcp;
            CAction action(WidenAcp(name), WidenAcp(label),
                           file->IsCheckButton() ? CAction::kProCmdCheck : CAction::kProCmd,
                           WidenAcp(file->GetBitmap()), WidenAcp(file->GetHelpText()));
            out.emplace_back(name, std::move(action));
        }
        file->Close();
    }
    return !out.empty();
}

namespace {

struct CategoryRow {
    const char* key;
    std::uint32_t textId;
};

// Searched by the tree build from the greatest key down, so the empty key comes last. Some
// areas of the host are spelt two ways ("Facet" and "Fcet", "Feat" and "Ft") and share a label.
constexpr std::array<CategoryRow, 44> kCategories = {{
    {"Mapkeys", 296}, {"Abz", 201},   {"Anal", 202},  {"AnlSct", 202},  {"ATB", 205},
    {"Browser", 206}, {"Comp", 208},  {"Cut", 210},   {"DataShr", 211}, {"Datum", 212},
    {"Dgm", 213},     {"DTool", 214}, {"Dwg", 215},   {"Edit", 216},    {"Env", 217},
    {"Facet", 219},   {"Fcet", 219},  {"Feat", 221},  {"Fem", 222},     {"File", 223},
    {"Fmt", 224},     {"Free", 225},  {"Ft", 221},    {"Global", 227},  {"Help", 228},
    {"Info", 229},    {"Ins", 230},   {"Mdl", 234},   {"Mdo", 235},     {"Mfg", 236},
    {"Mill", 237},    {"Mm", 238},    {"Model", 239}, {"Mold", 240},    {"Na", 241},
    {"Pnt", 243},     {"Prot", 244},  {"Rst", 246},   {"Sket", 249},    {"Smt", 250},
    {"Surf", 251},    {"Util", 255},  {"View", 256},  {"", 284},
}};

}  // namespace

void CProECommands::LoadCategories(std::map<std::string, std::string>& out) {
    out.clear();
    for (const CategoryRow& row : kCategories) {
        if (out.count(row.key)) continue;
        out.emplace(row.key, qvx::os::NarrowUtf8(qvx::LoadText(row.textId)));
    }
}

std::vector<std::wstring> CProECommands::IconFolders() {
    using qvx::os::JoinPath;
    // The variable itself, read afresh: the installation's fallback to the program's folder
    // does not serve here, and without the variable nothing is found.
    auto root = qvx::os::GetEnv(L"PRO_DIRECTORY");
    if (!root) return {};
    return {
        JoinPath(JoinPath(*root, L"text"), L"resource"),
        JoinPath(JoinPath(JoinPath(JoinPath(*root, L"proe"), L"uitools"), L"text"), L"resource")};
}

bool CProECommands::FindIcon(std::wstring& path, const std::string& name,
                             const qvx::catalogue::CFolderListing* listing) {
    using qvx::os::JoinPath;
    std::wstring wide = qvx::os::WidenUtf8(name);
    // A plain name is one in the current directory, which the listing may hold; a path is
    // looked up for real.
    const bool plain = wide.find_first_of(L"/\\:") == std::wstring::npos;
    if ((!listing || !plain || listing->MayHold(qvx::os::CurrentDirectory(), wide)) &&
        qvx::os::StatFile(wide)) {
        path = wide;
        return true;
    }
    std::vector<std::wstring> extensions;
    // The split is at the last "." wherever it stands, in a folder's name too.
    if (std::size_t dot = wide.rfind(L'.'); dot != std::wstring::npos) {
        extensions.push_back(wide.substr(dot));
        wide.resize(dot);
    }
    for (const wchar_t* extension : {L".bif", L".png", L".gif", L".bmp", L".jpg"}) {
        if (std::find(extensions.begin(), extensions.end(), extension) == extensions.end())
            extensions.emplace_back(extension);
    }
    const std::vector<std::wstring> folders = IconFolders();
    for (const std::wstring& extension : extensions) {
        for (const std::wstring& folder : folders) {
            const std::wstring leaf = wide + extension;
            if (listing && !listing->MayHold(folder, leaf)) continue;
            std::wstring candidate = JoinPath(folder, leaf);
            if (qvx::os::StatFile(candidate)) {
                path = candidate;
                return true;
            }
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
