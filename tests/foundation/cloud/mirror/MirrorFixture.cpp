#include "MirrorFixture.h"

using namespace mirror;

const RecordSchema& noteSchema()
{
    static const RecordSchema schema("notes", "title",
        { { "amount", AttributeKind::Double }, { "count", AttributeKind::Integer32 },
            { "done", AttributeKind::Boolean }, { "stamp", AttributeKind::Date },
            { "place", AttributeKind::Text } });
    return schema;
}

Values valuesOf(const Note& note)
{
    Values values { note.amount, note.count, note.done, {}, {} };
    if (note.stamp)
        values[3] = WallTime(std::chrono::milliseconds(*note.stamp));
    if (note.place)
        values[4] = Text::of(*note.place);
    return values;
}

Attributes attributesOf(const Note& note)
{
    return Attributes::of(valuesOf(note), noteSchema()).value();
}

HybridTime timeAt(qint64 milliseconds, qint64 counter)
{
    return HybridTime::of(milliseconds, counter).value();
}

QUuid identity(quint32 number)
{
    return { 0, 0, 0, 0, 0, 0, 0, uchar(number >> 24U), uchar(number >> 16U), uchar(number >> 8U),
        uchar(number) };
}

LiveRecord liveNote(const Note& note, const QString& title)
{
    return { { timeAt(1000, 1), attributesOf(note) },
        { timeAt(1000, 2), DeviceId(0x0123456789abcdef), Text::of(title) }, {} };
}

DeadRecord deadNote(qint64 milliseconds) { return { timeAt(milliseconds), {} }; }

UnknownKeys unknownKeys(const QByteArray& object)
{
    return UnknownKeys::of(readJsonLine(object).value(), {}).value();
}

FileOrigin someOrigin() { return { DeviceId(0x0123456789abcdef), WriterId(0xfedcba9876543210) }; }

QByteArray fileOf(const QByteArray& header, const QByteArrayList& lines)
{
    QByteArray file = header + "\n";
    for (const QByteArray& line : lines)
        file += line + "\n";
    return file;
}

QByteArray noteHeader(qint64 lines)
{
    return headerLine({ noteSchema().format(), lines, someOrigin() });
}
