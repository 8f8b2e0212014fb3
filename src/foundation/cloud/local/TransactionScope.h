#pragma once

#include "sqlite/RowWriter.h"

#include <optional>
#include <type_traits>

namespace mirror {

/// What the parts of a local mirror share during one transaction: the connection, the writer of
/// records, and the first failure, after which nothing is done any more.
class TransactionScope {
public:
    explicit TransactionScope(SqliteConnection& connection)
        : m_connection(connection)
    {
    }

    [[nodiscard]] SqliteConnection& connection() { return m_connection; }
    [[nodiscard]] RowWriter& rows() { return *m_rows; }
    [[nodiscard]] bool isFailed() const { return m_error.has_value(); }
    [[nodiscard]] const std::optional<StoreError>& error() const { return m_error; }

    void open(RowWriter rows) { m_rows.emplace(std::move(rows)); }
    void close() { m_rows.reset(); }
    void forgetFailure() { m_error.reset(); }

    /// What the call returns; what its type is made with where it fails, or something before it.
    template <class Call> std::invoke_result_t<Call> attempt(Call call)
    {
        if (!m_error) {
            auto result = guarded(m_connection.path(), call);
            if constexpr (std::is_void_v<std::invoke_result_t<Call>>) {
                if (result)
                    return;
            } else {
                if (result)
                    return std::move(*result);
            }
            m_error = result.error();
        }
        return std::invoke_result_t<Call>();
    }

private:
    SqliteConnection& m_connection;
    std::optional<RowWriter> m_rows;
    std::optional<StoreError> m_error;
};

} // namespace mirror
