#include "settings/SqliteStatement.h"

#include <sqlite3.h>

namespace vexplot {

SqliteStatement::SqliteStatement(sqlite3* db, std::string_view sql)
    : prepareResult_(sqlite3_prepare_v2(db, sql.data(), static_cast<int>(sql.size()),
                                        &statement_, nullptr)) {}

SqliteStatement::~SqliteStatement() {
    sqlite3_finalize(statement_);
}

void SqliteStatement::BindText(int index, std::string_view text) {
    // A default string_view has a null pointer, which SQLite would bind as NULL, not "".
    const char* data = text.data() != nullptr ? text.data() : "";
    sqlite3_bind_text64(statement_, index, data, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void SqliteStatement::BindInt(int index, int64_t value) {
    sqlite3_bind_int64(statement_, index, value);
}

void SqliteStatement::BindBlob(int index, std::span<const uint8_t> bytes) {
    // A zero-length blob must still be a blob, not NULL, so the pointer is never null.
    static const uint8_t kNothing = 0;
    const void* data = bytes.empty() ? &kNothing : bytes.data();
    sqlite3_bind_blob64(statement_, index, data, bytes.size(), SQLITE_TRANSIENT);
}

int SqliteStatement::Step() {
    if (prepareResult_ != SQLITE_OK) {
        return prepareResult_;
    }
    return sqlite3_step(statement_);
}

int SqliteStatement::Run() {
    int result = Step();
    while (result == SQLITE_ROW) {
        result = Step();
    }
    return result;
}

void SqliteStatement::Reset() {
    sqlite3_reset(statement_);
}

std::string SqliteStatement::ColumnText(int column) const {
    const auto* text = sqlite3_column_text(statement_, column);
    const int size = sqlite3_column_bytes(statement_, column);
    return text == nullptr ? std::string() : std::string(reinterpret_cast<const char*>(text), size);
}

int64_t SqliteStatement::ColumnInt(int column) const {
    return sqlite3_column_int64(statement_, column);
}

std::vector<uint8_t> SqliteStatement::ColumnBlob(int column) const {
    const auto* bytes = static_cast<const uint8_t*>(sqlite3_column_blob(statement_, column));
    const int size = sqlite3_column_bytes(statement_, column);
    return bytes == nullptr ? std::vector<uint8_t>() : std::vector<uint8_t>(bytes, bytes + size);
}

}  // namespace vexplot
