#pragma once
#include <cstdint>
#include <string>

#include "com/ComObject.h"
#include "com/IStream.h"

namespace vexplot {

// An IStream over a file, unbuffered: each Read and Write is a system call on
// the caller's buffer, so a bulk reader gets the bytes straight into its own
// storage and a small-item writer puts its own buffer in front.
//
// System errors map to: STG_E_FILENOTFOUND (no such file or folder),
// STG_E_ACCESSDENIED (permissions, a read-only file system, a folder, or an
// existing file for CreateNew), STG_E_MEDIUMFULL (no space or quota left),
// STG_E_READFAULT / STG_E_WRITEFAULT (any other failure of a read / write).
class FileStream final : public ComObject<IStream> {
public:
    enum class Mode {
        Read,          // an existing regular file, read only (never a FIFO, device or folder)
        CreateAlways,  // write only; created, or emptied when it exists
        CreateNew,     // write only; fails when the name exists, even as a dangling link
    };

    // Opens `path`. On failure returns null with *hr set and, when `reason`
    // is given, the system's reason in words ("No such file or directory").
    static ComPtr<FileStream> Open(const std::string& path, Mode mode, HRESULT* hr, std::string* reason = nullptr);

    // Takes ownership of the open descriptor `fd`; use Open.
    FileStream(int fd, std::string path) : fd_(fd), path_(std::move(path)) {}

    // IStream. Seek may move past the end; a later Write fills the gap with
    // zeros. Commit flushes the file to the device (fsync).
    HRESULT Read(void* buffer, uint32_t size, uint32_t* read) override;
    HRESULT Write(const void* buffer, uint32_t size, uint32_t* written) override;
    HRESULT Seek(int64_t move, uint32_t origin, uint64_t* newPosition) override;
    HRESULT SetSize(uint64_t size) override;
    HRESULT Commit(uint32_t flags) override;
    HRESULT Stat(uint64_t* size) override;

    // Closes the file now and reports what closing reports (a write error
    // the system deferred); later calls fail with E_UNEXPECTED.
    HRESULT Close();
    const std::string& Path() const { return path_; }

    // The HRESULT for a system error number, `fallback` for unlisted ones.
    static HRESULT FromErrno(int error, HRESULT fallback);

private:
    ~FileStream() override;

    int fd_;
    std::string path_;
};

}  // namespace vexplot
