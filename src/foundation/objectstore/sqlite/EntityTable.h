#pragma once

#include "../NSFetchRequest.h"
#include "../NSManagedObjectModel.h"
#include "SqliteConnection.h"

/// How one entity lies in the file: the SQL that reads and writes it, and the numbers by which the
/// file knows it and its attributes.
///
/// The table has the columns _id (the identity's number), _version and one for each attribute.
/// Names of a model have no underscore, so they cannot meet ours. A double has a column without a
/// type, because a REAL one would lose the sign of zero.
class EntityTable {
public:
    /// `attributeNumbers` are those that the file gave the attributes, in the entity's order.
    EntityTable(const NSEntityDescription& entity, int number, std::vector<int> attributeNumbers);

    [[nodiscard]] const NSEntityDescription& entity() const { return m_entity; }
    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] const std::string& name() const { return m_name; }
    [[nodiscard]] const std::string& insertSql() const { return m_insertSql; }
    [[nodiscard]] const std::string& rowSql() const { return m_rowSql; }
    /// Selects the columns of rows(); an incomplete statement.
    [[nodiscard]] const std::string& selectSql() const { return m_selectSql; }
    /// Sets the attributes of the set and the version of one row.
    [[nodiscard]] std::string updateSql(quint64 attributes) const;
    [[nodiscard]] std::string column(int attribute) const;

    /// Positions in the entity as numbers of the file, and back; both as sets of bits.
    [[nodiscard]] quint64 toFile(quint64 attributes) const;
    [[nodiscard]] quint64 fromFile(quint64 attributes) const;

    /// The values of a row of selectSql(), whose columns are _id, _version and the attributes.
    [[nodiscard]] AttributeValues values(SQLite::Statement& row) const;

    static std::string declaration(const NSAttributeDescription& attribute);

private:
    const NSEntityDescription& m_entity;
    int m_number;
    std::vector<int> m_attributeNumbers;
    std::string m_name;
    std::string m_insertSql;
    std::string m_rowSql;
    std::string m_selectSql;
};

void bindValue(SQLite::Statement& statement, int position, const AttributeValue& value);
AttributeValue valueOf(const SQLite::Column& column, AttributeType type);

/// The part of a query behind its columns. Throws StoreError (InvalidRequest) for names that the
/// entity lacks and for a value of another type.
class RequestSql {
public:
    /// How records that the sort does not tell apart are put in order.
    enum class Ties { StoreOrder, AsIndexed };

    RequestSql(const EntityTable& table, const NSFetchRequest& request, Ties ties);

    [[nodiscard]] std::string where() const { return " FROM " + m_table + m_where; }
    [[nodiscard]] std::string whole() const
    {
        return where() + m_order + (m_isBounded ? " LIMIT ?2 OFFSET ?3" : "");
    }
    /// For a statement that ends with where().
    void bindWhere(SQLite::Statement& statement) const;
    /// For a statement that ends with whole().
    void bindWhole(SQLite::Statement& statement) const;

private:
    std::string m_table;
    std::string m_where;
    std::string m_order;
    bool m_isBounded;
    qint64 m_limit;
    qint64 m_offset;
    std::optional<AttributeValue> m_value;
};
