#include "Attributes.h"

#include "AttributeJson.h"

#include <QStringBuilder>

#include <algorithm>

namespace mirror {

namespace {

constexpr qsizetype UsualBytes = 384;

struct UnknownMember {
    QByteArray name;
    QByteArray text; ///< of its value
};

void appendComma(QByteArray& text)
{
    if (text.size() > 1)
        text += ',';
}

bool areMirrorable(const Values& values, const RecordSchema& schema)
{
    return std::ranges::equal(
        values, schema.attributes(), &isMirrorable, {}, &SchemaAttribute::kind);
}

/// Whether any mirrorable values fit, so that a text need not be made to see it.
bool alwaysFit(const RecordSchema& schema)
{
    qsizetype bytes = 2;
    for (const RecordSchema::Member& member : schema.members())
        bytes += 1 + member.opening.size() + mostBytes(schema.attributes()[member.attribute].kind);
    return bytes <= Attributes::MaxBytes;
}

/// Nothing where a value is not of its attribute's kind or cannot be mirrored, or where that is
/// more than fits.
std::optional<QByteArray> canonicalText(
    const Values& values, const RecordSchema& schema, std::vector<UnknownMember> unknown)
{
    const std::vector<SchemaAttribute>& attributes = schema.attributes();
    if (!areMirrorable(values, schema))
        return std::nullopt;
    std::ranges::sort(unknown, {}, &UnknownMember::name);
    QByteArray text;
    text.reserve(UsualBytes);
    text += '{';
    auto next = unknown.cbegin();
    const auto appendUnknown = [&](auto isDue) {
        for (; next != unknown.cend() && isDue(next->name); ++next) {
            appendComma(text);
            text += quotedJson(next->name) + ":" + next->text;
        }
    };
    for (const RecordSchema::Member& member : schema.members()) {
        const SchemaAttribute& attribute = attributes[member.attribute];
        appendUnknown([&](const QByteArray& name) { return name < attribute.name; });
        appendComma(text);
        text += member.opening;
        appendAttribute(text, values[member.attribute]);
    }
    appendUnknown([](const QByteArray&) { return true; });
    text += '}';
    return text.size() <= Attributes::MaxBytes ? std::optional(text) : std::nullopt;
}

std::optional<Values> valuesIn(const JsonValue& object, const RecordSchema& schema)
{
    Values values;
    values.reserve(schema.attributes().size());
    for (const SchemaAttribute& attribute : schema.attributes()) {
        const JsonValue* json = object.member(attribute.name);
        auto value = json ? attributeValue(*json, attribute.kind) : std::nullopt;
        if (!value)
            return std::nullopt;
        values.push_back(*std::move(value));
    }
    return values;
}

/// What a newer version of the schema may have.
std::vector<UnknownMember> unknownIn(const JsonValue& object, const RecordSchema& schema)
{
    std::vector<UnknownMember> members;
    for (std::size_t i = 0; i < object.values.size(); ++i) {
        const QByteArray& name = object.names[i];
        if (std::ranges::find(schema.attributes(), name, &SchemaAttribute::name)
            == schema.attributes().end())
            members.push_back({ name, object.values[i].toText() });
    }
    return members;
}

} // namespace

Attributes::Attributes(QByteArray text, bool hasMore, Values values, const RecordSchema& schema)
    : m_text(std::move(text))
    , m_hasMore(hasMore)
    , m_schema(&schema)
    , m_values(std::make_shared<const Values>(std::move(values)))
{
}

bool Attributes::existOf(const Values& values, const RecordSchema& schema)
{
    if (alwaysFit(schema))
        return areMirrorable(values, schema);
    return canonicalText(values, schema, {}).has_value();
}

std::optional<Attributes> Attributes::of(Values values, const RecordSchema& schema)
{
    auto text = canonicalText(values, schema, {});
    return text ? std::optional(Attributes(*std::move(text), false, std::move(values), schema))
                : std::nullopt;
}

std::optional<Attributes> Attributes::fromJson(const JsonValue& object, const RecordSchema& schema)
{
    auto values = valuesIn(object, schema);
    if (!values || object.member(schema.renamable()) != nullptr)
        return std::nullopt;
    // Written anew, because a double can be read from more than one text.
    std::vector<UnknownMember> unknown = unknownIn(object, schema);
    const bool hasMore = !unknown.empty();
    auto text = canonicalText(*values, schema, std::move(unknown));
    return text ? std::optional(Attributes(*std::move(text), hasMore, *std::move(values), schema))
                : std::nullopt;
}

std::optional<Values> Attributes::values(const RecordSchema& schema) const
{
    if (m_schema == &schema)
        return *m_values;
    const auto object = readJsonLine(m_text);
    return object ? valuesIn(*object, schema) : std::nullopt;
}

} // namespace mirror
