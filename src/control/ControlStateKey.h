#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace vexplot {

class MessageSink;
class SettingsStore;

// The registry container of a control's saved state: a key below
// HKEY_CURRENT_USER (the path taken as it is, not below the product key,
// created when absent) holding "ControlStateSize" (REG_DWORD, the number of
// bytes) and "ControlState" (REG_BINARY, the bytes).
//
// Each operation answers 0, or the step that failed: the codes of
// Failure. They are the control's internal outcome and are never shown to
// the host; the store's own failures go to the sink as every key's do.
class ControlStateKey {
public:
    enum Failure : int32_t {
        kNone = 0,
        kKey = 1,       // the key cannot be opened or created
        kSize = 2,      // "ControlStateSize" missing, not a DWORD, negative, or not written
        kMemory = 3,    // no memory for the bytes
        kState = 4,     // "ControlState" missing, not binary, of another size, or not written
        kTempFile = 5,  // the temporary file cannot be made, written or read (the caller's step)
    };
    static constexpr const char* kSizeValue = "ControlStateSize";
    static constexpr const char* kStateValue = "ControlState";

    // `sink` and `store` as for CRegistryKey (null: the defaults).
    ControlStateKey(MessageSink* sink, std::shared_ptr<SettingsStore> store)
        : sink_(sink), store_(std::move(store)) {}

    // The stored bytes into `bytes`. A state whose size disagrees with
    // "ControlStateSize" is refused (kState) rather than cut or padded.
    int32_t Read(std::string_view keyPath, std::vector<uint8_t>* bytes) const;
    // Writes the size, then the bytes.
    int32_t Write(std::string_view keyPath, std::span<const uint8_t> bytes) const;

private:
    MessageSink* sink_;
    std::shared_ptr<SettingsStore> store_;
};

}  // namespace vexplot
