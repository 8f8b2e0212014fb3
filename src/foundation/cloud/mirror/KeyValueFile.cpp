#include "KeyValueFile.h"

#include <QBuffer>

namespace mirror {

namespace {

const QByteArray& keyValueFormat()
{
    static const QByteArray format = "vexilo-kv";
    return format;
}

} // namespace

FilePart writeKeyValues(
    std::span<const KeyValue> entries, const FileOrigin& origin, qint64 maxBytes)
{
    PartBuilder part(keyValueFormat(), origin, maxBytes);
    for (const KeyValue& entry : entries) {
        if (!part.add(keyValueLine(entry)))
            break;
    }
    return part.build();
}

KeyValueReader::KeyValueReader(QIODevice& device)
    : m_file(device, keyValueFormat())
{
}

std::optional<KeyValue> KeyValueReader::next()
{
    while (const auto line = m_file.next()) {
        if (auto entry = readKeyValueLine(*line))
            return entry;
        m_file.reject();
    }
    return std::nullopt;
}

ReadKeyValues readKeyValues(const QByteArray& bytes)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    KeyValueReader reader(device);
    ReadKeyValues result;
    while (auto entry = reader.next())
        result.entries.push_back(*std::move(entry));
    result.status = reader.file().status();
    result.badLines = reader.file().badLines();
    return result;
}

} // namespace mirror
