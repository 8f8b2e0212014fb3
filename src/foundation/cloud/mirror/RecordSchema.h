#pragma once

#include "HybridClock.h"
#include "MirrorText.h"

#include <variant>
#include <vector>

namespace mirror {

/// What an attribute holds. Only dates and texts can be null.
enum class AttributeKind : quint8 { Boolean, Integer32, Double, Date, Text };

struct SchemaAttribute {
    QByteArray name; ///< valid UTF-8, one of its kind
    AttributeKind kind = AttributeKind::Text;
};

/// What the mirror knows of the records that it carries.
class RecordSchema {
public:
    /// `format` is the "fmt" of their files, `renamable` the one text that changes after a record
    /// was made, `attributes` are all others, which never do.
    RecordSchema(QByteArray format, QByteArray renamable, std::vector<SchemaAttribute> attributes);

    [[nodiscard]] const QByteArray& format() const { return m_format; }
    [[nodiscard]] const QByteArray& renamable() const { return m_renamable; }
    [[nodiscard]] const std::vector<SchemaAttribute>& attributes() const { return m_attributes; }

    /// An attribute as every text has it.
    struct Member {
        std::size_t attribute = 0; ///< its position
        QByteArray opening; ///< its name in quotes, and the colon
    };
    /// In the order of the names' bytes.
    [[nodiscard]] const std::vector<Member>& members() const { return m_members; }

private:
    QByteArray m_format;
    QByteArray m_renamable;
    std::vector<SchemaAttribute> m_attributes;
    std::vector<Member> m_members;
};

/// Dates run from the year 1 to the year 9999.
inline constexpr WallTime EarliestDate { std::chrono::milliseconds(-62'135'596'800'000) };
inline constexpr WallTime LatestDate { std::chrono::milliseconds(253'402'300'799'999) };

/// One attribute's value; null where it holds std::monostate.
using Value = std::variant<std::monostate, bool, qint32, double, WallTime, Text>;

/// The values of one record, in the order of the schema's attributes.
using Values = std::vector<Value>;

} // namespace mirror
