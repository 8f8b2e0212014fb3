#pragma once

#include <QString>

#include <chrono>
#include <optional>
#include <utility>
#include <variant>

namespace mirror {

/// Why a request to a FileStore did not do what it was to do. Unless its kind says otherwise, it is
/// not known whether the server carried the request out.
struct FileError {
    enum class Kind {
        NotFound, ///< 404, 410
        Conflict, ///< 409: as a rule the collection that the file is to stand in is missing
        Unauthorised, ///< 401, 403: ask no more before the credentials have changed
        Locked, ///< 423
        Busy, ///< 429, 503: retryAfter may say for how long
        TooLarge, ///< 413, 507: for this file there is no room, for a smaller one there may be
        Server, ///< 408, another 5xx, or a deletion that was carried out in part
        Network, ///< not reached, broken off, too slow, or an answer cut short
        Redirect, ///< any 3xx: nothing was followed, and nothing stored
        Untrusted, ///< nothing was sent: a certificate that is refused, or http to another machine
        NotUnderstood, ///< any other answer, one too long included: tells nothing, least of all
                       ///< "empty"
        Cancelled, ///< see Cancellation
        LocalFile, ///< the device that was to take a file did not
    };

    Kind kind = Kind::NotUnderstood;
    int status = 0; ///< the HTTP status, 0 where there was none
    std::optional<std::chrono::seconds> retryAfter; ///< as the server put it, however long
    QString sentence; ///< for a log: one plain sentence that holds no credentials
};

/// A value, or the reason why there is none.
template <class T = std::monostate> class [[nodiscard]] Outcome {
public:
    Outcome(T value = {}) // NOLINT(google-explicit-constructor): reads as "return value;"
        : m_content(std::in_place_index<0>, std::move(value))
    {
    }
    Outcome(FileError error) // NOLINT(google-explicit-constructor)
        : m_content(std::in_place_index<1>, std::move(error))
    {
    }

    explicit operator bool() const { return m_content.index() == 0; }
    const T& operator*() const { return std::get<0>(m_content); }
    const T* operator->() const { return &std::get<0>(m_content); }
    const FileError& error() const { return std::get<1>(m_content); }

private:
    std::variant<T, FileError> m_content;
};

} // namespace mirror
