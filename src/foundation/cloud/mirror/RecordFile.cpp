#include "RecordFile.h"

#include "RecordLine.h"

#include <QBuffer>

namespace mirror {

FilePart writeRecords(std::span<const Record> records, const RecordSchema& schema,
    const FileOrigin& origin, qint64 maxBytes)
{
    PartBuilder part(schema.format(), origin, maxBytes);
    for (const Record& record : records) {
        if (!part.add(recordLine(record)))
            break;
    }
    return part.build();
}

RecordReader::RecordReader(QIODevice& device, const RecordSchema& schema)
    : m_file(device, schema.format())
    , m_schema(schema)
{
}

std::optional<Record> RecordReader::next()
{
    while (const auto line = m_file.next()) {
        if (auto record = readRecordLine(*line, m_schema))
            return record;
        m_file.reject();
    }
    return std::nullopt;
}

ReadRecords readRecords(const QByteArray& bytes, const RecordSchema& schema)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    RecordReader reader(device, schema);
    ReadRecords result;
    while (auto record = reader.next())
        result.records.push_back(*std::move(record));
    result.status = reader.file().status();
    result.badLines = reader.file().badLines();
    return result;
}

} // namespace mirror
