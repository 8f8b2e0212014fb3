#include "ModelCloud.h"

#include "MirrorFixture.h"

using namespace mirror;

namespace {

QString nameIn(const QString& path) { return path.sliced(path.lastIndexOf(QLatin1Char('/')) + 1); }

std::optional<Epoch> epochIn(const QString& folder)
{
    const QString zone = modelFolders().zone();
    if (!folder.startsWith(zone) || folder == zone)
        return std::nullopt;
    return Epoch::fromFolderName(folder.sliced(zone.size()).chopped(1));
}

bool isMarker(const QString& path) { return Epoch::fromClosedMarkerName(nameIn(path)).has_value(); }

} // namespace

const MirrorFolders& modelFolders()
{
    static const MirrorFolders result { QStringLiteral("org.example.notes/") };
    return result;
}

QString folderOf(const QString& path) { return path.left(path.lastIndexOf(QLatin1Char('/')) + 1); }

void ModelCloud::learn(qint64 time)
{
    m_revision += qint64(std::erase_if(
        m_known, [&](const auto& each) { return !m_files->files.contains(each.first); }));
    for (auto each = m_files->files.cbegin(); each != m_files->files.cend(); ++each) {
        if (const auto known = m_known.find(each.key());
            known == m_known.end() || !known->second.bytes.isSharedWith(*each))
            learnFile(each.key(), *each);
    }
    learnEpochs(time);
}

void ModelCloud::learnEpochs(qint64 time)
{
    for (const QString& folder : m_files->collections) {
        if (epochIn(folder))
            m_epochs.try_emplace(folder);
    }
    for (auto& [folder, missingSince] : m_epochs) {
        if (!missingSince && !isThere(folder) && !isClosed(folder))
            missingSince = time;
    }
}

void ModelCloud::learnFile(const QString& path, const QByteArray& bytes)
{
    ++m_revision;
    const QString fileName = nameIn(path);
    const auto name = FileName::fromText(fileName);
    const bool isWhole = name && *name == FileName::of(name->content, bytes);
    m_known.insert_or_assign(path, Known { bytes, isWhole });
    if (!isWhole || m_records.contains(fileName) || m_keyValues.contains(fileName))
        return;
    if (name->content == FileContent::Records) {
        for (const Record& record : readRecords(bytes, noteSchema()).records)
            m_records[fileName].insert_or_assign(record.id, record);
    } else {
        for (const KeyValue& entry : readKeyValues(bytes).entries)
            m_keyValues[fileName].insert_or_assign(entry.key, entry);
    }
}

template <> const ModelCloud::Rows<Record>* ModelCloud::contents<Record>(const QString& name) const
{
    const auto found = m_records.find(name);
    return found == m_records.end() ? nullptr : &found->second;
}

template <>
const ModelCloud::Rows<KeyValue>* ModelCloud::contents<KeyValue>(const QString& name) const
{
    const auto found = m_keyValues.find(name);
    return found == m_keyValues.end() ? nullptr : &found->second;
}

bool ModelCloud::isWhole(const QString& path) const
{
    const auto known = m_known.find(path);
    return known != m_known.end() && known->second.isWhole;
}

template <class Row>
ModelCloud::Rows<Row> ModelCloud::told(const QString& folder, const QString& without) const
{
    Rows<Row> told;
    for (const auto& [path, known] : m_known) {
        if (!known.isWhole || path == without || folderOf(path) != folder)
            continue;
        const Rows<Row>* rows = contents<Row>(nameIn(path));
        if (rows == nullptr)
            continue;
        for (const auto& [key, row] : *rows) {
            const auto [before, isNew] = told.try_emplace(key, row);
            before->second = RowFormat<Row>::join(before->second, row);
        }
    }
    return told;
}

template ModelCloud::Rows<Record> ModelCloud::told<Record>(const QString&, const QString&) const;
template ModelCloud::Rows<KeyValue> ModelCloud::told<KeyValue>(
    const QString&, const QString&) const;

bool ModelCloud::isClosed(const QString& epochFolder) const
{
    const auto epoch = epochIn(epochFolder);
    return epoch && m_files->files.contains(modelFolders().zone() + epoch->closedMarkerName());
}

bool ModelCloud::isAnyEpochOpen() const
{
    return std::ranges::any_of(m_files->collections,
        [this](const QString& folder) { return epochIn(folder) && !isClosed(folder); });
}

std::optional<qint64> ModelCloud::missingSince(const QString& epochFolder) const
{
    const auto found = m_epochs.find(epochFolder);
    return found == m_epochs.end() ? std::nullopt : found->second;
}

QString ModelCloud::picture() const
{
    QString result;
    for (auto file = m_files->files.cbegin(); file != m_files->files.cend(); ++file)
        result += file.key() + QString::number(file->size());
    for (const QString& folder : m_files->collections)
        result += folder;
    return result;
}

void ModelCloud::wipe(Chance& chance)
{
    ++m_wipes;
    expectLoss();
    const quint32 which = chance.below(100);
    if (which < 3)
        removeFolder(modelFolders().container);
    else if (which < 12)
        removeFolder(modelFolders().zone());
    else if (which < 35)
        wipeFiles(chance, 1000);
    else
        wipeFiles(chance, 200);
    if (which >= 12)
        wipeEpochs(chance);
}

void ModelCloud::removeFolder(const QString& folder)
{
    for (const QString& path : m_files->files.keys()) {
        if (path.startsWith(folder))
            m_files->files.remove(path);
    }
    std::erase_if(
        m_files->collections, [&](const QString& path) { return path.startsWith(folder); });
}

void ModelCloud::wipeFiles(Chance& chance, quint32 perMille)
{
    for (const QString& path : m_files->files.keys()) {
        const bool isRows = path.endsWith(QStringLiteral(".jsonl"));
        if (isRows ? chance.happens(perMille) : isMarker(path) && chance.happens(50))
            m_files->files.remove(path);
    }
}

void ModelCloud::wipeEpochs(Chance& chance)
{
    const auto folders = m_files->collections;
    for (const QString& folder : folders) {
        if (epochIn(folder) && chance.happens(300))
            removeFolder(folder);
    }
}
