#pragma once

#include "JsonLine.h"
#include "RecordSchema.h"

#include <memory>

namespace mirror {

/// The attributes of one record in their one canonical text: a JSON object with the members in the
/// order of their names' bytes, without blanks. Holds also what a newer version added. Ordered by
/// the bytes of the text, which is the same on every device.
class Attributes {
public:
    static constexpr qsizetype MaxBytes = qsizetype(16) * 1024; ///< of the text

    /// Whether there are attributes of these values: not where one is not of its attribute's kind,
    /// cannot be mirrored (a double that is infinite or no number, a date out of range), or where
    /// there is more than fits.
    [[nodiscard]] static bool existOf(const Values& values, const RecordSchema& schema);
    /// Nothing where there are none. The schema must outlive them, here and below.
    [[nodiscard]] static std::optional<Attributes> of(Values values, const RecordSchema& schema);

    /// Nothing where the object lacks an attribute of the schema, has one of another form or the
    /// renamable one, or where there is more than fits.
    [[nodiscard]] static std::optional<Attributes> fromJson(
        const JsonValue& object, const RecordSchema& schema);

    /// The values of the schema's attributes. Nothing under another schema than the one that these
    /// were made with, where they do not satisfy it.
    [[nodiscard]] std::optional<Values> values(const RecordSchema& schema) const;

    [[nodiscard]] const QByteArray& text() const { return m_text; }
    /// Whether there is more in it than the attributes of the schema that it was made with.
    [[nodiscard]] bool hasMore() const { return m_hasMore; }

    // Not defaulted: a byte array converts to a pointer, and pointers would be compared.
    std::strong_ordering operator<=>(const Attributes& other) const
    {
        return m_text.compare(other.m_text) <=> 0;
    }
    bool operator==(const Attributes& other) const { return m_text == other.m_text; }

private:
    Attributes(QByteArray text, bool hasMore, Values values, const RecordSchema& schema);

    QByteArray m_text;
    bool m_hasMore;
    // Of that schema, so that they need not be read again.
    const RecordSchema* m_schema;
    std::shared_ptr<const Values> m_values;
};

} // namespace mirror
