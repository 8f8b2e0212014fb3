#pragma once

#include "MirrorFixture.h"
#include "RowFormat.h"

#include <QBuffer>

/// The claims that hold of files of records and of small values alike.
template <class Row> class RowFileClaims {
public:
    [[nodiscard]] static const char* broken(const QByteArray& bytes)
    {
        const File file = read(bytes);
        if (const char* claim = brokenStatus(file))
            return claim;
        if (file.status == mirror::FileStatus::Understood && !bytes.isEmpty()) {
            for (const qsizetype size : { bytes.size() - 1, bytes.size() / 2 }) {
                if (read(bytes.left(size)).status == mirror::FileStatus::Understood)
                    return "A file that was cut is not understood.";
            }
        }
        if (const char* claim = brokenJoin(file.rows))
            return claim;
        return brokenWriting(file.rows);
    }

private:
    using Format = mirror::RowFormat<Row>;

    struct File {
        std::vector<Row> rows;
        mirror::FileStatus status = mirror::FileStatus::NotUnderstood;
        std::optional<mirror::FileHeader> header;
        qint64 badLines = 0;
    };

    static File read(const QByteArray& bytes)
    {
        QBuffer device;
        device.setData(bytes);
        device.open(QIODevice::ReadOnly);
        auto reader = Format::reader(device, noteSchema());
        File file;
        while (auto row = reader.next())
            file.rows.push_back(*std::move(row));
        file.status = reader.file().status();
        file.header = reader.file().header();
        file.badLines = reader.file().badLines();
        return file;
    }

    static const char* brokenStatus(const File& file)
    {
        switch (file.status) {
        case mirror::FileStatus::NotUnderstood:
            return file.rows.empty() && file.badLines == 0 && !file.header
                ? nullptr
                : "Nothing is taken from a file that is not understood.";
        case mirror::FileStatus::Understood:
            return file.header && file.badLines == 0
                    && qint64(file.rows.size()) == file.header->lines
                ? nullptr
                : "Of a file that is understood, every line is.";
        case mirror::FileStatus::Partial:
            return file.header
                    && (file.badLines > 0 || qint64(file.rows.size()) != file.header->lines)
                ? nullptr
                : "Of a file that is understood in part, a line is missing, bad or too many.";
        }
        return "A file has a status.";
    }

    static const char* brokenJoin(const std::vector<Row>& rows)
    {
        std::vector<Row> allJoined;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Row& left = rows[i];
            const Row right = withKeyOf(left, rows[(i + 1) % rows.size()]);
            const Row third = withKeyOf(left, rows[(i + 2) % rows.size()]);
            const Row joined = Format::join(left, right);
            if (Format::join(left, left) != left || Format::join(joined, right) != joined)
                return "What is joined again stays.";
            if (joined != Format::join(right, left))
                return "A join has no order.";
            if (Format::join(joined, third) != Format::join(left, Format::join(right, third)))
                return "Joins have no order.";
            allJoined.push_back(joined);
        }
        return brokenWriting(allJoined);
    }

    static mirror::Record withKeyOf(const mirror::Record& key, const mirror::Record& row)
    {
        return { key.id, row.state };
    }
    static mirror::KeyValue withKeyOf(const mirror::KeyValue& key, const mirror::KeyValue& row)
    {
        return { key.key, row.state };
    }

    static const char* brokenWriting(std::span<const Row> rows)
    {
        while (!rows.empty()) {
            const mirror::FilePart part
                = Format::write(rows, noteSchema(), someOrigin(), mirror::FileLimits::WrittenBytes);
            const File again = read(part.bytes);
            if (part.taken == 0 || part.bytes.size() > mirror::FileLimits::WrittenBytes)
                return "A part holds something, and not too much.";
            if (again.status != mirror::FileStatus::Understood
                || again.header->origin != someOrigin())
                return "What is written is understood.";
            if (!std::ranges::equal(again.rows, rows.first(part.taken)))
                return "What is read and written again reads the same.";
            rows = rows.subspan(part.taken);
        }
        return nullptr;
    }
};
