#include "EntityTable.h"

#include <algorithm>

namespace {

std::string quoted(const QString& name) { return '"' + name.toStdString() + '"'; }

[[noreturn]] void rejectRequest(const StoreText& description)
{
    throw StoreError { StoreError::Code::InvalidRequest, description, {} };
}

int requiredAttribute(const NSEntityDescription& entity, const QString& name)
{
    const std::optional<int> index = entity.indexOfAttribute(name);
    if (!index)
        rejectRequest({ "%1 has no attribute %2.", { entity.name(), name } });
    return *index;
}

const char* operatorOf(Predicate::Comparison comparison)
{
    switch (comparison) {
    case Predicate::Comparison::LessThan:
        return " < ?1";
    case Predicate::Comparison::LessOrEqual:
        return " <= ?1";
    case Predicate::Comparison::Equal:
        return " IS ?1"; // as =, but true for two absent values
    case Predicate::Comparison::GreaterOrEqual:
        return " >= ?1";
    case Predicate::Comparison::GreaterThan:
        break;
    }
    return " > ?1";
}

} // namespace

EntityTable::EntityTable(
    const NSEntityDescription& entity, int number, std::vector<int> attributeNumbers)
    : m_entity(entity)
    , m_number(number)
    , m_attributeNumbers(std::move(attributeNumbers))
    , m_name(quoted(entity.name()))
{
    std::string columns = "_id, _version";
    std::string places = "?, ?";
    std::string qualified = m_name + "._id, " + m_name + "._version";
    for (int i = 0; i < entity.attributeCount(); ++i) {
        columns += ", " + column(i);
        places += ", ?";
        qualified += ", " + m_name + '.' + column(i);
    }
    m_insertSql = "INSERT INTO " + m_name + " (" + columns + ") VALUES (" + places + ")";
    m_selectSql = "SELECT " + qualified;
    m_rowSql = m_selectSql + " FROM " + m_name + " WHERE _id = ?";
}

std::string EntityTable::column(int attribute) const
{
    return quoted(m_entity.attributes()[static_cast<std::size_t>(attribute)].name);
}

std::string EntityTable::updateSql(quint64 attributes) const
{
    std::string sql = "UPDATE " + m_name + " SET _version = ?";
    for (int i = 0; i < m_entity.attributeCount(); ++i) {
        if (attributes >> i & 1)
            sql += ", " + column(i) + " = ?";
    }
    return sql + " WHERE _id = ?";
}

quint64 EntityTable::toFile(quint64 attributes) const
{
    quint64 result = 0;
    for (std::size_t i = 0; i < m_attributeNumbers.size(); ++i) {
        if (attributes >> i & 1)
            result |= quint64(1) << m_attributeNumbers[i];
    }
    return result;
}

quint64 EntityTable::fromFile(quint64 attributes) const
{
    quint64 result = 0;
    for (std::size_t i = 0; i < m_attributeNumbers.size(); ++i) {
        if (attributes >> m_attributeNumbers[i] & 1)
            result |= quint64(1) << i;
    }
    return result;
}

AttributeValues EntityTable::values(SQLite::Statement& row) const
{
    AttributeValues values;
    values.reserve(m_entity.attributes().size());
    int position = 2;
    for (const NSAttributeDescription& attribute : m_entity.attributes())
        values.push_back(valueOf(row.getColumn(position++), attribute.type));
    return values;
}

std::string EntityTable::declaration(const NSAttributeDescription& attribute)
{
    switch (attribute.type) {
    case AttributeType::Double:
        return quoted(attribute.name);
    case AttributeType::String:
        return quoted(attribute.name) + " TEXT";
    default:
        return quoted(attribute.name) + " INTEGER";
    }
}

void bindValue(SQLite::Statement& statement, int position, const AttributeValue& value)
{
    switch (value.index()) {
    case static_cast<std::size_t>(AttributeType::Boolean):
        return statement.bind(position, static_cast<int32_t>(std::get<bool>(value)));
    case static_cast<std::size_t>(AttributeType::Integer32):
        return statement.bind(position, static_cast<int32_t>(std::get<qint32>(value)));
    case static_cast<std::size_t>(AttributeType::Double):
        return statement.bind(position, std::get<double>(value));
    case static_cast<std::size_t>(AttributeType::String):
        return statement.bind(position, std::get<QString>(value).toStdString());
    case static_cast<std::size_t>(AttributeType::Date): {
        const auto stamp = std::get<QDateTime>(value).toMSecsSinceEpoch();
        return statement.bind(position, static_cast<int64_t>(stamp));
    }
    default:
        return statement.bind(position);
    }
}

AttributeValue valueOf(const SQLite::Column& column, AttributeType type)
{
    if (column.isNull())
        return {};
    switch (type) {
    case AttributeType::Boolean:
        return column.getInt() != 0;
    case AttributeType::Integer32:
        return static_cast<qint32>(column.getInt());
    case AttributeType::Double:
        return column.getDouble();
    case AttributeType::String: {
        const char* text = column.getText();
        return QString::fromUtf8(text, column.getBytes());
    }
    case AttributeType::Date:
        return QDateTime::fromMSecsSinceEpoch(column.getInt64(), Qt::UTC);
    }
    return {};
}

RequestSql::RequestSql(const EntityTable& table, const NSFetchRequest& request, Ties ties)
    : m_table(table.name())
    , m_isBounded(request.fetchLimit > 0 || request.fetchOffset > 0)
    , m_limit(request.fetchLimit > 0 ? request.fetchLimit : -1)
    , m_offset(std::max(request.fetchOffset, 0))
{
    const NSEntityDescription& entity = table.entity();
    if (request.predicate) {
        const int index = requiredAttribute(entity, request.predicate->attribute);
        const auto type = entity.attributes()[static_cast<std::size_t>(index)].type;
        m_value = fromVariant(request.predicate->value, type);
        if (!m_value || (isAbsent(*m_value) && request.predicate->value.isValid()))
            rejectRequest({ "%1.%2 is compared with a value of another type.",
                { entity.name(), request.predicate->attribute } });
        m_where = " WHERE " + table.column(index) + operatorOf(request.predicate->comparison);
    }
    bool descending = false;
    for (const SortDescriptor& sort : request.sortDescriptors) {
        descending = sort.order == SortDescriptor::Order::Descending;
        m_order += (m_order.empty() ? " ORDER BY " : ", ")
            + table.column(requiredAttribute(entity, sort.attribute))
            + (descending ? " DESC" : " ASC");
    }
    m_order += m_order.empty() ? " ORDER BY _id" : ", _id";
    if (ties == Ties::AsIndexed && descending)
        m_order += " DESC";
}

void RequestSql::bindWhere(SQLite::Statement& statement) const
{
    if (m_value)
        bindValue(statement, 1, *m_value);
}

void RequestSql::bindWhole(SQLite::Statement& statement) const
{
    bindWhere(statement);
    if (!m_isBounded)
        return;
    statement.bind(2, static_cast<int64_t>(m_limit));
    statement.bind(3, static_cast<int64_t>(m_offset));
}
