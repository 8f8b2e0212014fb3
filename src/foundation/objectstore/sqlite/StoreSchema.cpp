#include "StoreSchema.h"

#include <QUuid>

#include <map>

namespace {

constexpr qint64 applicationId = 0x56784f53; // "VxOS"
constexpr qint64 formatVersion = 1;

struct StoredAttribute {
    int number = 0;
    int type = 0;
};

struct StoredEntity {
    int number = 0;
    std::map<QString, StoredAttribute> attributes;
};

using StoredModel = std::map<QString, StoredEntity>;

[[noreturn]] void refuse(StoreError::Code code, const StoreText& description, const QString& path)
{
    throw StoreError { code, description, { { QStringLiteral("path"), path } } };
}

bool isEmpty(SqliteConnection& connection)
{
    return connection.integer("PRAGMA application_id") == 0
        && connection.integer("SELECT count(*) FROM sqlite_schema") == 0;
}

void examineFormat(SqliteConnection& connection)
{
    if (connection.integer("PRAGMA application_id") != applicationId)
        refuse(StoreError::Code::Corrupt,
            { QT_TRANSLATE_NOOP("StoreError", "The file is not a store.") }, connection.path());
    if (connection.integer("PRAGMA user_version") > formatVersion)
        refuse(StoreError::Code::NewerFormat,
            { QT_TRANSLATE_NOOP("StoreError", "The store was written by a later version.") },
            connection.path());
}

StoredModel storedModel(SqliteConnection& connection)
{
    StoredModel model;
    std::map<int, QString> names;
    Query entities(connection, "SELECT number, name FROM _store_entity");
    while (entities->executeStep()) {
        const int number = entities->getColumn(0).getInt();
        names[number] = QString::fromUtf8(entities->getColumn(1).getText());
        model[names[number]].number = number;
    }
    Query attributes(connection, "SELECT entity, name, number, type FROM _store_attribute");
    while (attributes->executeStep()) {
        const QString name = QString::fromUtf8(attributes->getColumn(1).getText());
        model[names[attributes->getColumn(0).getInt()]].attributes[name]
            = { attributes->getColumn(2).getInt(), attributes->getColumn(3).getInt() };
    }
    return model;
}

/// Every entity and attribute of the file must be one of the model: values that the model does not
/// know would be lost.
void examineKnown(const StoredModel& stored, const NSManagedObjectModel& model, const QString& path)
{
    const auto incompatible = [&](const StoreText& description) {
        refuse(StoreError::Code::IncompatibleModel, description, path);
    };
    for (const auto& [name, entity] : stored) {
        const NSEntityDescription* known = model.entity(name);
        if (known == nullptr)
            incompatible({ QT_TRANSLATE_NOOP("StoreError",
                               "The store was written with another model: it has the entity %1."),
                { name } });
        for (const auto& [attribute, layout] : entity.attributes) {
            const std::optional<int> index = known->indexOfAttribute(attribute);
            if (!index)
                incompatible(
                    { QT_TRANSLATE_NOOP("StoreError",
                          "The store was written with another model: it has the attribute %1.%2."),
                        { name, attribute } });
            if (static_cast<int>(known->attributes()[static_cast<std::size_t>(*index)].type)
                != layout.type)
                incompatible(
                    { QT_TRANSLATE_NOOP("StoreError",
                          "The store was written with another model: %1.%2 is of another type."),
                        { name, attribute } });
        }
    }
}

bool lacksSomething(const StoredModel& stored, const NSManagedObjectModel& model)
{
    for (const auto& entity : model.entities()) {
        const auto found = stored.find(entity->name());
        if (found == stored.end() || found->second.attributes.size() != entity->attributes().size())
            return true;
    }
    return false;
}

void createOwnTables(SqliteConnection& connection)
{
    connection.database().exec(R"(
        CREATE TABLE _store_metadata (key TEXT PRIMARY KEY, value) WITHOUT ROWID;
        CREATE TABLE _store_entity (number INTEGER PRIMARY KEY, name TEXT UNIQUE, last INTEGER);
        CREATE TABLE _store_attribute (entity INTEGER, number INTEGER, name TEXT, type INTEGER,
            PRIMARY KEY (entity, number)) WITHOUT ROWID;
        CREATE TABLE _store_origin (entity INTEGER, first INTEGER, identifier INTEGER,
            PRIMARY KEY (entity, first)) WITHOUT ROWID;
        CREATE TABLE _store_history (number INTEGER PRIMARY KEY, stamp INTEGER, author TEXT,
            kind INTEGER, entity INTEGER, attributes INTEGER, identities);
    )");
    connection.database().exec("PRAGMA application_id = " + std::to_string(applicationId));
    connection.database().exec("PRAGMA user_version = " + std::to_string(formatVersion));
    Query insert(connection, "INSERT INTO _store_metadata VALUES ('identifier', ?)");
    insert->bind(1, QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString());
    insert->exec();
}

std::string literal(SqliteConnection& connection, const AttributeValue& value)
{
    Query query(connection, "SELECT quote(?)");
    query->clearBindings();
    bindValue(*query, 1, value);
    query->executeStep();
    return query->getColumn(0).getString();
}

void addAttribute(SqliteConnection& connection, const NSEntityDescription& entity,
    StoredEntity& stored, const NSAttributeDescription& attribute)
{
    const int number = static_cast<int>(stored.attributes.size());
    stored.attributes[attribute.name] = { number, static_cast<int>(attribute.type) };
    Query insert(connection, "INSERT INTO _store_attribute VALUES (?, ?, ?, ?)");
    insert->bind(1, stored.number);
    insert->bind(2, number);
    insert->bind(3, attribute.name.toStdString());
    insert->bind(4, static_cast<int>(attribute.type));
    insert->exec();
    connection.database().exec("ALTER TABLE \"" + entity.name().toStdString() + "\" ADD COLUMN "
        + EntityTable::declaration(attribute) + " DEFAULT "
        + literal(connection, attribute.defaultValue));
}

StoredEntity& addEntity(
    SqliteConnection& connection, StoredModel& stored, const NSEntityDescription& entity)
{
    StoredEntity& added = stored[entity.name()];
    added.number = static_cast<int>(stored.size());
    Query insert(connection, "INSERT INTO _store_entity VALUES (?, ?, 0)");
    insert->bind(1, added.number);
    insert->bind(2, entity.name().toStdString());
    insert->exec();
    connection.database().exec("CREATE TABLE \"" + entity.name().toStdString()
        + "\" (_id INTEGER PRIMARY KEY, _version INTEGER)");
    return added;
}

void addIndexes(SqliteConnection& connection, const NSEntityDescription& entity)
{
    for (const int index : entity.indexes()) {
        const QString attribute = entity.attributes()[static_cast<std::size_t>(index)].name;
        const QString sql
            = QStringLiteral("CREATE INDEX IF NOT EXISTS \"_%1_%2\" ON \"%1\" (\"%2\")")
                  .arg(entity.name(), attribute);
        connection.database().exec(sql.toStdString());
    }
}

void addWhatIsMissing(
    SqliteConnection& connection, StoredModel& stored, const NSManagedObjectModel& model)
{
    for (const auto& entity : model.entities()) {
        const auto found = stored.find(entity->name());
        StoredEntity& entry
            = found != stored.end() ? found->second : addEntity(connection, stored, *entity);
        for (const NSAttributeDescription& attribute : entity->attributes()) {
            if (entry.attributes.find(attribute.name) == entry.attributes.end())
                addAttribute(connection, *entity, entry, attribute);
        }
        addIndexes(connection, *entity);
    }
    const QString name = model.versionIdentifier() + QLatin1Char(' ')
        + QString::fromLatin1(model.versionHash().toHex());
    Query version(connection, "INSERT OR REPLACE INTO _store_metadata VALUES ('model', ?)");
    version->bind(1, name.toStdString());
    version->exec();
}

std::shared_ptr<const EntityTables> tablesOf(
    const StoredModel& stored, const NSManagedObjectModel& model)
{
    std::vector<EntityTable> tables;
    for (const auto& entity : model.entities()) {
        const StoredEntity& entry = stored.at(entity->name());
        std::vector<int> numbers;
        for (const NSAttributeDescription& attribute : entity->attributes())
            numbers.push_back(entry.attributes.at(attribute.name).number);
        tables.emplace_back(*entity, entry.number, std::move(numbers));
    }
    return std::make_shared<EntityTables>(std::move(tables));
}

} // namespace

void StoreSchema::examine(
    SqliteConnection& connection, const NSManagedObjectModel& model, Migration migration)
{
    if (isEmpty(connection))
        return;
    examineFormat(connection);
    const StoredModel stored = storedModel(connection);
    examineKnown(stored, model, connection.path());
    if (migration == Migration::Refuse && lacksSomething(stored, model))
        refuse(StoreError::Code::IncompatibleModel,
            { QT_TRANSLATE_NOOP("StoreError", "The store was written with an older model.") },
            connection.path());
}

std::shared_ptr<const EntityTables> StoreSchema::prepare(
    SqliteConnection& connection, const NSManagedObjectModel& model, Migration migration)
{
    const bool isNew = isEmpty(connection);
    if (!isNew)
        examine(connection, model, migration);
    if (!isNew && !lacksSomething(storedModel(connection), model))
        return tablesOf(storedModel(connection), model);

    // Another process may be doing the same: look again from inside the transaction.
    SQLite::Transaction transaction(connection.database(), SQLite::TransactionBehavior::IMMEDIATE);
    if (isEmpty(connection))
        createOwnTables(connection);
    else
        examine(connection, model, migration);
    StoredModel stored = storedModel(connection);
    addWhatIsMissing(connection, stored, model);
    transaction.commit();
    return tablesOf(stored, model);
}
