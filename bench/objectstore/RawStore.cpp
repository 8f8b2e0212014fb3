#include "RawStore.h"

#include "Diagnostics.h"

#include <sqlite3.h>

RawBill billNumber(std::int64_t number)
{
    const auto part = static_cast<double>(number % 9973);
    return { 0, 1700000000000 + number * 61000, 100.37 + part / 7, 33.3 + part / 21,
        5.5 + part / 140, 105.25 + part / 6, static_cast<int>(number % 9) + 1,
        static_cast<int>(number % 3), number % 2 == 0, number % 3 == 0, number % 5 == 0,
        "Dinner with friends" };
}

RawStore::RawStore(const std::string& file)
{
    if (sqlite3_open(file.c_str(), &m_database) != SQLITE_OK)
        fatalError(sqlite3_errmsg(m_database));
    execute("PRAGMA synchronous = FULL");
    execute("PRAGMA journal_size_limit = 4194304");
    sqlite3_busy_timeout(m_database, 5000);
    m_insert = prepare("INSERT INTO Item (_id, _version, bill, everyone, people, ref, roundshare, "
                       "roundtip, service, share, timestamp, tip, total) "
                       "VALUES (?, 1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    m_fetch = prepare("SELECT _id, bill, everyone, people, ref, roundshare, roundtip, service, "
                      "share, timestamp, tip, total FROM Item ORDER BY _id");
    m_delete = prepare("DELETE FROM Item WHERE timestamp < ?");
    sqlite3_stmt* last = prepare("SELECT max(_id) FROM Item");
    sqlite3_step(last);
    m_last = sqlite3_column_int64(last, 0);
    sqlite3_finalize(last);
}

RawStore::~RawStore()
{
    for (sqlite3_stmt* statement : { m_insert, m_fetch, m_delete })
        sqlite3_finalize(statement);
    sqlite3_close(m_database);
}

void RawStore::execute(const char* sql)
{
    if (sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        fatalError(sqlite3_errmsg(m_database));
}

sqlite3_stmt* RawStore::prepare(const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr) != SQLITE_OK)
        fatalError(sqlite3_errmsg(m_database));
    return statement;
}

void RawStore::insert(const std::vector<RawBill>& bills)
{
    execute("BEGIN IMMEDIATE");
    for (const RawBill& bill : bills) {
        sqlite3_bind_int64(m_insert, 1, ++m_last);
        sqlite3_bind_double(m_insert, 2, bill.bill);
        sqlite3_bind_int(m_insert, 3, bill.everyone ? 1 : 0);
        sqlite3_bind_int(m_insert, 4, bill.people);
        sqlite3_bind_text(
            m_insert, 5, bill.ref.data(), static_cast<int>(bill.ref.size()), SQLITE_STATIC);
        sqlite3_bind_int(m_insert, 6, bill.roundShare ? 1 : 0);
        sqlite3_bind_int(m_insert, 7, bill.roundTip ? 1 : 0);
        sqlite3_bind_int(m_insert, 8, bill.service);
        sqlite3_bind_double(m_insert, 9, bill.share);
        sqlite3_bind_int64(m_insert, 10, bill.stamp);
        sqlite3_bind_double(m_insert, 11, bill.tip);
        sqlite3_bind_double(m_insert, 12, bill.total);
        if (sqlite3_step(m_insert) != SQLITE_DONE)
            fatalError(sqlite3_errmsg(m_database));
        sqlite3_reset(m_insert);
    }
    execute("COMMIT");
}

std::vector<RawBill> RawStore::fetchAll()
{
    std::vector<RawBill> bills;
    while (sqlite3_step(m_fetch) == SQLITE_ROW) {
        RawBill& bill = bills.emplace_back();
        bill.id = sqlite3_column_int64(m_fetch, 0);
        bill.bill = sqlite3_column_double(m_fetch, 1);
        bill.everyone = sqlite3_column_int(m_fetch, 2) != 0;
        bill.people = sqlite3_column_int(m_fetch, 3);
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_fetch, 4));
        bill.ref.assign(text, static_cast<std::size_t>(sqlite3_column_bytes(m_fetch, 4)));
        bill.roundShare = sqlite3_column_int(m_fetch, 5) != 0;
        bill.roundTip = sqlite3_column_int(m_fetch, 6) != 0;
        bill.service = sqlite3_column_int(m_fetch, 7);
        bill.share = sqlite3_column_double(m_fetch, 8);
        bill.stamp = sqlite3_column_int64(m_fetch, 9);
        bill.tip = sqlite3_column_double(m_fetch, 10);
        bill.total = sqlite3_column_double(m_fetch, 11);
    }
    sqlite3_reset(m_fetch);
    return bills;
}

void RawStore::deleteBefore(std::int64_t stamp)
{
    execute("BEGIN IMMEDIATE");
    sqlite3_bind_int64(m_delete, 1, stamp);
    if (sqlite3_step(m_delete) != SQLITE_DONE)
        fatalError(sqlite3_errmsg(m_database));
    sqlite3_reset(m_delete);
    execute("COMMIT");
}

void RawStore::checkpoint() { execute("PRAGMA wal_checkpoint(TRUNCATE)"); }
