#include "FuzzClaims.h"
#include "ListingReader.h"

#include <algorithm>

using namespace mirror;

namespace {

using Entries = std::optional<QList<FileEntry>>;

const QUrl folder(QStringLiteral("https://cloud.example/dav/Jos%C3%A9/bills/"));
const QByteArray path = "/dav/Jos%C3%A9/bills/";

Entries read(const QByteArray& bytes, qsizetype pieces)
{
    ListingReader reader(folder);
    for (qsizetype at = 0; at < bytes.size(); at += pieces) {
        if (!reader.add(bytes.mid(at, pieces)) && reader.entries())
            return QList<FileEntry> { {} }; // believed although it is not to be
    }
    return reader.entries();
}

QByteArray response(const QByteArray& href, const FileEntry& entry)
{
    const bool isCollection = entry.type == FileEntry::Type::Collection;
    QByteArray properties
        = isCollection ? "<d:resourcetype><d:collection/></d:resourcetype>" : "<d:resourcetype/>";
    if (entry.size)
        properties
            += "<d:getcontentlength>" + QByteArray::number(*entry.size) + "</d:getcontentlength>";
    return "<d:response><d:href>" + href + (isCollection ? "/" : "")
        + "</d:href><d:propstat><d:prop>" + properties
        + "</d:prop><d:status>HTTP/1.1 200 OK</d:status></d:propstat></d:response>";
}

QByteArray written(const QList<FileEntry>& entries)
{
    QByteArray bytes = "<d:multistatus xmlns:d=\"DAV:\">"
        + response(path.chopped(1), { {}, FileEntry::Type::Collection, std::nullopt });
    for (const FileEntry& entry : entries)
        bytes += response(path + QUrl::toPercentEncoding(entry.name), entry);
    return bytes + "</d:multistatus>";
}

bool isSound(const FileEntry& entry)
{
    const bool isName = !entry.name.isEmpty() && !entry.name.contains(QLatin1Char('/'))
        && !entry.name.contains(QChar(QChar::Null)) && entry.name != QLatin1String(".")
        && entry.name != QLatin1String("..");
    const bool isSize = !entry.size || (*entry.size >= 0 && entry.type == FileEntry::Type::File);
    return isName && isSize;
}

const char* brokenEntriesClaim(const QByteArray& listing, const QList<FileEntry>& entries)
{
    if (!std::ranges::all_of(entries, isSound))
        return "What a listing names can stand in a folder.";
    if (read(written(entries), listing.size() + 1) != entries)
        return "What is read and written again reads the same.";
    QByteArray cut = listing;
    while (!cut.endsWith('>'))
        cut.chop(1);
    if (read(cut.chopped(1), cut.size()))
        return "A listing that was cut is not believed.";
    if (read(listing + "!", listing.size() + 1))
        return "A listing that goes on after its end is not believed.";
    return nullptr;
}

} // namespace

const char* brokenListingClaim(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return nullptr;
    const QByteArray listing = bytes.mid(1);
    const Entries entries = read(listing, listing.size() + 1);
    if (read(listing, 1 + uchar(bytes.front())) != entries)
        return "A listing does not depend on the pieces in which it comes.";
    return entries ? brokenEntriesClaim(listing, *entries) : nullptr;
}
