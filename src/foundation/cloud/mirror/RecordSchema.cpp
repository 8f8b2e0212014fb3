#include "RecordSchema.h"

#include "JsonLine.h"

#include <QStringBuilder>

#include <algorithm>

namespace mirror {

RecordSchema::RecordSchema(
    QByteArray format, QByteArray renamable, std::vector<SchemaAttribute> attributes)
    : m_format(std::move(format))
    , m_renamable(std::move(renamable))
    , m_attributes(std::move(attributes))
{
    for (std::size_t i = 0; i < m_attributes.size(); ++i)
        m_members.push_back({ i, quotedJson(m_attributes[i].name) + ":" });
    std::ranges::sort(m_members, {}, [this](const Member& member) -> const QByteArray& {
        return m_attributes[member.attribute].name;
    });
}

} // namespace mirror
