#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/RegistryValue.h"
#include "settings/RootKey.h"

namespace vexplot {

class MessageSink;
class SettingsStore;

// One open key of the per-user settings store, with the typed reads and
// writes the control's settings code uses. The results keep the registry
// wrapper's conventions, quirks included, because callers rely on them: a
// missing integer reads as -1 (callers take that as "keep the default"), a
// missing string as "", and a write on a closed key returns 0.
class CRegistryKey {
public:
    static constexpr const char* kProductPath = "Software\\Kestrune Corporation\\Vexplot";

    // `sink` (borrowed, must outlive the key) receives failure messages;
    // nullptr means the process's stderr sink. `store` nullptr means the
    // default store, looked up at the first Open.
    explicit CRegistryKey(MessageSink* sink = nullptr, std::shared_ptr<SettingsStore> store = nullptr);
    ~CRegistryKey();
    CRegistryKey(const CRegistryKey&) = delete;
    CRegistryKey& operator=(const CRegistryKey&) = delete;

    // opening:
    // Closes any open key, then creates or opens HKCU\kProductPath[\subKey].
    // Returns 0 on failure (after showing the reason, caption "Error",
    // information icon), 1 when the key existed, 2 when it was created.
    int Open(std::string_view subKey);
    // The same for an explicit root and a full path below it.
    int OpenUnder(RootKey root, std::string_view path);
    // Opens `path` only if it exists (never creates it): 1 opened, 0 missing
    // or failed. Failures of the database are shown as for Open.
    int OpenExisting(RootKey root, std::string_view path);
    void Close();
    bool IsOpen() const { return open_; }
    // The open key's path below its root ("" when closed or at the root).
    const std::string& Path() const { return path_; }

    // typed values (statuses are RegistryStatus codes):
    // REG_SZ, stored with its terminating NUL. 0 when no key is open (also
    // the success code; kept as the callers expect it).
    long WriteString(std::string_view name, std::string_view text);
    // At most 255 bytes: a longer stored string reads as "". Missing, not a
    // string, or closed key: "".
    std::string ReadString(std::string_view name) const;
    // REG_DWORD, 4 bytes. 0 when no key is open.
    long WriteInt(std::string_view name, int32_t value);
    // -1 when closed, missing, not a DWORD or not 4 bytes; a stored -1 reads
    // the same, which callers take as "use the default".
    int32_t ReadInt(std::string_view name) const;
    // REG_BINARY of `size` bytes from `data` (null only when size is 0). 0 when no key is open.
    long WriteBinary(std::string_view name, const void* data, size_t size);
    // Copies the value into `buffer`: 1 on success, -1 when closed, missing,
    // not binary, or larger than `size` (then the buffer is untouched).
    int ReadBinary(std::string_view name, void* buffer, size_t size) const;

    // beyond the Windows wrapper (for `vexplot settings` and engine discovery):
    // Value names in insertion order.
    std::vector<std::string> ValueNames() const;
    // Direct sub-key names, sorted case-insensitively.
    std::vector<std::string> SubKeyNames() const;
    // A value's type, size and bytes; nullopt when closed or missing.
    std::optional<RegistryValue> QueryValue(std::string_view name) const;
    // kFileNotFound when the value does not exist; kInvalidHandle when closed.
    long DeleteValue(std::string_view name);
    // Deletes `subKey` (a path below the open key) with everything under it.
    long DeleteSubKeyTree(std::string_view subKey);

private:
    SettingsStore& Store();
    void Report(const std::string& text);
    void ReportStoreFailure();
    long Write(std::string_view name, ValueType type, const void* data, size_t size);
    std::optional<RegistryValue> ReadTyped(std::string_view name, ValueType type) const;

    MessageSink& sink_;
    std::shared_ptr<SettingsStore> store_;
    std::string path_;
    bool open_ = false;
};

}  // namespace vexplot
