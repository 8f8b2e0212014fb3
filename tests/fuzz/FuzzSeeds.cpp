#include "FuzzSeeds.h"

#include "KeyValueFile.h"
#include "MirrorFixture.h"

#include <limits>

using namespace mirror;

namespace {

/// Each also cut, with a byte changed, with a part of it twice, and with other line ends.
QByteArrayList withDamage(const QByteArrayList& seeds)
{
    QByteArrayList result = seeds;
    for (const QByteArray& seed : seeds) {
        const qsizetype middle = seed.size() / 2;
        QByteArray changed = seed;
        changed[middle] = char(uchar(changed[middle]) ^ 1U);
        QByteArray otherEnds = seed;
        otherEnds.replace("\n", "\r\n");
        result << seed.left(middle) << changed << seed + seed.mid(middle) << otherEnds
               << seed.chopped(1);
    }
    return result;
}

Record dinner(quint32 number, double amount, const QString& title)
{
    const Note note { .amount = amount,
        .count = std::numeric_limits<qint32>::min(),
        .done = true,
        .stamp = 253'402'300'799'999,
        .place = QStringLiteral("\u0627\u0644\u0639\u0634\u0627\u0621") };
    return { identity(number), liveNote(note, title) };
}

QByteArray records(const std::vector<Record>& rows)
{
    return writeRecords(rows, noteSchema(), someOrigin()).bytes;
}

QByteArray values(const std::vector<KeyValue>& entries)
{
    return writeKeyValues(entries, someOrigin()).bytes;
}

KeyValue entry(const QString& key, const SmallValue& value)
{
    return { Text::of(key), { HybridTime::latest(), DeviceId(~quint64(0)), value, {} } };
}

QByteArray response(const QByteArray& href, const QByteArray& properties, const QByteArray& status)
{
    return "<D:response><D:href>" + href + "</D:href><D:propstat><D:prop>" + properties
        + "</D:prop><D:status>HTTP/1.1 " + status + "</D:status></D:propstat></D:response>\n";
}

QByteArray multistatus(const QByteArray& responses)
{
    return "\x01<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<D:multistatus xmlns:D=\"DAV:\">"
        + responses + "</D:multistatus>\n";
}

} // namespace

QByteArrayList recordFileSeeds()
{
    LiveRecord newer = liveNote({}, {});
    newer.unknown = unknownKeys("{\"z\":{\"a\":[1.50,null]},\"\u00e9\":\"\\u0000\"}");
    const QString longest(Text::MaxBytes, QLatin1Char('"'));
    return withDamage({ records({}), noteHeader(0) + '\n', noteHeader(2) + '\n',
        records({ { identity(1), deadNote(0) } }),
        records({ dinner(1, -0.0, QStringLiteral("Dinner")), { identity(2), deadNote(5) } }),
        records({ dinner(1, 5e-324, longest), dinner(1, 1.7976931348623157e308, {}) }),
        records({ { identity(3), newer }, { identity(3), DeadRecord { HybridTime::latest(), {} } },
            { identity(3), liveNote({}, QStringLiteral("\U0001F600")) } }) });
}

QByteArrayList keyValueFileSeeds()
{
    KeyValue newer = entry(QStringLiteral("newer"), true);
    newer.state.unknown = unknownKeys("{\"a\":[],\"b\":{},\"c\":1e5,\"d\":\"\"}");
    return withDamage({ values({}), values({ entry({}, {}), entry({}, false) }),
        values({ entry(QStringLiteral("icloud_sync"), true), newer,
            entry(QStringLiteral("least"), std::numeric_limits<qint64>::min()),
            entry(QStringLiteral("text"), Text::of(u"\u00e9\"\\\n")) }),
        values({ entry(QString(Text::MaxBytes, QLatin1Char('k')),
            Text::of(QString(Text::MaxBytes, QLatin1Char('\\')))) }) });
}

QByteArrayList listingSeeds()
{
    const QByteArray collection = "<D:resourcetype><D:collection/></D:resourcetype>";
    const QByteArray file = "<D:resourcetype/><D:getcontentlength>7</D:getcontentlength>";
    const QByteArray itself = response("/dav/Jos%C3%A9/bills/", collection, "200 OK");
    const QByteArray first = response("/dav/Jos%C3%A9/bills/b1.jsonl", file, "200 OK");
    return withDamage({ multistatus(itself), multistatus({}), multistatus(itself + first),
        multistatus(itself
            + response("https://cloud.example/dav/Jose%CC%81/bills/e-1/", collection, "200 OK")
            + response("b%20%26.jsonl", file, "404 Not Found")),
        multistatus(itself + response("/dav/Jos%C3%A9/bills/%2E%2E/x", file, "200 OK")),
        multistatus(itself + response("/elsewhere", file, "200 OK")),
        multistatus(itself + first) + "<!-- an error -->",
        multistatus(itself).replace(0, 1, QByteArray(1, '\0')) + "an error",
        multistatus(itself + response("/dav/Jos%C3%A9/bills/]]>", file, "200 OK")),
        "\x01<!DOCTYPE a [<!ENTITY b \"c\">]><multistatus xmlns=\"DAV:\">&b;</multistatus>",
        "\x02<multistatus xmlns=\"DAV:\"><![CDATA[ ]]>&#x41;</multistatus>" });
}
