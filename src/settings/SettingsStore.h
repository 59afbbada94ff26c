#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/RegistryValue.h"
#include "settings/ValueType.h"

struct sqlite3;

namespace vexplot {

// The per-user settings database that stands in for the registry below
// HKEY_CURRENT_USER: one SQLite file, shared by every process of the user.
//
// Keys are addressed by their full path below the root ("" is the root);
// key paths and value names compare case-insensitively (ASCII, as SQLite's
// NOCASE) and keep the case first written. Values keep their insertion order.
// Every write is one statement or one BEGIN IMMEDIATE transaction, the
// database runs in WAL mode with a busy timeout, so processes writing at the
// same time wait for each other instead of losing values. A lock held past
// the wait (another process keeping a transaction open) is reported once;
// calls then fail at once until one gets through, and reads wait only
// briefly, so a locked store never stalls its host for long.
//
// A database that cannot be opened, is not a settings database or turns out
// to be corrupt makes the store unusable for the rest of the process: reads
// answer "missing", writes fail with RegistryStatus::kBadDatabase or
// kCannotOpen, and the file is never written to, so nothing of it is lost.
// Each failure's text is handed out once (TakeFailureToReport), and an
// unusable store never touches the file again, so a broken file gives one
// message per store, not one per call.
//
// All members are safe to call from several threads at once.
class SettingsStore {
public:
    // opening:
    // The store for `path`, shared by everything in this process that names
    // the same file (":memory:" gives the one in-memory database of the
    // process). Never null; check IsUsable(). Directories are created as needed.
    static std::shared_ptr<SettingsStore> Open(const std::string& path);
    // A store of its own on `path` (its own connection, not shared through
    // the process-wide table). For tools and tests that need a fresh view.
    static std::shared_ptr<SettingsStore> OpenUnshared(const std::string& path);
    // Open(DefaultPath()).
    static std::shared_ptr<SettingsStore> Default();
    // $VEXPLOT_REGISTRY when set, otherwise $XDG_CONFIG_HOME/vexplot/registry.db
    // with ~/.config standing in for an unset or relative XDG_CONFIG_HOME.
    static std::string DefaultPath();

    // Opens `path` at once; Open and OpenUnshared are the usual ways in.
    explicit SettingsStore(std::string path);
    ~SettingsStore();
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    // state:
    const std::string& Path() const { return path_; }
    bool IsUsable();
    // The text of the latest failure, handed out once; nullopt when there
    // was none since the last call.
    std::optional<std::string> TakeFailureToReport();

    // keys (statuses are RegistryStatus codes):
    // Creates `path` and its missing ancestors; `created` tells whether `path`
    // itself was new.
    long CreateKey(std::string_view path, bool* created);
    bool KeyExists(std::string_view path);
    // Deletes `path`, its sub-keys and all their values. The root cannot be deleted.
    long DeleteKeyTree(std::string_view path);
    // Names of the direct sub-keys, case-insensitively sorted (registry order).
    std::vector<std::string> SubKeyNames(std::string_view path);

    // values:
    long PutValue(std::string_view keyPath, std::string_view name, ValueType type,
                  std::span<const uint8_t> data);
    std::optional<RegistryValue> GetValue(std::string_view keyPath, std::string_view name);
    long DeleteValue(std::string_view keyPath, std::string_view name);
    // All values of the key in insertion order (an overwritten value keeps its place).
    std::vector<RegistryValue> Values(std::string_view keyPath);

private:
    // setup:
    bool OpenDatabase();
    bool CreateParentDirectory();
    bool CheckIsSettingsDatabase();
    bool EnableWal();
    bool CreateSchema();
    void CloseDatabase();

    // failures:
    long Fail(int sqliteResult, std::string_view context);
    long Busy(int sqliteResult);
    long Unusable() const { return unusableStatus_; }
    // Sets the connection's busy wait for the next call.
    void Wait(bool writing);
    bool Ready() const { return db_ != nullptr && unusableStatus_ == 0; }

    // helpers (called with mutex_ held):
    std::optional<std::string> QueryText(std::string_view sql, int* result);
    int Execute(std::string_view sql);
    long InWriteTransaction(const std::function<long()>& body);
    std::optional<int64_t> FindKeyId(std::string_view path);
    long InsertKeyChain(std::string_view path, bool* created);

    const std::string path_;
    std::mutex mutex_;
    sqlite3* db_ = nullptr;
    bool opened_ = false;            // set up completely; failures before that are final
    long unusableStatus_ = 0;        // non-zero once the database must not be used again
    std::string failureText_;        // the latest failure, for its one message
    bool failureReported_ = false;
    bool busy_ = false;              // the last call found the lock held by another process
};

}  // namespace vexplot
