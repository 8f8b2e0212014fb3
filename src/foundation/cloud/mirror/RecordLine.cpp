#include "RecordLine.h"

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

std::optional<Renaming> readRenaming(const JsonValue* json)
{
    const auto* parts = readArray(json, 3);
    const auto time = parts ? readTime(&parts->at(0)) : std::nullopt;
    const auto device = parts ? readDevice(&parts->at(1)) : std::nullopt;
    if (!time || !device)
        return std::nullopt;
    const JsonValue& last = parts->at(2);
    if (last.is(JsonValue::Kind::Null))
        return Renaming { *time, *device, std::nullopt };
    auto text = last.is(JsonValue::Kind::String) ? Text::fromUtf8(last.text) : std::nullopt;
    if (!text)
        return std::nullopt;
    return Renaming { *time, *device, std::move(text) };
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

} // namespace

QByteArray recordLine(const Record& record)
{
    return "{\"id\":\"" + idText(record.id) + "\""
        + std::visit([](const auto& state) { return QByteArray(stateText(state)); }, record.state)
        + "}";
}

std::optional<Record> readRecordLine(QByteArrayView line, const RecordSchema& schema)
{
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
