#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace vexplot {

// One prepared SQLite statement, finalized when it goes out of scope. Binding
// copies the bound text and bytes (SQLITE_TRANSIENT), so arguments may be
// temporaries. Result codes are SQLite's, unchanged.
class SqliteStatement {
public:
    SqliteStatement(sqlite3* db, std::string_view sql);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;

    // SQLITE_OK when the statement was prepared, otherwise the failure.
    int PrepareResult() const { return prepareResult_; }

    // binding (parameters count from 1):
    void BindText(int index, std::string_view text);
    void BindInt(int index, int64_t value);
    void BindBlob(int index, std::span<const uint8_t> bytes);

    // SQLITE_ROW, SQLITE_DONE or a failure; a failed prepare is returned again.
    int Step();
    // Steps to the end; SQLITE_DONE on success.
    int Run();
    // Makes the statement ready to be bound and run again (bindings are kept).
    void Reset();

    // columns of the current row (counting from 0):
    std::string ColumnText(int column) const;
    int64_t ColumnInt(int column) const;
    std::vector<uint8_t> ColumnBlob(int column) const;

private:
    sqlite3_stmt* statement_ = nullptr;
    int prepareResult_;
};

}  // namespace vexplot
