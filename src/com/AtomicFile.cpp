#include "com/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "com/FileStream.h"
#include "com/StreamError.h"

namespace vexplot {

namespace {

std::string FolderOf(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// A hidden name beside `path` that no other writer uses: process id and a
// per-process counter, created exclusively (O_EXCL) to rule out clashes.
ComPtr<FileStream> CreateTemporary(const std::string& path, std::string* tempPath) {
    static std::atomic<unsigned> counter{0};
    const size_t slash = path.find_last_of('/');
    const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    HRESULT hr = S_OK;
    std::string reason;
    for (int attempt = 0; attempt < 100; ++attempt) {
        *tempPath = folder + "." + name + "." + std::to_string(::getpid()) + "-" +
                    std::to_string(counter.fetch_add(1)) + ".tmp";
        ComPtr<FileStream> file = FileStream::Open(*tempPath, FileStream::Mode::CreateNew, &hr, &reason);
        if (file) return file;
        struct stat clash {};
        if (::lstat(tempPath->c_str(), &clash) != 0) break;  // failed for another reason than the name
    }
    throw StreamError(hr, "cannot create a temporary file in " + FolderOf(path) + ": " + reason);
}

void Check(HRESULT hr, const std::string& what) {
    if (FAILED(hr)) throw StreamError(hr, what + " failed: " + HResultWords(hr));
}

// Makes the rename itself durable; a failure here loses nothing, so it is
// not reported.
void SyncFolder(const std::string& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

}  // namespace

void WriteFileAtomically(const std::string& path, const std::function<void(IStream&)>& write) {
    std::string tempPath;
    ComPtr<FileStream> file = CreateTemporary(path, &tempPath);
    try {
        struct stat existing {};
        if (::stat(path.c_str(), &existing) == 0) ::chmod(tempPath.c_str(), existing.st_mode & 07777);
        write(*file);
        Check(file->Commit(0), "flushing " + tempPath);
        Check(file->Close(), "closing " + tempPath);
        if (::rename(tempPath.c_str(), path.c_str()) != 0) {
            const int error = errno;
            throw StreamError(FileStream::FromErrno(error, STG_E_WRITEFAULT),
                              "cannot replace " + path + ": " + std::strerror(error));
        }
    } catch (...) {
        file.Reset();
        ::unlink(tempPath.c_str());
        throw;
    }
    SyncFolder(FolderOf(path));
}

}  // namespace vexplot
