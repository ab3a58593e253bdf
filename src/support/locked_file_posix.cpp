// On the native build an advisory lock stands for the sharing mode that denies writers.
#include "support/locked_file.h"
#include "support/os.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ovklib {
namespace {

int OpenLocked(const std::wstring& path, int flags, int lock) {
    int fd = ::open(qvx::os::NarrowUtf8(path).c_str(), flags, 0644);
    if (fd < 0) return -1;
    if (flock(fd, lock | LOCK_NB) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

}  // namespace

std::unique_ptr<CLockedFile> CLockedFile::OpenForRead(const std::wstring& path) {
    int fd = OpenLocked(path, O_RDONLY, LOCK_SH);
    return fd < 0 ? nullptr : std::unique_ptr<CLockedFile>(new CLockedFile(fd));
}

std::unique_ptr<CLockedFile> CLockedFile::OpenForUpdate(const std::wstring& path) {
    int fd = OpenLocked(path, O_RDWR | O_CREAT, LOCK_EX);
    return fd < 0 ? nullptr : std::unique_ptr<CLockedFile>(new CLockedFile(fd));
}

CLockedFile::~CLockedFile() { ::close(m_descriptor); }

bool CLockedFile::ReadAll(std::string& out) {
    struct stat st {};
    if (fstat(m_descriptor, &st) != 0) return false;
    out.assign(static_cast<std::size_t>(st.st_size), '\0');
    ssize_t got = pread(m_descriptor, out.data(), out.size(), 0);
    if (got < 0) return false;
    out.resize(static_cast<std::size_t>(got));
    return true;
}

bool CLockedFile::ReplaceAll(const std::string& text) {
    if (ftruncate(m_descriptor, 0) != 0) return false;
    return pwrite(m_descriptor, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
}

}  // namespace ovklib
