#pragma once

#include "NSEntityDescription.h"
#include "RecordState.h"

namespace mirror {

/// How the records of an entity stand in the files of the mirror: every attribute under its name,
/// and one text that can be changed.
class RecordMapping {
public:
    /// The renamable attribute must be a text of the entity. The entity must outlive this.
    RecordMapping(
        const NSEntityDescription& entity, const QByteArray& format, const QString& renamable);

    [[nodiscard]] const NSEntityDescription& entity() const { return m_entity; }
    [[nodiscard]] const RecordSchema& schema() const { return m_schema; }
    /// The position of the text that can be changed, as a set of bits.
    [[nodiscard]] quint64 renamable() const { return quint64(1) << m_renamable; }

    /// Whether attributes() gives some.
    [[nodiscard]] bool isMirrorable(const AttributeValues& values) const;
    /// Nothing where a value cannot be mirrored, such as a number without end.
    [[nodiscard]] std::optional<Attributes> attributes(const AttributeValues& values) const;
    [[nodiscard]] std::optional<Text> text(const AttributeValues& values) const;

    /// The values with those of the live record in their place. A text that is mirrored as it
    /// stands is not touched, though it may be longer than a mirrored one.
    [[nodiscard]] AttributeValues merged(AttributeValues values, const LiveRecord& live) const;

private:
    [[nodiscard]] Values others(const AttributeValues& values) const;

    const NSEntityDescription& m_entity;
    std::size_t m_renamable;
    RecordSchema m_schema;
};

} // namespace mirror
