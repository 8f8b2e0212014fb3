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

std::optional<QString> Item::refFromText(const QString& text)
{
    QString line = text;
    for (QChar& character : line) {
        if (character == QLatin1Char('\n') || character == QLatin1Char('\r')
            || character == QChar::LineSeparator || character == QChar::ParagraphSeparator)
            character = QLatin1Char(' ');
    }
    return line.toUtf8().size() <= longestRef ? std::optional(line) : std::nullopt;
}
