#include "support/locked_file.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

namespace ovklib {

std::unique_ptr<CLockedFile> CLockedFile::OpenForRead(const std::wstring& path) {
    int fd = -1;
    if (_wsopen_s(&fd, path.c_str(), _O_RDONLY | _O_BINARY, _SH_DENYWR, 0) != 0) return nullptr;
    return std::unique_ptr<CLockedFile>(new CLockedFile(fd));
}

std::unique_ptr<CLockedFile> CLockedFile::OpenForUpdate(const std::wstring& path) {
    int fd = -1;
    // Read-write, created, sequential, binary so that the rendered text is written as it is.
    if (_wsopen_s(&fd, path.c_str(), _O_RDWR | _O_CREAT | _O_SEQUENTIAL | _O_BINARY, _SH_DENYWR,
                  _S_IREAD | _S_IWRITE) != 0) {
        return nullptr;
    }
    return std::unique_ptr<CLockedFile>(new CLockedFile(fd));
}

CLockedFile::~CLockedFile() { _close(m_descriptor); }

bool CLockedFile::ReadAll(std::string& out) {
    long length = _filelength(m_descriptor);
    if (length < 0) return false;
    out.assign(static_cast<std::size_t>(length), '\0');
    _lseek(m_descriptor, 0, SEEK_SET);
    int got = length > 0 ? _read(m_descriptor, out.data(), static_cast<unsigned>(length)) : 0;
    if (got < 0) return false;
    out.resize(static_cast<std::size_t>(got));
    return true;
}

bool CLockedFile::ReplaceAll(const std::string& text) {
    if (_chsize(m_descriptor, 0) != 0 || _lseek(m_descriptor, 0, SEEK_SET) != 0) return false;
    return _write(m_descriptor, text.data(), static_cast<unsigned>(text.size())) ==
           static_cast<int>(text.size());
}

}  // namespace ovklib
