#include "NSManagedObjectModel.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>

namespace {

constexpr qsizetype longestName = 63;
constexpr std::size_t maxAttributes = 63; // the history keeps a set of them in one integer

struct Unusable {
    QString reason;
};

[[noreturn]] void reject(const QString& reason) { throw Unusable { reason }; }

bool isLetter(QChar c)
{
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
        || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
}

bool isLetterOrDigit(QChar c)
{
    return isLetter(c) || (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
}

/// By hand: every start of the program asks it, and would load the library of regular expressions.
bool isName(const QString& text)
{
    return !text.isEmpty() && text.size() <= longestName && isLetter(text.front())
        && std::all_of(text.begin(), text.end(), isLetterOrDigit);
}

QString nameIn(const QJsonObject& object)
{
    QString name = object.value(QLatin1String("name")).toString();
    if (!isName(name))
        reject(QStringLiteral("\"%1\" is no usable name").arg(name));
    return name;
}

AttributeType typeIn(const QJsonObject& object)
{
    static const QHash<QString, AttributeType> types {
        { QStringLiteral("boolean"), AttributeType::Boolean },
        { QStringLiteral("integer32"), AttributeType::Integer32 },
        { QStringLiteral("double"), AttributeType::Double },
        { QStringLiteral("string"), AttributeType::String },
        { QStringLiteral("date"), AttributeType::Date },
    };
    const QString name = object.value(QLatin1String("type")).toString();
    const auto found = types.constFind(name);
    if (found == types.cend())
        reject(QStringLiteral("\"%1\" is no attribute type").arg(name));
    return *found;
}

AttributeValue zeroOf(AttributeType type)
{
    switch (type) {
    case AttributeType::Boolean:
        return false;
    case AttributeType::Integer32:
        return qint32(0);
    case AttributeType::Double:
        return 0.0;
    default:
        return {};
    }
}

AttributeValue defaultIn(const QJsonObject& object, const NSAttributeDescription& attribute)
{
    const QJsonValue given = object.value(QLatin1String("default"));
    if (given.isUndefined() || given.isNull())
        return attribute.isOptional ? AttributeValue() : zeroOf(attribute.type);
    QVariant value = given.toVariant();
    if (attribute.type == AttributeType::Date)
        value = QDateTime::fromString(given.toString(), Qt::ISODateWithMs);
    const auto converted = fromVariant(value, attribute.type);
    if (!converted || converted->index() == 0)
        reject(QStringLiteral("the default of \"%1\" is not of its type").arg(attribute.name));
    return *converted;
}

NSAttributeDescription attributeFrom(const QJsonObject& object)
{
    NSAttributeDescription attribute;
    attribute.name = nameIn(object);
    attribute.type = typeIn(object);
    attribute.isOptional = object.value(QLatin1String("optional")).toBool();
    attribute.defaultValue = defaultIn(object, attribute);
    return attribute;
}

/// SQL does not tell names apart by case, so the model must not either.
template <class Named, class NameOf>
void sortAndRejectTwins(std::vector<Named>& list, NameOf nameOf)
{
    std::sort(list.begin(), list.end(),
        [&](const Named& a, const Named& b) { return nameOf(a) < nameOf(b); });
    QSet<QString> seen;
    for (const Named& named : list) {
        if (seen.contains(nameOf(named).toLower()))
            reject(QStringLiteral("the name \"%1\" occurs twice").arg(nameOf(named)));
        seen.insert(nameOf(named).toLower());
    }
}

std::unique_ptr<NSEntityDescription> entityFrom(const QJsonObject& object)
{
    std::vector<NSAttributeDescription> attributes;
    for (const QJsonValueConstRef value : object.value(QLatin1String("attributes")).toArray())
        attributes.push_back(attributeFrom(value.toObject()));
    if (attributes.empty() || attributes.size() > maxAttributes)
        reject(QStringLiteral("an entity has 1 to %1 attributes").arg(maxAttributes));
    sortAndRejectTwins(attributes, [](const auto& a) { return a.name; });

    std::vector<int> indexes;
    for (const QJsonValueConstRef value : object.value(QLatin1String("indexes")).toArray()) {
        const auto found = std::find_if(attributes.begin(), attributes.end(),
            [&](const auto& attribute) { return attribute.name == value.toString(); });
        if (found == attributes.end())
            reject(QStringLiteral("an index names no attribute"));
        indexes.push_back(static_cast<int>(found - attributes.begin()));
    }
    return std::make_unique<NSEntityDescription>(
        nameIn(object), std::move(attributes), std::move(indexes));
}

std::shared_ptr<NSManagedObjectModel> modelFrom(const QByteArray& json)
{
    QJsonParseError problem;
    const QJsonObject root = QJsonDocument::fromJson(json, &problem).object();
    if (problem.error != QJsonParseError::NoError)
        reject(problem.errorString());
    std::vector<std::unique_ptr<NSEntityDescription>> entities;
    for (const QJsonValueConstRef value : root.value(QLatin1String("entities")).toArray())
        entities.push_back(entityFrom(value.toObject()));
    if (entities.empty())
        reject(QStringLiteral("it describes no entity"));
    sortAndRejectTwins(entities, [](const auto& entity) { return entity->name(); });
    return std::make_shared<NSManagedObjectModel>(
        root.value(QLatin1String("version")).toString(), std::move(entities));
}

StoreError unreadable(const QUrl& url, const QString& reason)
{
    return { StoreError::Code::ModelUnreadable,
        { "The model %1 cannot be read: %2.", { url.toString(), reason } },
        { { QStringLiteral("url"), url } } };
}

} // namespace

Result<std::shared_ptr<NSManagedObjectModel>> NSManagedObjectModel::load(const QUrl& url)
{
    QFile file(url.toLocalFile());
    if (!file.open(QIODevice::ReadOnly))
        return unreadable(url, file.errorString());
    return parse(file.readAll(), url);
}

Result<std::shared_ptr<NSManagedObjectModel>> NSManagedObjectModel::parse(
    const QByteArray& json, const QUrl& url)
{
    try {
        return modelFrom(json);
    } catch (const Unusable& unusable) {
        return unreadable(url, unusable.reason);
    }
}

NSManagedObjectModel::NSManagedObjectModel(
    QString versionIdentifier, std::vector<std::unique_ptr<NSEntityDescription>> entities)
    : m_versionIdentifier(std::move(versionIdentifier))
    , m_entities(std::move(entities))
{
}

NSEntityDescription* NSManagedObjectModel::entity(const QString& name) const
{
    const auto found = std::find_if(m_entities.begin(), m_entities.end(),
        [&](const auto& entity) { return entity->name() == name; });
    return found == m_entities.end() ? nullptr : found->get();
}

QByteArray NSManagedObjectModel::versionHash() const
{
    QByteArray text;
    for (const auto& entity : m_entities) {
        text += entity->name().toUtf8() + '\n';
        for (const NSAttributeDescription& attribute : entity->attributes())
            text += attribute.name.toUtf8() + ' '
                + QByteArray::number(static_cast<int>(attribute.type)) + '\n';
    }
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256);
}
