#include "settings/CRegistryKey.h"

#include <cstring>
#include <span>

#include "settings/KeyPath.h"
#include "settings/RegistryStatus.h"
#include "settings/SettingsStore.h"
#include "settings/StderrMessageSink.h"

namespace vexplot {

namespace {

// The wrapper read strings into a buffer of this many bytes, terminator
// included; a longer value did not fit and read as "".
constexpr size_t kStringReadLimit = 255;
constexpr const char* kErrorCaption = "Error";

}  // namespace

CRegistryKey::CRegistryKey(MessageSink* sink, std::shared_ptr<SettingsStore> store)
    : sink_(sink != nullptr ? *sink : StderrMessageSink::ProcessDefault()),
      store_(std::move(store)) {}

CRegistryKey::~CRegistryKey() {
    Close();
}

// opening:

int CRegistryKey::Open(std::string_view subKey) {
    return OpenUnder(RootKey::CurrentUser, JoinKeyPath(kProductPath, subKey));
}

int CRegistryKey::OpenUnder(RootKey root, std::string_view path) {
    Close();
    if (root != RootKey::CurrentUser) {
        Report("Unsupported registry root key.");
        return 0;
    }
    bool created = false;
    const long status = Store().CreateKey(path, &created);
    if (status == RegistryStatus::kBadPathname) {
        Report("Invalid registry key path \"" + std::string(path) + "\".");
        return 0;
    }
    if (status != RegistryStatus::kSuccess) {
        ReportStoreFailure();
        return 0;
    }
    path_ = path;
    open_ = true;
    return created ? 2 : 1;
}

int CRegistryKey::OpenExisting(RootKey root, std::string_view path) {
    Close();
    if (root != RootKey::CurrentUser || !Store().KeyExists(path)) {
        ReportStoreFailure();
        return 0;
    }
    path_ = path;
    open_ = true;
    return 1;
}

void CRegistryKey::Close() {
    open_ = false;
    path_.clear();
}

// typed values:

long CRegistryKey::WriteString(std::string_view name, std::string_view text) {
    const RegistryValue value = RegistryValue::String(name, text);
    return Write(name, value.type, value.data.data(), value.data.size());
}

std::string CRegistryKey::ReadString(std::string_view name) const {
    const auto value = ReadTyped(name, ValueType::String);
    if (!value || value->data.size() > kStringReadLimit) {
        return {};
    }
    return value->Text();
}

long CRegistryKey::WriteInt(std::string_view name, int32_t value) {
    const RegistryValue dword = RegistryValue::Dword(name, value);
    return Write(name, dword.type, dword.data.data(), dword.data.size());
}

int32_t CRegistryKey::ReadInt(std::string_view name) const {
    const auto value = ReadTyped(name, ValueType::Dword);
    return value ? value->DwordValue().value_or(-1) : -1;
}

long CRegistryKey::WriteBinary(std::string_view name, const void* data, size_t size) {
    return Write(name, ValueType::Binary, data, size);
}

int CRegistryKey::ReadBinary(std::string_view name, void* buffer, size_t size) const {
    const auto value = ReadTyped(name, ValueType::Binary);
    if (!value || value->data.size() > size) {
        return -1;
    }
    if (!value->data.empty()) {
        std::memcpy(buffer, value->data.data(), value->data.size());
    }
    return 1;
}

// beyond the Windows wrapper:

std::vector<std::string> CRegistryKey::ValueNames() const {
    std::vector<std::string> names;
    if (open_) {
        for (auto& value : store_->Values(path_)) {
            names.push_back(std::move(value.name));
        }
    }
    return names;
}

std::vector<std::string> CRegistryKey::SubKeyNames() const {
    return open_ ? store_->SubKeyNames(path_) : std::vector<std::string>();
}

std::optional<RegistryValue> CRegistryKey::QueryValue(std::string_view name) const {
    return open_ ? store_->GetValue(path_, name) : std::nullopt;
}

long CRegistryKey::DeleteValue(std::string_view name) {
    return open_ ? store_->DeleteValue(path_, name) : RegistryStatus::kInvalidHandle;
}

long CRegistryKey::DeleteSubKeyTree(std::string_view subKey) {
    if (!open_) {
        return RegistryStatus::kInvalidHandle;
    }
    if (subKey.empty() || !IsValidKeyPath(subKey)) {
        return RegistryStatus::kBadPathname;
    }
    return store_->DeleteKeyTree(JoinKeyPath(path_, subKey));
}

// helpers:

SettingsStore& CRegistryKey::Store() {
    if (!store_) {
        store_ = SettingsStore::Default();
    }
    return *store_;
}

void CRegistryKey::Report(const std::string& text) {
    sink_.ShowMessage(text, kErrorCaption, MessageSink::kIconInformation);
}

// The store hands out each failure's text once, so a broken database is
// reported by the first key that trips over it, not by every later one.
void CRegistryKey::ReportStoreFailure() {
    if (auto text = Store().TakeFailureToReport()) {
        Report(*text);
    }
}

long CRegistryKey::Write(std::string_view name, ValueType type, const void* data, size_t size) {
    if (!open_) {
        return RegistryStatus::kSuccess;  // the wrapper's quirk: nothing written, yet 0
    }
    if (data == nullptr && size != 0) {
        return RegistryStatus::kInvalidParameter;
    }
    const std::span bytes(static_cast<const uint8_t*>(data), size);
    const long status = store_->PutValue(path_, name, type, bytes);
    // A store that another process keeps locked is said at the first write
    // it stops (the store hands the text out once).
    if (status == RegistryStatus::kLockViolation) ReportStoreFailure();
    return status;
}

std::optional<RegistryValue> CRegistryKey::ReadTyped(std::string_view name, ValueType type) const {
    auto value = QueryValue(name);
    if (value && value->type != type) {
        return std::nullopt;
    }
    return value;
}

}  // namespace vexplot
