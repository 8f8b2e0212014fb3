#include "AttributeValue.h"

#include <QByteArray>

#include <bit>
#include <cmath>
#include <limits>

bool isAbsentOr(AttributeType type, const AttributeValue& value)
{
    return value.index() == 0 || value.index() == static_cast<std::size_t>(type);
}

QVariant toVariant(const AttributeValue& value)
{
    return std::visit(
        [](const auto& content) {
            if constexpr (std::is_same_v<std::decay_t<decltype(content)>, std::monostate>)
                return QVariant();
            else
                return QVariant::fromValue(content);
        },
        value);
}

namespace {

std::optional<AttributeValue> integerFrom(const QVariant& value)
{
    bool isNumber = false;
    const qlonglong number = value.toLongLong(&isNumber);
    if (!isNumber || value.typeId() == QMetaType::QString
        || number < std::numeric_limits<qint32>::min()
        || number > std::numeric_limits<qint32>::max()
        || static_cast<double>(number) != value.toDouble())
        return std::nullopt;
    return AttributeValue(static_cast<qint32>(number));
}

std::optional<AttributeValue> doubleFrom(const QVariant& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber || value.typeId() == QMetaType::QString)
        return std::nullopt;
    return AttributeValue(number);
}

} // namespace

std::optional<AttributeValue> fromVariant(const QVariant& value, AttributeType type)
{
    if (!value.isValid())
        return AttributeValue();
    switch (type) {
    case AttributeType::Boolean:
        if (value.typeId() == QMetaType::Bool)
            return AttributeValue(value.toBool());
        return std::nullopt;
    case AttributeType::Integer32:
        return integerFrom(value);
    case AttributeType::Double:
        return doubleFrom(value);
    case AttributeType::String:
        if (value.typeId() == QMetaType::QString)
            return AttributeValue(value.toString());
        return std::nullopt;
    case AttributeType::Date:
        if (value.typeId() == QMetaType::QDateTime && value.toDateTime().isValid())
            return AttributeValue(value.toDateTime().toUTC());
        return std::nullopt;
    }
    return std::nullopt;
}

bool isSame(const AttributeValue& left, const AttributeValue& right)
{
    const auto* number = std::get_if<double>(&left);
    const auto* other = std::get_if<double>(&right);
    if (number != nullptr && other != nullptr)
        return std::bit_cast<quint64>(*number) == std::bit_cast<quint64>(*other);
    return left == right;
}

bool isAbsent(const AttributeValue& value)
{
    const auto* number = std::get_if<double>(&value);
    return value.index() == 0 || (number != nullptr && std::isnan(*number));
}

int compare(const AttributeValue& left, const AttributeValue& right)
{
    if (isAbsent(left) || isAbsent(right))
        return static_cast<int>(!isAbsent(left)) - static_cast<int>(!isAbsent(right));
    // The store compares texts as bytes; UTF-16 code units sort differently above U+FFFF.
    if (const auto* text = std::get_if<QString>(&left))
        return text->toUtf8().compare(std::get<QString>(right).toUtf8());
    if (left == right)
        return 0;
    return left < right ? -1 : 1;
}
