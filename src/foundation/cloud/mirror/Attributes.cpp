#include "Attributes.h"

#include "AttributeJson.h"

#include <QStringBuilder>

#include <map>

namespace mirror {

namespace {

using TextsByName = std::map<QByteArray, QByteArray>;

/// Nothing where that is more than fits.
std::optional<QByteArray> canonicalText(const TextsByName& members)
{
    QByteArray text = "{";
    for (const auto& [name, value] : members) {
        if (text.size() > 1)
            text += ',';
        text += quotedJson(name) + ":" + value;
    }
    text += '}';
    return text.size() <= Attributes::MaxBytes ? std::optional(text) : std::nullopt;
}

std::optional<Values> valuesIn(const JsonValue& object, const RecordSchema& schema)
{
    Values values;
    for (const SchemaAttribute& attribute : schema.attributes) {
        const JsonValue* json = object.member(attribute.name);
        auto value = json ? attributeValue(*json, attribute.kind) : std::nullopt;
        if (!value)
            return std::nullopt;
        values.push_back(*std::move(value));
    }
    return values;
}

/// False where a value is not of its attribute's kind or cannot be mirrored.
bool setKnown(TextsByName& members, const Values& values, const RecordSchema& schema)
{
    if (values.size() != schema.attributes.size())
        return false;
    for (std::size_t i = 0; i < values.size(); ++i) {
        auto text = attributeText(values[i], schema.attributes[i].kind);
        if (!text)
            return false;
        members[schema.attributes[i].name] = *std::move(text);
    }
    return true;
}

TextsByName textsIn(const JsonValue& object)
{
    TextsByName members;
    for (std::size_t i = 0; i < object.values.size(); ++i)
        members.emplace(object.names[i], object.values[i].toText());
    return members;
}

} // namespace

std::optional<Attributes> Attributes::of(const Values& values, const RecordSchema& schema)
{
    TextsByName members;
    if (!setKnown(members, values, schema))
        return std::nullopt;
    auto text = canonicalText(members);
    return text ? std::optional(Attributes(*std::move(text))) : std::nullopt;
}

std::optional<Attributes> Attributes::fromJson(const JsonValue& object, const RecordSchema& schema)
{
    const auto values = valuesIn(object, schema);
    if (!values || object.member(schema.renamable) != nullptr)
        return std::nullopt;
    // Written anew, because a double can be read from more than one text.
    TextsByName members = textsIn(object);
    if (!setKnown(members, *values, schema))
        return std::nullopt;
    auto text = canonicalText(members);
    return text ? std::optional(Attributes(*std::move(text))) : std::nullopt;
}

std::optional<Values> Attributes::values(const RecordSchema& schema) const
{
    const auto object = readJsonLine(m_text);
    return object ? valuesIn(*object, schema) : std::nullopt;
}

} // namespace mirror
