#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

#include <optional>
#include <variant>
#include <vector>

/// The types that a model can give an attribute. Each number is the index of the type in
/// AttributeValue.
enum class AttributeType : quint8 { Boolean = 1, Integer32, Double, String, Date };

/// One value of a record; absent where it holds std::monostate. Dates are points in time, in whole
/// milliseconds, handed out in UTC.
using AttributeValue = std::variant<std::monostate, bool, qint32, double, QString, QDateTime>;

/// The values of one record, in the order of the entity's attributes.
using AttributeValues = std::vector<AttributeValue>;

/// True for a value of the type, and for an absent one.
[[nodiscard]] bool isAbsentOr(AttributeType type, const AttributeValue& value);

/// True also for a double that is not a number: the store has no such value, and where a record
/// that was not yet saved has one, it must have a place in every order all the same.
[[nodiscard]] bool isAbsent(const AttributeValue& value);

/// Invalid for an absent value.
[[nodiscard]] QVariant toVariant(const AttributeValue& value);

/// Nothing where the variant holds no value of the type. An invalid variant reads as absent, and a
/// whole number as a double where one is wanted.
[[nodiscard]] std::optional<AttributeValue> fromVariant(const QVariant& value, AttributeType type);

/// True for values that are stored alike. The two zeros of a double are not.
[[nodiscard]] bool isSame(const AttributeValue& left, const AttributeValue& right);

/// Negative, zero or positive, in the order in which the store sorts: absent values first, texts
/// by their UTF-8 bytes. Both values must be of one type, or absent.
[[nodiscard]] int compare(const AttributeValue& left, const AttributeValue& right);
