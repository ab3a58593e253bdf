// One of the host's configuration files, read for its mapkeys. The reader does not know the
// configuration language: a line holding "mapkey " is a definition, wherever the word stands
// (so a commented-out definition counts), and continuation lines must say "mapkey(continued)".
#pragma once

#include "catalogue/action.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

/// Merged mapkeys by key sequence (plain byte order): the kProMacro action and the macro body.
using CMapkeyMap = std::map<std::string, CMapkeyEntry>;

class CQvxProEMapkeyFile {
public:
    explicit CQvxProEMapkeyFile(const std::wstring& path);
    virtual ~CQvxProEMapkeyFile() = default;

    /// Merges this file's mapkeys into `map`: a definition replaces the key's entry, an empty
    /// body erases it. False only when the file cannot be opened. Throws std::runtime_error
    /// when the device software's folder (the mapkeys' picture) cannot be had.
    bool Read(CMapkeyMap& map);
    /// True when size or last-write time differ from the last reading or test; a file that
    /// cannot be asked (deleted) is no change.
    bool Changed();

    const std::wstring& Path() const;

private:
    class CQvxProEMapkeyFileImpl;
    std::shared_ptr<CQvxProEMapkeyFileImpl> m_impl;
};

/// Parses one logical line that starts with "mapkey "; fills key, name, label and body.
struct CMapkeyDefinition {
    std::string key, name, label, body;
};
CMapkeyDefinition ParseMapkeyLine(const std::string& line);

/// What a reading meets, line by line (1-based), for tools that explain a file.
class IMapkeyReadObserver {
public:
    /// A definition (or, with an empty body, an erasure) that starts on `line`.
    virtual void OnDefinition(int line, const std::string& rawLine,
                              const CMapkeyDefinition& definition) = 0;
    /// A line behind a trailing backslash that lacks "mapkey(continued)" and is lost.
    virtual void OnLostContinuation(int line, const std::string& rawLine) = 0;

protected:
    ~IMapkeyReadObserver() = default;
};

/// Reads a whole file's text (with a zero byte behind it) into `map`, as Read does.
void ReadMapkeyText(char* text, const std::wstring& imagePath, CMapkeyMap& map,
                    IMapkeyReadObserver* observer = nullptr);
