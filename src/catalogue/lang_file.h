// A host language file: translations found by plain substring search. The translation of a
// key is the whole line behind the line where the key first occurs, wherever in that line.
#pragma once

#include <memory>
#include <string>
#include <vector>

class CQvxProCmdLangFile {
public:
    CQvxProCmdLangFile();
    virtual ~CQvxProCmdLangFile();
    CQvxProCmdLangFile(const CQvxProCmdLangFile&) = delete;
    CQvxProCmdLangFile& operator=(const CQvxProCmdLangFile&) = delete;

    /// Loads the whole file; 0 when a file is open already or it cannot be read.
    int Open(const std::wstring& path);
    /// Loads `text` as if it were a file's contents; for tests and tools.
    int OpenText(std::string text);
    int Close();
    /// Finds where each of `keys` first occurs in one pass over the loaded text, so that their
    /// look-ups need not search it again. Results are the same with or without this.
    void Prepare(const std::vector<std::string>& keys);
    /// 1 and the translation (trimmed; may be empty) in `out`, or 0 and the key itself.
    int Lookup(std::string& out, const char* key) const;

private:
    class CQvxProCmdLangFilePrivate;
    std::unique_ptr<CQvxProCmdLangFilePrivate> m_private;
};

/// The language file for a resource file when LANG is set: one per directory, the directory's
/// own path with ".txt" (so "C:\host\text\resource\procmdfoo.res" gives
/// "C:\host\text\resource.txt"). LANG acts only as a switch.
std::wstring LanguageFileFor(const std::wstring& resourcePath);
