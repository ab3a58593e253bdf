// CProECommands: the one catalogue of what the host can do. This part of it owns the user's
// mapkeys, merged from the host's three configuration files, and watches those files.
#pragma once

#include "catalogue/mapkey_file.h"

#include <string>
#include <vector>

class CProECommands {
public:
    /// Finds the host's installation and lists the three configuration files; reads none.
    CProECommands();
    CProECommands(const CProECommands&) = delete;
    CProECommands& operator=(const CProECommands&) = delete;
    virtual ~CProECommands();

    /// Empties the merge and reads every file in order; true if any of them read. A file
    /// whose reading throws ends the reload there.
    bool ReloadMapkeys();
    /// Appends every mapkey in key order, reloading first when the merge is empty; true when
    /// there are any.
    bool GetMapkeys(std::vector<CMapkeyEntry>& out);
    /// True when a configuration file changed; the merge is then already reloaded.
    bool CheckMapkeyFiles();

    const std::vector<CQvxProEMapkeyFile>& MapkeyFiles() const { return m_mapkeyFiles; }

private:
    CMapkeyMap m_mapkeys;
    std::vector<CQvxProEMapkeyFile> m_mapkeyFiles;
    // The two category labels and the two integers are part of the catalogue's data but
    // nothing reads them yet.
    std::wstring m_allCommandsLabel = L"All Commands";
    std::wstring m_viewsLabel = L"QvxViews";
    std::wstring m_installDir;
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
