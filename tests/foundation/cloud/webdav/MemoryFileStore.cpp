#include "MemoryFileStore.h"

#include <QCryptographicHash>
#include <QIODevice>

#include <limits>

namespace mirror {

namespace {

using Kind = FileError::Kind;
using When = MemoryFileStore::Fault::When;

constexpr qsizetype everything = std::numeric_limits<qsizetype>::max();

FileError error(Kind kind, int status)
{
    return { kind, status, std::nullopt, QStringLiteral("A refusal by the files in memory.") };
}

QString collectionPath(const QString& path)
{
    return path.isEmpty() || path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

/// The path of the collection that this one stands in.
QString parentOf(const QString& path)
{
    return path.left(path.chopped(1).lastIndexOf(QLatin1Char('/')) + 1);
}

QString nameOf(const QString& path)
{
    const QString name = path.sliced(parentOf(path).size());
    return name.endsWith(QLatin1Char('/')) ? name.chopped(1) : name;
}

} // namespace

MemoryFileStore::MemoryFileStore(std::shared_ptr<MemoryFiles> files)
    : m_files(std::move(files))
{
}

template <class T>
Outcome<T> MemoryFileStore::faulty(
    const Request& request, const std::function<Outcome<T>(qsizetype)>& action)
{
    m_requests.append(request);
    const std::optional<Fault> fault = m_faults ? m_faults(request) : std::nullopt;
    if (!fault)
        return action(everything);
    if (fault->when == When::Instead)
        return fault->error ? Outcome<T>(*fault->error) : Outcome<T>();
    const Outcome<T> outcome = action(fault->when == When::Midway ? fault->part : everything);
    return fault->error ? Outcome<T>(*fault->error) : outcome;
}

Outcome<QList<FileEntry>> MemoryFileStore::list(const QString& collection)
{
    const QString path = collectionPath(collection);
    return faulty<QList<FileEntry>>(
        { Operation::List, path }, [&](qsizetype) { return listed(path); });
}

Outcome<Download> MemoryFileStore::get(const QString& file, QIODevice& device, qint64 limit)
{
    return faulty<Download>({ Operation::Get, file },
        [&](qsizetype part) { return fetched(file, device, limit, part); });
}

Outcome<> MemoryFileStore::put(const QString& file, const QByteArray& bytes)
{
    return faulty<std::monostate>(
        { Operation::Put, file }, [&](qsizetype part) { return stored(file, bytes.left(part)); });
}

Outcome<Making> MemoryFileStore::makeCollection(const QString& collection)
{
    const QString path = collectionPath(collection);
    return faulty<Making>(
        { Operation::MakeCollection, path }, [&](qsizetype) { return made(path); });
}

Outcome<> MemoryFileStore::remove(const QString& path, Trash)
{
    return faulty<std::monostate>(
        { Operation::Remove, path }, [&](qsizetype part) { return removed(path, part); });
}

Outcome<QList<FileEntry>> MemoryFileStore::listed(const QString& collection) const
{
    if (!m_files->hasCollection(collection))
        return error(Kind::NotFound, 404);
    QList<FileEntry> entries;
    for (const QString& each : m_files->collections)
        if (parentOf(each) == collection)
            entries.append({ nameOf(each), FileEntry::Type::Collection, std::nullopt });
    for (auto each = m_files->files.cbegin(); each != m_files->files.cend(); ++each)
        if (parentOf(each.key()) == collection)
            entries.append({ nameOf(each.key()), FileEntry::Type::File, each->size() });
    return entries;
}

Outcome<Download> MemoryFileStore::fetched(
    const QString& file, QIODevice& device, qint64 limit, qsizetype part) const
{
    const auto found = m_files->files.constFind(file);
    if (found == m_files->files.cend())
        return error(Kind::NotFound, 404);
    const QByteArray bytes = found->left(part);
    if (bytes.size() > limit)
        return error(Kind::NotUnderstood, 200);
    if (device.write(bytes) != bytes.size())
        return error(Kind::LocalFile, 0);
    return Download { bytes.size(),
        QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex() };
}

Outcome<> MemoryFileStore::stored(const QString& file, const QByteArray& bytes)
{
    if (!m_files->hasCollection(parentOf(file)))
        return error(Kind::Conflict, 409);
    m_files->files.insert(file, bytes);
    return {};
}

Outcome<Making> MemoryFileStore::made(const QString& collection)
{
    if (m_files->hasCollection(collection) || m_files->files.contains(collection.chopped(1)))
        return Making::Refused;
    if (!m_files->hasCollection(parentOf(collection)))
        return error(Kind::Conflict, 409);
    m_files->collections.insert(collection);
    return Making::Made;
}

Outcome<> MemoryFileStore::removed(const QString& path, qsizetype part)
{
    if (!path.endsWith(QLatin1Char('/')))
        return m_files->files.remove(path) > 0 ? Outcome<>() : error(Kind::NotFound, 404);
    if (!m_files->hasCollection(path))
        return error(Kind::NotFound, 404);
    const QStringList names = m_files->files.keys();
    qsizetype left = part;
    for (const QString& name : names)
        if (name.startsWith(path) && left-- > 0)
            m_files->files.remove(name);
    if (left < 0)
        return error(Kind::Server, 207);
    std::erase_if(m_files->collections, [&](const QString& each) { return each.startsWith(path); });
    return {};
}

} // namespace mirror
