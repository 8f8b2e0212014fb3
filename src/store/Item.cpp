#include "Item.h"

#include "NSManagedObjectContext.h"

#include <algorithm>
#include <array>

namespace {

const QString entityName = QStringLiteral("Item");

struct Attribute {
    QLatin1String name;
    AttributeType type;
};

} // namespace

std::shared_ptr<Item> Item::make(NSManagedObjectContext& context)
{
    return std::static_pointer_cast<Item>(context.insertNewObject(entityName));
}

NSFetchRequest Item::fetchRequest()
{
    NSFetchRequest request;
    request.entityName = entityName;
    return request;
}

bool Item::isDescribedBy(const NSEntityDescription& entity)
{
    static constexpr std::array<Attribute, AttributeCount> expected { {
        { QLatin1String("bill"), AttributeType::Double },
        { QLatin1String("everyone"), AttributeType::Boolean },
        { QLatin1String("people"), AttributeType::Integer32 },
        { QLatin1String("ref"), AttributeType::String },
        { QLatin1String("roundshare"), AttributeType::Boolean },
        { QLatin1String("roundtip"), AttributeType::Boolean },
        { QLatin1String("service"), AttributeType::Integer32 },
        { QLatin1String("share"), AttributeType::Double },
        { QLatin1String("timestamp"), AttributeType::Date },
        { QLatin1String("tip"), AttributeType::Double },
        { QLatin1String("total"), AttributeType::Double },
    } };
    return std::equal(entity.attributes().begin(), entity.attributes().end(), expected.begin(),
        expected.end(), [](const NSAttributeDescription& found, const Attribute& wanted) {
            return found.name == wanted.name && found.type == wanted.type;
        });
}

QString Item::oneLine(const QString& text)
{
    static const QString breaks = QStringLiteral("\n\r\v\f\u0085\u2028\u2029");
    QString line = text;
    for (QChar& character : line) {
        if (breaks.contains(character))
            character = QLatin1Char(' ');
    }
    return line;
}

std::optional<QString> Item::refFromText(const QString& text)
{
    const QString line = oneLine(text);
    return line.toUtf8().size() <= longestRef ? std::optional(line) : std::nullopt;
}
