#pragma once

#include "JsonLine.h"

#include <initializer_list>
#include <map>

namespace mirror {

/// The members of a line that a newer version of the program added and this one only carries: kept
/// as they were read, and written back behind the known ones, in the order of their names' bytes.
class UnknownKeys {
public:
    static constexpr std::size_t MaxCount = 8;
    static constexpr qsizetype MaxMemberBytes = 1024; ///< name and value, as written

    UnknownKeys() = default;

    /// The members that have none of the known names; nothing where they pass a limit.
    [[nodiscard]] static std::optional<UnknownKeys> of(
        const JsonValue& object, std::initializer_list<QByteArrayView> known);

    /// Every member with a comma before it.
    [[nodiscard]] QByteArray toText() const;

    bool operator==(const UnknownKeys& other) const = default;

private:
    friend UnknownKeys join(const UnknownKeys& left, const UnknownKeys& right);

    std::map<QByteArray, QByteArray> m_values; // JSON texts by name
};

/// All members of both: of one name the value with the larger text, and of more than MaxCount names
/// the first. Commutative, associative, idempotent: a name that is dropped has MaxCount names
/// before it in every further join, and one that stays was never dropped on the way.
[[nodiscard]] UnknownKeys join(const UnknownKeys& left, const UnknownKeys& right);

} // namespace mirror
