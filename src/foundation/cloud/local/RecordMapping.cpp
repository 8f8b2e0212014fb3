#include "RecordMapping.h"

namespace mirror {

namespace {

AttributeKind kindOf(AttributeType type)
{
    switch (type) {
    case AttributeType::Boolean:
        return AttributeKind::Boolean;
    case AttributeType::Integer32:
        return AttributeKind::Integer32;
    case AttributeType::Double:
        return AttributeKind::Double;
    case AttributeType::Date:
        return AttributeKind::Date;
    case AttributeType::String:
        break;
    }
    return AttributeKind::Text;
}

Value mirrored(const AttributeValue& value)
{
    if (const auto* text = std::get_if<QString>(&value))
        return Text::of(*text);
    if (const auto* date = std::get_if<QDateTime>(&value))
        return WallTime(std::chrono::milliseconds(date->toMSecsSinceEpoch()));
    if (const auto* boolean = std::get_if<bool>(&value))
        return *boolean;
    if (const auto* integer = std::get_if<qint32>(&value))
        return *integer;
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    return {};
}

AttributeValue stored(const Value& value)
{
    if (const auto* text = std::get_if<Text>(&value))
        return text->toString();
    if (const auto* date = std::get_if<WallTime>(&value))
        return QDateTime::fromMSecsSinceEpoch(date->time_since_epoch().count(), Qt::UTC);
    if (const auto* boolean = std::get_if<bool>(&value))
        return *boolean;
    if (const auto* integer = std::get_if<qint32>(&value))
        return *integer;
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    return {};
}

std::vector<SchemaAttribute> attributesBut(
    const QString& renamable, const NSEntityDescription& entity)
{
    std::vector<SchemaAttribute> attributes;
    for (const NSAttributeDescription& attribute : entity.attributes()) {
        if (attribute.name != renamable)
            attributes.push_back({ attribute.name.toUtf8(), kindOf(attribute.type) });
    }
    return attributes;
}

} // namespace

RecordMapping::RecordMapping(
    const NSEntityDescription& entity, const QByteArray& format, const QString& renamable)
    : m_entity(entity)
    , m_renamable(std::size_t(entity.indexOfAttribute(renamable).value()))
    , m_schema(format, renamable.toUtf8(), attributesBut(renamable, entity))
{
}

bool RecordMapping::isMirrorable(const AttributeValues& values) const
{
    return Attributes::existOf(others(values), m_schema);
}

std::optional<Attributes> RecordMapping::attributes(const AttributeValues& values) const
{
    return Attributes::of(others(values), m_schema);
}

/// All but the renamable one.
Values RecordMapping::others(const AttributeValues& values) const
{
    Values others;
    others.reserve(m_schema.attributes().size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i != m_renamable)
            others.push_back(mirrored(values[i]));
    }
    return others;
}

std::optional<Text> RecordMapping::text(const AttributeValues& values) const
{
    const auto* text = std::get_if<QString>(&values[m_renamable]);
    return text ? std::optional(Text::of(*text)) : std::nullopt;
}

AttributeValues RecordMapping::merged(AttributeValues values, const LiveRecord& live) const
{
    const auto others = live.content.attributes.values(m_schema);
    std::size_t position = 0;
    for (std::size_t i = 0; others && i < values.size(); ++i) {
        if (i != m_renamable)
            values[i] = stored(others->at(position++));
    }
    if (text(values) != live.renaming.text)
        values[m_renamable] = live.renaming.text ? AttributeValue(live.renaming.text->toString())
                                                 : AttributeValue();
    return values;
}

} // namespace mirror
