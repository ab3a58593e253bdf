// CProECommands: the one catalogue of what the host can do. It finds where the host is
// installed, lists the host's commands from the command resource files there, owns the
// user's mapkeys merged from the host's three configuration files and watches those files,
// and gives the table of command categories and the icons of commands.
#pragma once

#include "catalogue/folder_listing.h"

#include "catalogue/mapkey_file.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// A host command: its host name and its kProCmd (or kProCmdCheck) action.
using CCommandEntry = std::pair<std::string, CAction>;

class CProECommands {
public:
    /// Loads the category labels, finds the host's installation and lists the three
    /// configuration files; reads none. Makes no host call: it runs when the library loads.
    CProECommands();
    CProECommands(const CProECommands&) = delete;
    CProECommands& operator=(const CProECommands&) = delete;
    virtual ~CProECommands();

    /// Reads the mapkeys from `paths`, in this order, instead of the host's three files; the
    /// merge is emptied and read again on the next use.
    void SetMapkeyFiles(const std::vector<std::wstring>& paths);

    /// Empties the merge and reads every file in order; true if any of them read. A file
    /// whose reading throws ends the reload there.
    bool ReloadMapkeys();
    /// Appends every mapkey in key order, reloading first when the merge is empty; true when
    /// there are any.
    bool GetMapkeys(std::vector<CMapkeyEntry>& out);
    /// True when a configuration file changed; the merge is then already reloaded.
    bool CheckMapkeyFiles();

    /// Fills `out` afresh with the commands of the installation's "text/resource/procmd*.res"
    /// files, in listing order: only those the running host knows and that have a label; of
    /// two files with one command name the first listed stands. True when `out` is not empty.
    bool GetCommands(std::vector<CCommandEntry>& out) const;

    /// The command categories: part of a command name (behind "ProCmd") to its label, UTF-8.
    /// The empty key takes what no other key fits; "Mapkeys" is the mapkeys' category.
    static void LoadCategories(std::map<std::string, std::string>& out);

    /// Finds the picture file of a command or mapkey image `name` (UTF-8): `name`
    /// itself when it exists, else the name with each of its own extension, ".bif", ".png",
    /// ".gif", ".bmp" and ".jpg" in turn, looked for in PRO_DIRECTORY's "text/resource" and
    /// then "proe/uitools/text/resource". True and the path in `path` when one was found.
    /// `listing`, when given, spares the look-ups of names it shows absent; it is to list the
    /// current directory (for a relative `name`) and IconFolders().
    static bool FindIcon(std::wstring& path, const std::string& name,
                         const qvx::catalogue::CFolderListing* listing = nullptr);
    /// The two folders FindIcon searches, for PRO_DIRECTORY as it is now; empty without it.
    static std::vector<std::wstring> IconFolders();

    const std::vector<CQvxProEMapkeyFile>& MapkeyFiles() const { return m_mapkeyFiles; }
    const std::wstring& InstallDir() const { return m_installDir; }
    const std::wstring& AllCommandsLabel() const { return m_allCommandsLabel; }
    const std::wstring& ViewsLabel() const { return m_viewsLabel; }

private:
    CMapkeyMap m_mapkeys;
    std::vector<CQvxProEMapkeyFile> m_mapkeyFiles;
    std::wstring m_allCommandsLabel;
    std::wstring m_viewsLabel;
    std::wstring m_installDir;
    // Part of the catalogue's data; nothing reads them.
    std::int32_t m_unusedA = -3;
    std::int32_t m_unusedB = -1;
};

/// The host's installation: PRO_DIRECTORY when it names something that exists, else three
/// levels above the host's program (<root>\<machine>\obj\<program>).
std::wstring FindHostInstallDir();
/// The user's home: HOME, else HOMEDRIVE joined with HOMEPATH, else USERPROFILE.
std::wstring FindUserHome();

/// The catalogue of the process, made when the library loads.
CProECommands& TheProECommands();
