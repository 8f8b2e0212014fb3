#include "StoreFixture.h"

#include "Diagnostics.h"

QByteArray noteModelJson()
{
    return R"({"version": "1", "entities": [{"name": "Note", "attributes": [
        {"name": "title", "type": "string", "optional": true},
        {"name": "count", "type": "integer32"},
        {"name": "weight", "type": "double"},
        {"name": "stamp", "type": "date", "optional": true},
        {"name": "isDone", "type": "boolean"}], "indexes": ["stamp"]}]})";
}

std::shared_ptr<NSManagedObjectModel> modelFrom(const QByteArray& json)
{
    auto model = NSManagedObjectModel::parse(json);
    if (!model)
        fatalError(model.error().toString().toStdString());
    return *model;
}

std::shared_ptr<NSManagedObjectModel> noteModel()
{
    // One for the process: identities of two containers on one file then compare equal.
    static const std::shared_ptr<NSManagedObjectModel> model = modelFrom(noteModelJson());
    return model;
}

std::shared_ptr<NSManagedObjectModel> newerNoteModel()
{
    return modelFrom(R"({"version": "2", "entities": [
        {"name": "Note", "attributes": [
            {"name": "colour", "type": "string", "default": "it's red"},
            {"name": "title", "type": "string", "optional": true},
            {"name": "count", "type": "integer32"},
            {"name": "weight", "type": "double"},
            {"name": "stamp", "type": "date", "optional": true},
            {"name": "rating", "type": "integer32", "default": 3},
            {"name": "isDone", "type": "boolean"}], "indexes": ["stamp", "rating"]},
        {"name": "Tag", "attributes": [{"name": "name", "type": "string"}]}]})");
}

QDateTime at(qint64 milliseconds) { return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC); }

namespace {

std::optional<StoreError> load(
    NSPersistentContainer& container, const QString& file, const QStringList& options)
{
    NSPersistentStoreDescription& description = container.persistentStoreDescriptions().front();
    description.setURL(QUrl::fromLocalFile(file));
    for (const QString& option : options)
        description.setOption(true, option);
    std::optional<StoreError> problem;
    container.loadPersistentStores([&](const auto&, const auto& error) { problem = error; });
    return problem;
}

} // namespace

std::unique_ptr<NSPersistentContainer> openContainer(const QString& file,
    const std::shared_ptr<NSManagedObjectModel>& model, const QStringList& options)
{
    auto container = std::make_unique<NSPersistentContainer>(QStringLiteral("Notes"), model);
    if (const auto problem = load(*container, file, options))
        fatalError(problem->toString().toStdString());
    return container;
}

std::optional<StoreError> openError(const QString& file,
    const std::shared_ptr<NSManagedObjectModel>& model, const QStringList& options)
{
    NSPersistentContainer container(QStringLiteral("Notes"), model);
    return load(container, file, options);
}

NSManagedObjectContext::Object addNote(
    NSManagedObjectContext& context, const QString& title, qint64 stamp)
{
    auto note = context.insertNewObject(QStringLiteral("Note"));
    note->setValue(title, QStringLiteral("title"));
    note->setValue(at(stamp), QStringLiteral("stamp"));
    return note;
}

void mustSave(NSManagedObjectContext& context)
{
    if (const auto saved = context.save(); !saved)
        fatalError(saved.error().toString().toStdString());
}

NSFetchRequest notesByDate(SortDescriptor::Order order)
{
    NSFetchRequest request { QStringLiteral("Note"), {}, {} };
    request.sortDescriptors = { { QStringLiteral("stamp"), order } };
    return request;
}

QString title(const NSManagedObject& note)
{
    return note.value(QStringLiteral("title")).toString();
}

QStringList titles(NSManagedObjectContext& context, const NSFetchRequest& request)
{
    const auto notes = context.fetch(request);
    if (!notes)
        fatalError(notes.error().toString().toStdString());
    QStringList result;
    for (const auto& note : *notes)
        result.append(title(*note));
    return result;
}

QStringList titles(NSManagedObjectContext& context)
{
    return titles(context, NSFetchRequest { QStringLiteral("Note"), {}, {} });
}

QStringList words(const char* text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); }
