#include "settings/SettingsStore.h"

#include <pwd.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <system_error>

#include "settings/KeyPath.h"
#include "settings/RegistryStatus.h"
#include "settings/SqliteStatement.h"

namespace vexplot {

namespace {

constexpr const char* kMemoryPath = ":memory:";
// Long enough that a burst of writers from several processes queue up rather
// than fail (each holds the lock for milliseconds), short enough that a
// store another process keeps locked costs a host one short pause; a write
// that still cannot get the lock reports kLockViolation.
constexpr int kBusyTimeoutMs = 2000;
// Opening waits longer: a process switching a new file to WAL mode holds it
// exclusively, and a store that fails to open stays unusable.
constexpr int kOpenBusyTimeoutMs = 10000;
// Reads wait much less: a reader in WAL mode only meets a lock when another
// process holds the database exclusively, and then the value reads as
// missing (the default) rather than stalling the host.
constexpr int kReadBusyTimeoutMs = 250;
constexpr int kWalRetryPauseMs = 5;
// Marks a file as ours ("VXPT"), so a path that names some other program's
// SQLite database is refused instead of having our tables added to it.
constexpr int64_t kApplicationId = 0x56585054;
constexpr int kSchemaVersion = 1;

constexpr const char* kSchemaSql =
    "CREATE TABLE IF NOT EXISTS keys("
    "  id INTEGER PRIMARY KEY,"
    "  parent INTEGER NOT NULL,"
    "  path TEXT NOT NULL UNIQUE COLLATE NOCASE);"
    "CREATE INDEX IF NOT EXISTS keys_by_parent ON keys(parent);"
    "CREATE TABLE IF NOT EXISTS vals("
    "  id INTEGER PRIMARY KEY,"  // insertion order; an upsert keeps the row
    "  key INTEGER NOT NULL,"
    "  name TEXT NOT NULL COLLATE NOCASE,"
    "  type INTEGER NOT NULL,"
    "  data BLOB NOT NULL,"
    "  UNIQUE(key, name));"
    "INSERT OR IGNORE INTO keys(id, parent, path) VALUES(1, 0, '');"
    "PRAGMA application_id = 1448628308;"
    "PRAGMA user_version = 1;";
static_assert(kApplicationId == 1448628308 && kSchemaVersion == 1, "keep kSchemaSql in step");

// The one process-wide table of open stores. Every CRegistryKey of the
// process that names the same database shares one store: one connection, one
// in-memory database for ":memory:", one failure message. Stores stay open
// for the life of the process, as the registry's per-user root does.
class ProcessWideStoreTable {
public:
    static ProcessWideStoreTable& Instance() {
        static ProcessWideStoreTable table;
        return table;
    }

    std::shared_ptr<SettingsStore> Get(const std::string& path) {
        const std::string key = NormalisedPath(path);
        std::lock_guard lock(mutex_);
        auto& store = stores_[key];
        if (!store) {
            store = std::make_shared<SettingsStore>(path);
        }
        return store;
    }

private:
    static std::string NormalisedPath(const std::string& path) {
        if (path == kMemoryPath) {
            return path;
        }
        std::error_code error;
        const auto absolute = std::filesystem::absolute(path, error);
        return error ? path : absolute.lexically_normal().string();
    }

    std::mutex mutex_;
    std::map<std::string, std::shared_ptr<SettingsStore>> stores_;
};

long StatusFor(int sqliteResult) {
    switch (sqliteResult & 0xff) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE: return RegistryStatus::kSuccess;
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return RegistryStatus::kLockViolation;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH: return RegistryStatus::kAccessDenied;
    case SQLITE_NOMEM: return RegistryStatus::kOutOfMemory;
    case SQLITE_FULL: return RegistryStatus::kDiskFull;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB: return RegistryStatus::kBadDatabase;
    case SQLITE_CANTOPEN: return RegistryStatus::kCannotOpen;
    default: return RegistryStatus::kIoFailed;
    }
}

bool MeansDamagedFile(int sqliteResult) {
    const int primary = sqliteResult & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

std::string HomeDirectory() {
    if (const char* home = std::getenv("HOME"); home != nullptr && home[0] != '\0') {
        return home;
    }
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> buffer(16384);
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found) {
        return found->pw_dir;
    }
    return ".";
}

}  // namespace

// opening:

std::shared_ptr<SettingsStore> SettingsStore::Open(const std::string& path) {
    return ProcessWideStoreTable::Instance().Get(path);
}

std::shared_ptr<SettingsStore> SettingsStore::OpenUnshared(const std::string& path) {
    return std::make_shared<SettingsStore>(path);
}

std::shared_ptr<SettingsStore> SettingsStore::Default() {
    return Open(DefaultPath());
}

std::string SettingsStore::DefaultPath() {
    if (const char* path = std::getenv("VEXPLOT_REGISTRY"); path != nullptr && path[0] != '\0') {
        return path;
    }
    // The XDG rules ignore a relative XDG_CONFIG_HOME.
    const char* config = std::getenv("XDG_CONFIG_HOME");
    const std::string base =
        config != nullptr && config[0] == '/' ? std::string(config) : HomeDirectory() + "/.config";
    return base + "/vexplot/registry.db";
}

SettingsStore::SettingsStore(std::string path) : path_(std::move(path)) {
    opened_ = OpenDatabase();
    if (!opened_) {
        if (unusableStatus_ == RegistryStatus::kSuccess) {
            unusableStatus_ = RegistryStatus::kCannotOpen;
        }
        CloseDatabase();
    }
}

SettingsStore::~SettingsStore() {
    CloseDatabase();
}

// Each step records its own failure and makes the store unusable. The checks
// come before anything that writes, so a file that is not a healthy settings
// database is only ever read.
bool SettingsStore::OpenDatabase() {
    if (!CreateParentDirectory()) {
        return false;
    }
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(path_.c_str(), &db_, flags, nullptr);
    if (result != SQLITE_OK) {
        Fail(result, "cannot be opened");
        return false;
    }
    sqlite3_busy_timeout(db_, kOpenBusyTimeoutMs);
    if (!CheckIsSettingsDatabase()) {
        return false;
    }
    // A read-only file is still worth reading; its writes fail one by one.
    if (sqlite3_db_readonly(db_, "main") == 1) {
        return true;
    }
    return EnableWal() && CreateSchema();
}

bool SettingsStore::CreateParentDirectory() {
    const auto parent = std::filesystem::path(path_).parent_path();
    if (path_ == kMemoryPath || parent.empty()) {
        return true;
    }
    std::error_code error;
    std::filesystem::create_directories(parent, error);
    if (error) {
        failureText_ = "The settings database \"" + path_ + "\" cannot be used: cannot create \"" +
                       parent.string() + "\": " + error.message();
        unusableStatus_ = RegistryStatus::kCannotOpen;
        return false;
    }
    return true;
}

// Read-only checks: the file must be a sound SQLite database, and either
// empty or one of ours.
bool SettingsStore::CheckIsSettingsDatabase() {
    int result = SQLITE_OK;
    const auto verdict = QueryText("PRAGMA quick_check(1)", &result);
    if (!verdict) {
        Fail(result, "is damaged or not a database");
        return false;
    }
    if (*verdict != "ok") {
        Fail(SQLITE_CORRUPT, "is damaged (" + *verdict + ")");
        return false;
    }
    const auto owner = QueryText(
        "SELECT CASE WHEN application_id = 0 AND (SELECT count(*) FROM sqlite_schema) = 0 "
        "THEN 'empty' WHEN application_id = " + std::to_string(kApplicationId) +
        " THEN 'ours' ELSE 'foreign' END FROM pragma_application_id", &result);
    if (!owner) {
        Fail(result, "cannot be read");
        return false;
    }
    if (*owner == "foreign") {
        Fail(SQLITE_NOTADB, "belongs to another program");
        return false;
    }
    return true;
}

bool SettingsStore::EnableWal() {
    if (path_ == kMemoryPath) {
        return true;
    }
    // The mode is kept in the file, so only the first opener changes it.
    int result = SQLITE_OK;
    if (QueryText("PRAGMA journal_mode", &result) == "wal") {
        return true;
    }
    // The switch needs an exclusive lock and, unlike other statements, does
    // not wait through the busy handler: another process opening the new
    // file at the same moment makes it fail at once. So wait here instead.
    auto mode = QueryText("PRAGMA journal_mode=WAL", &result);
    for (int waited = 0; (result & 0xff) == SQLITE_BUSY && waited < kOpenBusyTimeoutMs;
         waited += kWalRetryPauseMs) {
        sqlite3_sleep(kWalRetryPauseMs);
        mode = QueryText("PRAGMA journal_mode=WAL", &result);
    }
    if (mode != "wal") {
        Fail(mode ? SQLITE_ERROR : result, "cannot be switched to WAL mode");
        return false;
    }
    return true;
}

bool SettingsStore::CreateSchema() {
    // Skip the write lock on every start once the tables are there.
    int result = SQLITE_OK;
    const auto present =
        QueryText("SELECT count(*) FROM sqlite_schema WHERE name IN ('keys', 'vals')", &result);
    if (present != "2") {
        const long status = InWriteTransaction([this] {
            const int created = Execute(kSchemaSql);
            return created == SQLITE_OK ? RegistryStatus::kSuccess : Fail(created, "cannot be set up");
        });
        if (status != RegistryStatus::kSuccess) {
            return false;
        }
    }
    // NORMAL is durable in WAL mode except for the last commits at a power loss.
    result = Execute("PRAGMA synchronous=NORMAL");
    return result == SQLITE_OK || Fail(result, "cannot be set up") == RegistryStatus::kSuccess;
}

void SettingsStore::CloseDatabase() {
    sqlite3_close_v2(db_);
    db_ = nullptr;
}

// state:

bool SettingsStore::IsUsable() {
    std::lock_guard lock(mutex_);
    return Ready();
}

std::optional<std::string> SettingsStore::TakeFailureToReport() {
    std::lock_guard lock(mutex_);
    if (failureText_.empty() || failureReported_) {
        return std::nullopt;
    }
    failureReported_ = true;
    return failureText_;
}

// failures:

// Records the failure as the one to report next. A damaged file, or any
// failure before the store was ready, makes the store unusable for good.
long SettingsStore::Fail(int sqliteResult, std::string_view context) {
    const int primary = sqliteResult & 0xff;
    if (opened_ && (primary == SQLITE_BUSY || primary == SQLITE_LOCKED)) return Busy(sqliteResult);
    // The connection's own message is more precise, but only when it is about this failure.
    const bool connectionKnows = db_ != nullptr && (sqlite3_errcode(db_) & 0xff) == primary;
    std::string text = "The settings database \"" + path_ + "\" " + std::string(context) + ": ";
    text += connectionKnows ? sqlite3_errmsg(db_) : sqlite3_errstr(sqliteResult);
    // SQLite keeps errno only for these two; elsewhere it could be stale.
    if (connectionKnows && (primary == SQLITE_CANTOPEN || primary == SQLITE_IOERR) &&
        sqlite3_system_errno(db_) != 0) {
        text += " (" + std::generic_category().message(sqlite3_system_errno(db_)) + ")";
    }
    failureText_ = std::move(text);
    failureReported_ = false;
    const long status = StatusFor(sqliteResult);
    if (MeansDamagedFile(sqliteResult) || !opened_) {
        unusableStatus_ = status;
    }
    return status;
}

// Another process holds the lock past the wait. Said once when it starts;
// until a call gets through again, calls do not wait at all, so a store
// locked for minutes costs one wait, not one per value.
long SettingsStore::Busy(int sqliteResult) {
    if (!busy_) {
        busy_ = true;
        failureText_ = "The settings database \"" + path_ +
                       "\" is locked by another process: settings that cannot be read keep their "
                       "defaults and changes are not saved until it is released";
        failureReported_ = false;
    }
    return StatusFor(sqliteResult);
}

void SettingsStore::Wait(bool writing) {
    if (!db_) return;
    sqlite3_busy_timeout(db_, busy_ ? 0 : writing ? kBusyTimeoutMs : kReadBusyTimeoutMs);
}

// helpers:

// The first column of the first row, with the statement finished before
// returning, so no read transaction stays open behind the caller's back.
std::optional<std::string> SettingsStore::QueryText(std::string_view sql, int* result) {
    SqliteStatement query(db_, sql);
    *result = query.Step();
    if (*result != SQLITE_ROW) {
        return std::nullopt;
    }
    *result = SQLITE_OK;
    return query.ColumnText(0);
}

int SettingsStore::Execute(std::string_view sql) {
    return sqlite3_exec(db_, std::string(sql).c_str(), nullptr, nullptr, nullptr);
}

// Runs `body` inside BEGIN IMMEDIATE, which takes the write lock up front
// (waiting up to the busy timeout), so nothing another process writes can
// slip between our reads and writes. `body` returns a RegistryStatus; any
// failure rolls back.
long SettingsStore::InWriteTransaction(const std::function<long()>& body) {
    int result = Execute("BEGIN IMMEDIATE");
    if (result != SQLITE_OK) {
        return Fail(result, "cannot be written");
    }
    const long status = body();
    if (status == RegistryStatus::kSuccess) {
        result = Execute("COMMIT");
        if (result == SQLITE_OK) {
            busy_ = false;
            return status;
        }
        Fail(result, "cannot be written");
    }
    Execute("ROLLBACK");
    return status != RegistryStatus::kSuccess ? status : StatusFor(result);
}

std::optional<int64_t> SettingsStore::FindKeyId(std::string_view path) {
    SqliteStatement find(db_, "SELECT id FROM keys WHERE path = ?1");
    find.BindText(1, path);
    const int result = find.Step();
    if (result == SQLITE_ROW) {
        return find.ColumnInt(0);
    }
    if (result != SQLITE_DONE) {
        Fail(result, "cannot be read");
    }
    return std::nullopt;
}

long SettingsStore::InsertKeyChain(std::string_view path, bool* created) {
    SqliteStatement insert(db_,
                           "INSERT OR IGNORE INTO keys(parent, path) "
                           "SELECT id, ?2 FROM keys WHERE path = ?1");
    for (const std::string_view prefix : KeyPathPrefixes(path)) {
        insert.Reset();
        insert.BindText(1, ParentKeyPath(prefix));
        insert.BindText(2, prefix);
        if (const int result = insert.Run(); result != SQLITE_DONE) {
            return Fail(result, "cannot be written");
        }
        *created = sqlite3_changes(db_) > 0;
    }
    return RegistryStatus::kSuccess;
}

// keys:

long SettingsStore::CreateKey(std::string_view path, bool* created) {
    std::lock_guard lock(mutex_);
    *created = false;
    if (!IsValidKeyPath(path)) {
        return RegistryStatus::kBadPathname;
    }
    if (!Ready()) {
        return Unusable();
    }
    Wait(true);
    // Looking first keeps opening an existing key free of the write lock and
    // working on a read-only file.
    if (FindKeyId(path)) {
        return RegistryStatus::kSuccess;
    }
    return InWriteTransaction([&] { return InsertKeyChain(path, created); });
}

bool SettingsStore::KeyExists(std::string_view path) {
    std::lock_guard lock(mutex_);
    Wait(false);
    return Ready() && FindKeyId(path).has_value();
}

long SettingsStore::DeleteKeyTree(std::string_view path) {
    std::lock_guard lock(mutex_);
    if (path.empty()) {
        return RegistryStatus::kInvalidParameter;
    }
    if (!Ready()) {
        return Unusable();
    }
    Wait(true);
    return InWriteTransaction([&]() -> long {
        const auto id = FindKeyId(path);
        if (!id) {
            return RegistryStatus::kFileNotFound;
        }
        constexpr const char* kTree =
            "WITH RECURSIVE tree(id) AS (SELECT ?1 UNION ALL "
            "  SELECT keys.id FROM keys JOIN tree ON keys.parent = tree.id) ";
        for (const char* action : {"DELETE FROM vals WHERE key IN tree",
                                   "DELETE FROM keys WHERE id IN tree"}) {
            SqliteStatement remove(db_, std::string(kTree) + action);
            remove.BindInt(1, *id);
            if (const int result = remove.Run(); result != SQLITE_DONE) {
                return Fail(result, "cannot be written");
            }
        }
        return RegistryStatus::kSuccess;
    });
}

std::vector<std::string> SettingsStore::SubKeyNames(std::string_view path) {
    std::lock_guard lock(mutex_);
    std::vector<std::string> names;
    if (!Ready()) {
        return names;
    }
    Wait(false);
    SqliteStatement list(db_,
                         "SELECT child.path FROM keys child JOIN keys parent "
                         "ON child.parent = parent.id WHERE parent.path = ?1 ORDER BY child.path");
    list.BindText(1, path);
    int result = SQLITE_OK;
    while ((result = list.Step()) == SQLITE_ROW) {
        names.emplace_back(LastKeyName(list.ColumnText(0)));
    }
    if (result != SQLITE_DONE) {
        Fail(result, "cannot be read");
    }
    return names;
}

// values:

long SettingsStore::PutValue(std::string_view keyPath, std::string_view name, ValueType type,
                             std::span<const uint8_t> data) {
    std::lock_guard lock(mutex_);
    if (!Ready()) {
        return Unusable();
    }
    Wait(true);
    // One statement, so atomic on its own; the upsert keeps the row, and so
    // the value's place and first-written name.
    SqliteStatement put(db_,
                        "INSERT INTO vals(key, name, type, data) "
                        "SELECT id, ?2, ?3, ?4 FROM keys WHERE path = ?1 "
                        "ON CONFLICT(key, name) DO UPDATE SET type = excluded.type, "
                        "data = excluded.data");
    put.BindText(1, keyPath);
    put.BindText(2, name);
    put.BindInt(3, static_cast<int64_t>(type));
    put.BindBlob(4, data);
    if (const int result = put.Run(); result != SQLITE_DONE) {
        return Fail(result, "cannot be written");
    }
    busy_ = false;
    // No row: the key is gone (deleted since the caller opened it).
    return sqlite3_changes(db_) > 0 ? RegistryStatus::kSuccess : RegistryStatus::kKeyDeleted;
}

std::optional<RegistryValue> SettingsStore::GetValue(std::string_view keyPath,
                                                     std::string_view name) {
    std::lock_guard lock(mutex_);
    if (!Ready()) {
        return std::nullopt;
    }
    Wait(false);
    SqliteStatement get(db_,
                        "SELECT vals.name, vals.type, vals.data FROM vals JOIN keys "
                        "ON vals.key = keys.id WHERE keys.path = ?1 AND vals.name = ?2");
    get.BindText(1, keyPath);
    get.BindText(2, name);
    const int result = get.Step();
    if (result == SQLITE_ROW) {
        return RegistryValue{get.ColumnText(0), static_cast<ValueType>(get.ColumnInt(1)),
                             get.ColumnBlob(2)};
    }
    if (result != SQLITE_DONE) {
        Fail(result, "cannot be read");
    }
    return std::nullopt;
}

long SettingsStore::DeleteValue(std::string_view keyPath, std::string_view name) {
    std::lock_guard lock(mutex_);
    if (!Ready()) {
        return Unusable();
    }
    Wait(true);
    SqliteStatement remove(db_,
                           "DELETE FROM vals WHERE name = ?2 AND "
                           "key = (SELECT id FROM keys WHERE path = ?1)");
    remove.BindText(1, keyPath);
    remove.BindText(2, name);
    if (const int result = remove.Run(); result != SQLITE_DONE) {
        return Fail(result, "cannot be written");
    }
    return sqlite3_changes(db_) > 0 ? RegistryStatus::kSuccess : RegistryStatus::kFileNotFound;
}

std::vector<RegistryValue> SettingsStore::Values(std::string_view keyPath) {
    std::lock_guard lock(mutex_);
    std::vector<RegistryValue> values;
    if (!Ready()) {
        return values;
    }
    Wait(false);
    SqliteStatement list(db_,
                         "SELECT vals.name, vals.type, vals.data FROM vals JOIN keys "
                         "ON vals.key = keys.id WHERE keys.path = ?1 ORDER BY vals.id");
    list.BindText(1, keyPath);
    int result = SQLITE_OK;
    while ((result = list.Step()) == SQLITE_ROW) {
        values.push_back({list.ColumnText(0), static_cast<ValueType>(list.ColumnInt(1)),
                          list.ColumnBlob(2)});
    }
    if (result != SQLITE_DONE) {
        Fail(result, "cannot be read");
    }
    return values;
}

}  // namespace vexplot
