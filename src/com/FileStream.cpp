#include "com/FileStream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace vexplot {

HRESULT FileStream::FromErrno(int error, HRESULT fallback) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENAMETOOLONG: return STG_E_FILENOTFOUND;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ETXTBSY: return STG_E_ACCESSDENIED;
        case EEXIST: return STG_E_FILEALREADYEXISTS;
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return STG_E_MEDIUMFULL;
        case ENOMEM: return E_OUTOFMEMORY;
        default: return fallback;
    }
}

namespace {

std::string NotRegularReason(mode_t mode) {
    if (S_ISDIR(mode)) return "it is a folder, not a file";
    if (S_ISFIFO(mode)) return "it is a pipe (FIFO), not a regular file";
    if (S_ISSOCK(mode)) return "it is a socket, not a regular file";
    if (S_ISCHR(mode) || S_ISBLK(mode)) return "it is a device, not a regular file";
    return "it is not a regular file";
}

}  // namespace

ComPtr<FileStream> FileStream::Open(const std::string& path, Mode mode, HRESULT* hr, std::string* reason) {
    int flags = O_CLOEXEC;
    switch (mode) {
        // Without O_NONBLOCK, opening a FIFO would wait for a writer for ever.
        case Mode::Read: flags |= O_RDONLY | O_NONBLOCK; break;
        case Mode::CreateAlways: flags |= O_WRONLY | O_CREAT | O_TRUNC; break;
        case Mode::CreateNew: flags |= O_WRONLY | O_CREAT | O_EXCL; break;
    }
    int fd = -1;
    do {
        fd = ::open(path.c_str(), flags, 0666);
    } while (fd < 0 && errno == EINTR);
    int error = fd < 0 ? errno : 0;
    std::string refusal;
    // Only a regular file is read: a folder opens on this system but reads
    // fail, and a FIFO, socket or device would block or never end.
    if (fd >= 0 && mode == Mode::Read) {
        struct stat info {};
        if (::fstat(fd, &info) != 0) {
            error = errno;
        } else if (!S_ISREG(info.st_mode)) {
            error = S_ISDIR(info.st_mode) ? EISDIR : EACCES;
            refusal = NotRegularReason(info.st_mode);
        } else {
            ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
        }
        if (error != 0) {
            ::close(fd);
            fd = -1;
        }
    }
    if (fd < 0) {
        if (hr) *hr = FromErrno(error, mode == Mode::Read ? STG_E_READFAULT : STG_E_WRITEFAULT);
        if (reason) *reason = refusal.empty() ? std::strerror(error) : refusal;
        return nullptr;
    }
    if (hr) *hr = S_OK;
    return MakeComObject<FileStream>(fd, path);
}

FileStream::~FileStream() {
    if (fd_ >= 0) ::close(fd_);
}

HRESULT FileStream::Read(void* buffer, uint32_t size, uint32_t* read) {
    if (read) *read = 0;
    if (fd_ < 0) return E_UNEXPECTED;
    if (!buffer && size > 0) return E_POINTER;
    auto* p = static_cast<uint8_t*>(buffer);
    uint32_t done = 0;
    while (done < size) {
        const ssize_t n = ::read(fd_, p + done, size - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return FromErrno(errno, STG_E_READFAULT);
        if (n == 0) break;  // end of file: S_OK with fewer bytes
        done += static_cast<uint32_t>(n);
    }
    if (read) *read = done;
    return S_OK;
}

HRESULT FileStream::Write(const void* buffer, uint32_t size, uint32_t* written) {
    if (written) *written = 0;
    if (fd_ < 0) return E_UNEXPECTED;
    if (!buffer && size > 0) return E_POINTER;
    const auto* p = static_cast<const uint8_t*>(buffer);
    uint32_t done = 0;
    while (done < size) {
        const ssize_t n = ::write(fd_, p + done, size - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            if (written) *written = done;
            return FromErrno(errno, STG_E_WRITEFAULT);
        }
        done += static_cast<uint32_t>(n);
    }
    if (written) *written = done;
    return S_OK;
}

HRESULT FileStream::Seek(int64_t move, uint32_t origin, uint64_t* newPosition) {
    if (fd_ < 0) return E_UNEXPECTED;
    int whence = SEEK_SET;
    switch (origin) {
        case STREAM_SEEK_SET: whence = SEEK_SET; break;
        case STREAM_SEEK_CUR: whence = SEEK_CUR; break;
        case STREAM_SEEK_END: whence = SEEK_END; break;
        default: return STG_E_INVALIDFUNCTION;
    }
    const off_t at = ::lseek(fd_, static_cast<off_t>(move), whence);
    if (at < 0) return errno == EINVAL ? STG_E_INVALIDFUNCTION : FromErrno(errno, STG_E_READFAULT);
    if (newPosition) *newPosition = static_cast<uint64_t>(at);
    return S_OK;
}

HRESULT FileStream::SetSize(uint64_t size) {
    if (fd_ < 0) return E_UNEXPECTED;
    if (::ftruncate(fd_, static_cast<off_t>(size)) != 0) return FromErrno(errno, STG_E_WRITEFAULT);
    return S_OK;
}

HRESULT FileStream::Commit(uint32_t) {
    if (fd_ < 0) return E_UNEXPECTED;
    if (::fsync(fd_) != 0) return FromErrno(errno, STG_E_WRITEFAULT);
    return S_OK;
}

HRESULT FileStream::Stat(uint64_t* size) {
    if (!size) return E_POINTER;
    if (fd_ < 0) return E_UNEXPECTED;
    struct stat info {};
    if (::fstat(fd_, &info) != 0) return FromErrno(errno, STG_E_READFAULT);
    *size = static_cast<uint64_t>(info.st_size);
    return S_OK;
}

HRESULT FileStream::Close() {
    if (fd_ < 0) return E_UNEXPECTED;
    const int fd = std::exchange(fd_, -1);
    // close() is not retried on EINTR: the descriptor is gone either way.
    if (::close(fd) != 0 && errno != EINTR) return FromErrno(errno, STG_E_WRITEFAULT);
    return S_OK;
}

}  // namespace vexplot
