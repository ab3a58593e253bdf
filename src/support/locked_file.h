// A file opened so that no other writer can open it meanwhile: the settings file's readers
// and writers exclude each other this way, in one process or in several.
#pragma once

#include <memory>
#include <string>

namespace ovklib {

class CLockedFile {
public:
    /// For reading; null when the file is missing or another writer holds it.
    static std::unique_ptr<CLockedFile> OpenForRead(const std::wstring& path);
    /// For reading and writing, created when missing; null when another writer holds it.
    static std::unique_ptr<CLockedFile> OpenForUpdate(const std::wstring& path);

    CLockedFile(const CLockedFile&) = delete;
    CLockedFile& operator=(const CLockedFile&) = delete;
    ~CLockedFile();

    /// The whole content from the start; false when it cannot be read.
    bool ReadAll(std::string& out);
    /// Cuts the file to nothing, and writes `text` from its start in one write.
    bool ReplaceAll(const std::string& text);

private:
    explicit CLockedFile(int descriptor) : m_descriptor(descriptor) {}
    int m_descriptor;
};

}  // namespace ovklib
