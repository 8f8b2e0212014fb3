#include "RecordLine.h"

#include "AttributeJson.h"
#include "LineCursor.h"
#include "LineFields.h"

#include <QStringBuilder>

namespace mirror {

namespace {

static_assert(Attributes::MaxBytes + MaxQuotedTextBytes + MaxUnknownBytes + MaxOtherBytes
        <= JsonLimits::LineBytes,
    "whatever is joined from lines that were understood fits into a line again");

QByteArray idText(const QUuid& id) { return id.toByteArray(QUuid::WithoutBraces); }

std::optional<QUuid> readId(const JsonValue* json)
{
    if (json == nullptr || !json->is(JsonValue::Kind::String))
        return std::nullopt;
    const QUuid id = QUuid::fromString(QLatin1String(json->text));
    if (idText(id) != json->text) // it also reads other forms
        return std::nullopt;
    return id;
}

QByteArray contentText(const Content& content)
{
    return "[\"" + content.time.toText() + "\"," + content.attributes.text() + "]";
}

std::optional<Content> readContent(const JsonValue* json, const RecordSchema& schema)
{
    const auto* parts = readArray(json, 2);
    const auto time = parts ? readTime(&parts->front()) : std::nullopt;
    if (!time || !parts->back().is(JsonValue::Kind::Object))
        return std::nullopt;
    auto attributes = Attributes::fromJson(parts->back(), schema);
    if (!attributes)
        return std::nullopt;
    return Content { *time, *std::move(attributes) };
}

QByteArray renamingText(const Renaming& renaming)
{
    const QByteArray text = renaming.text ? quotedJson(renaming.text->utf8()) : "null";
    return "[\"" + renaming.time.toText() + "\",\"" + deviceText(renaming.device) + "\"," + text
        + "]";
}

std::optional<Renaming> renamingOf(
    const JsonValue& timeJson, const JsonValue& deviceJson, const JsonValue& textJson)
{
    const auto time = readTime(&timeJson);
    const auto device = readDevice(&deviceJson);
    if (!time || !device)
        return std::nullopt;
    if (textJson.is(JsonValue::Kind::Null))
        return Renaming { *time, *device, std::nullopt };
    auto text = textJson.is(JsonValue::Kind::String) ? Text::fromUtf8(textJson.text) : std::nullopt;
    if (!text)
        return std::nullopt;
    return Renaming { *time, *device, std::move(text) };
}

std::optional<Renaming> readRenaming(const JsonValue* json)
{
    const auto* parts = readArray(json, 3);
    return parts ? renamingOf(parts->at(0), parts->at(1), parts->at(2)) : std::nullopt;
}

QByteArray stateText(const LiveRecord& live)
{
    return ",\"c\":" + contentText(live.content) + ",\"r\":" + renamingText(live.renaming)
        + live.unknown.toText();
}

QByteArray stateText(const DeadRecord& dead)
{
    return ",\"x\":1,\"h\":\"" + dead.time.toText() + "\"" + dead.unknown.toText();
}

std::optional<RecordState> readLive(const JsonValue& line, const RecordSchema& schema)
{
    auto content = readContent(line.member("c"), schema);
    auto renaming = readRenaming(line.member("r"));
    auto unknown = UnknownKeys::of(line, { "id", "c", "r" });
    if (!content || !renaming || !unknown || line.member("h") != nullptr)
        return std::nullopt;
    return LiveRecord { *std::move(content), *std::move(renaming), *std::move(unknown) };
}

std::optional<RecordState> readDead(const JsonValue& line)
{
    const JsonValue* mark = line.member("x");
    const auto time = readTime(line.member("h"));
    auto unknown = UnknownKeys::of(line, { "id", "x", "h" });
    if (!mark->is(JsonValue::Kind::Integer) || mark->integer != 1 || !time || !unknown
        || line.member("c") != nullptr || line.member("r") != nullptr)
        return std::nullopt;
    return DeadRecord { *time, *std::move(unknown) };
}

std::optional<Values> valuesAt(LineCursor& line, const RecordSchema& schema)
{
    Values values(schema.attributes().size());
    QByteArrayView separator = "{";
    for (const RecordSchema::Member& member : schema.members()) {
        line.skip(separator);
        separator = ",";
        auto value = attributeValue(
            line.scalarAfter(member.opening), schema.attributes()[member.attribute].kind);
        if (!value)
            return std::nullopt;
        values[member.attribute] = *std::move(value);
    }
    return values;
}

std::optional<Record> guessedRecord(QByteArrayView line, const RecordSchema& schema)
{
    LineCursor cursor(line);
    const auto idJson = cursor.scalarAfter("{\"id\":");
    const auto timeJson = cursor.scalarAfter(",\"c\":[");
    cursor.skip(",");
    auto values = valuesAt(cursor, schema);
    const auto renamedJson = cursor.scalarAfter("}],\"r\":[");
    const auto deviceJson = cursor.scalarAfter(",");
    const auto textJson = cursor.scalarAfter(",");
    cursor.skip("]}");
    if (!cursor.isAtEnd() || !values)
        return std::nullopt;
    const auto id = readId(&idJson);
    const auto time = readTime(&timeJson);
    auto attributes = Attributes::of(*std::move(values), schema);
    auto renaming = renamingOf(renamedJson, deviceJson, textJson);
    if (!id || !time || !attributes || !renaming)
        return std::nullopt;
    return Record { *id,
        LiveRecord { { *time, *std::move(attributes) }, *std::move(renaming), {} } };
}

} // namespace

QByteArray recordLine(const Record& record)
{
    return "{\"id\":\"" + idText(record.id) + "\""
        + std::visit([](const auto& state) { return QByteArray(stateText(state)); }, record.state)
        + "}";
}

std::optional<Record> readOwnRecordLine(QByteArrayView line, const RecordSchema& schema)
{
    auto guess = guessedRecord(line, schema);
    return guess && recordLine(*guess) == line ? guess : std::nullopt;
}

std::optional<Record> readRecordLine(QByteArrayView line, const RecordSchema& schema)
{
    if (auto record = readOwnRecordLine(line, schema))
        return record;
    const auto json = readJsonLine(line);
    return json ? readRecord(*json, schema) : std::nullopt;
}

std::optional<Record> readRecord(const JsonValue& line, const RecordSchema& schema)
{
    const auto id = readId(line.member("id"));
    auto state = line.member("x") != nullptr ? readDead(line) : readLive(line, schema);
    if (!id || !state)
        return std::nullopt;
    return Record { *id, *std::move(state) };
}

} // namespace mirror
