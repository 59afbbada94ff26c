// The control's saved state: plot files (LoadSerialize, SaveSerialize) and
// the control state in a file or in the settings store (LoadControlState,
// SaveControlState). The byte stream itself is ControlSerializer's.
#include <unistd.h>

#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include "com/AtomicFile.h"
#include "com/ComError.h"
#include "com/FileStream.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/ControlSerializer.h"
#include "control/ControlStateKey.h"
#include "model/ArchiveError.h"
#include "model/CArchive.h"

namespace vexplot {

namespace {

// The registry path carries the stream through this file in the process's
// current directory; it is left behind, as hosts have always found it.
constexpr const char* kStateTempFile = "serialize.tmp";

constexpr int16_t kSourceRegistry = 1;
constexpr int16_t kSourceFile = 2;

// Clears the control's state-operation flag for one state load or save.
class StateOperationScope {
public:
    explicit StateOperationScope(CUI_VexplotCtrl& control) : control_(control) { control_.SetStateOperation(false); }
    ~StateOperationScope() { control_.SetStateOperation(true); }
    StateOperationScope(const StateOperationScope&) = delete;
    StateOperationScope& operator=(const StateOperationScope&) = delete;

private:
    CUI_VexplotCtrl& control_;
};

// Reads all of `path` into `bytes`; false when it cannot be opened or read.
bool ReadWholeFile(const std::string& path, std::vector<uint8_t>* bytes) {
    HRESULT hr = S_OK;
    ComPtr<FileStream> file = FileStream::Open(path, FileStream::Mode::Read, &hr);
    uint64_t size = 0;
    if (!file || FAILED(file->Stat(&size))) return false;
    bytes->resize(static_cast<size_t>(size));
    size_t done = 0;
    while (done < bytes->size()) {
        uint32_t read = 0;
        const auto chunk = static_cast<uint32_t>(std::min<size_t>(bytes->size() - done, 1u << 20));
        if (FAILED(file->Read(bytes->data() + done, chunk, &read)) || read == 0) return false;
        done += read;
    }
    return true;
}

// The temporary file is made anew each time: whatever has its name is
// removed first (a link itself, never what it points to), and the file is
// created exclusively, so a link planted under the name cannot redirect the
// write into another file.
ComPtr<FileStream> CreateStateTempFile() {
    ::unlink(kStateTempFile);
    HRESULT hr = S_OK;
    return FileStream::Open(kStateTempFile, FileStream::Mode::CreateNew, &hr);
}

bool WriteStateTempFile(const std::vector<uint8_t>& bytes) {
    ComPtr<FileStream> file = CreateStateTempFile();
    if (!file) return false;
    uint32_t written = 0;
    if (!bytes.empty() && (FAILED(file->Write(bytes.data(), static_cast<uint32_t>(bytes.size()), &written)) ||
                           written != bytes.size()))
        return false;
    return SUCCEEDED(file->Close());
}

}  // namespace

// -- the published methods --

int32_t CUI_VexplotCtrl::LoadSerialize(const std::string& path) {
    return LoadStateFile(path, fileFlag_ == 1) ? 1 : 0;
}

int32_t CUI_VexplotCtrl::SaveSerialize(const std::string& path) { return SaveStateFile(path) ? 1 : 0; }

bool CUI_VexplotCtrl::OpenPlotFile(const std::string& path) { return LoadStateFile(path, true); }

void CUI_VexplotCtrl::LoadControlState(const std::string& source, int16_t sourceType) {
    if ((sourceType != kSourceRegistry && sourceType != kSourceFile) || source.empty() || !IsCreated()) return;
    const PixelRect placement = rect_;
    {
        StateOperationScope scope(*this);
        if (sourceType == kSourceFile)
            LoadSerialize(source);
        else
            stateFailure_ = LoadStateFromRegistry(source);
    }
    // A loaded state never moves or sizes the control on its host.
    site_->MoveWindow(Window(WindowRole::Control), placement);
    rect_ = placement;
    LayoutAndRedraw();
}

void CUI_VexplotCtrl::SaveControlState(const std::string& source, int16_t sourceType) {
    if ((sourceType != kSourceRegistry && sourceType != kSourceFile) || source.empty() || !IsCreated()) return;
    StateOperationScope scope(*this);
    if (sourceType == kSourceFile)
        SaveSerialize(source);
    else
        stateFailure_ = SaveStateToRegistry(source);
}

// -- files --

bool CUI_VexplotCtrl::LoadStateFile(const std::string& path, bool whole) {
    if (!IsCreated()) return false;
    HRESULT hr = S_OK;
    std::string reason;
    ComPtr<FileStream> file = FileStream::Open(path, FileStream::Mode::Read, &hr, &reason);
    if (!file) {
        FireError(hr, ("Cannot open \"" + path + "\": " + reason + ".").c_str());
        return false;
    }
    try {
        CArchive archive(file.Get(), CArchive::Mode::Load, CArchive::kDefaultBufferSize);
        ControlSerializer(*this).Load(archive, whole);
        archive.Close();
        return true;
    } catch (const std::exception& e) {
        ReportStateFailure("\"" + path + "\"", true, e);
        return false;
    }
}

// The file is replaced only once the whole stream is on the disk: a save
// that fails leaves the previous file as it was.
bool CUI_VexplotCtrl::SaveStateFile(const std::string& path) {
    if (!IsCreated()) return false;
    try {
        WriteFileAtomically(path, [&](IStream& stream) {
            fileFlag_ = 1;
            CArchive archive(&stream, CArchive::Mode::Store, CArchive::kDefaultBufferSize);
            ControlSerializer(*this).Store(archive, true);
            archive.Close();
        });
        return true;
    } catch (const std::exception& e) {
        // Also a file that cannot even be created (a missing folder, no
        // permission): the host hears which file and why, besides FALSE.
        ReportStateFailure("\"" + path + "\"", false, e);
        return false;
    }
}

// -- the settings store --

int32_t CUI_VexplotCtrl::LoadStateFromRegistry(const std::string& keyPath) {
    std::vector<uint8_t> bytes;
    const int32_t failure = ControlStateKey(sink_, store_).Read(keyPath, &bytes);
    if (failure != ControlStateKey::kNone) return failure;
    if (!WriteStateTempFile(bytes)) return ControlStateKey::kTempFile;
    HRESULT hr = S_OK;
    ComPtr<FileStream> file = FileStream::Open(kStateTempFile, FileStream::Mode::Read, &hr);
    if (!file) return ControlStateKey::kTempFile;
    try {
        CArchive archive(file.Get(), CArchive::Mode::Load, CArchive::kDefaultBufferSize);
        ControlSerializer(*this).Load(archive, fileFlag_ == 1);
        archive.Close();
    } catch (const std::exception& e) {
        ReportStateFailure("the saved state in \"" + keyPath + "\"", true, e);
    }
    return ControlStateKey::kNone;
}

int32_t CUI_VexplotCtrl::SaveStateToRegistry(const std::string& keyPath) {
    {
        ComPtr<FileStream> file = CreateStateTempFile();
        if (!file) return ControlStateKey::kTempFile;
        try {
            CArchive archive(file.Get(), CArchive::Mode::Store, CArchive::kDefaultBufferSize);
            ControlSerializer(*this).Store(archive, fileFlag_ == 1);
            archive.Close();
            ThrowIfFailed(file->Close(), IStream::kIid);
        } catch (const std::exception& e) {
            ReportStateFailure(std::string("\"") + kStateTempFile + "\"", false, e);
            return ControlStateKey::kTempFile;
        }
    }
    std::vector<uint8_t> bytes;
    try {
        if (!ReadWholeFile(kStateTempFile, &bytes)) return ControlStateKey::kTempFile;
    } catch (const std::bad_alloc&) {
        return ControlStateKey::kMemory;
    }
    return ControlStateKey(sink_, store_).Write(keyPath, bytes);
}

void CUI_VexplotCtrl::ReportStateFailure(const std::string& where, bool loading, const std::exception& error) {
    HRESULT code = E_FAIL;
    std::string text;
    if (const auto* archive = dynamic_cast<const ArchiveError*>(&error)) {
        code = STG_E_DOCFILECORRUPT;
        text = where + " is not a valid Vexplot plot or control state: " + archive->what() + ".";
    } else {
        std::string detail = error.what();
        if (const auto* com = dynamic_cast<const ComError*>(&error)) {
            code = com->Code();
            // Words for a person, never a bare code or an interface's GUID.
            detail = com->Description().empty() ? HResultWords(code) : com->Description();
        } else if (dynamic_cast<const std::bad_alloc*>(&error)) {
            code = E_OUTOFMEMORY;
            detail = "out of memory";
        }
        text = std::string(loading ? "Loading " : "Saving ") + where + " failed: " + detail + ".";
    }
    FireError(code, text.c_str());
}

}  // namespace vexplot
