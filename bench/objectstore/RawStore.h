#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// One bill as a program without an object store would hold it.
struct RawBill {
    std::int64_t id, stamp;
    double bill, share, tip, total;
    int people, service;
    bool everyone, roundShare, roundTip;
    std::string ref;
};

/// The n-th bill of the benchmarks, with amounts that need all their digits.
RawBill billNumber(std::int64_t number);

/// What the store is compared with: SQLite on a file that the store made, so with the same tables
/// and indexes, and with the same pragmas.
class RawStore {
public:
    explicit RawStore(const std::string& file);
    ~RawStore();
    RawStore(const RawStore&) = delete;
    RawStore& operator=(const RawStore&) = delete;

    void insert(const std::vector<RawBill>& bills); ///< in one transaction
    std::vector<RawBill> fetchAll();
    void deleteBefore(std::int64_t stamp);
    void checkpoint();

private:
    void execute(const char* sql);
    sqlite3_stmt* prepare(const char* sql);

    sqlite3* m_database = nullptr;
    sqlite3_stmt* m_insert = nullptr;
    sqlite3_stmt* m_fetch = nullptr;
    sqlite3_stmt* m_delete = nullptr;
    std::int64_t m_last = 0;
};
