#include "LineCursor.h"

#include <charconv>

namespace mirror {

namespace {

JsonValue booleanValue(bool boolean)
{
    JsonValue value;
    value.kind = JsonValue::Kind::Boolean;
    value.boolean = boolean;
    return value;
}

} // namespace

void LineCursor::skip(QByteArrayView text)
{
    if (m_rest.startsWith(text))
        m_rest = m_rest.sliced(text.size());
    else
        m_isRight = false;
}

JsonValue LineCursor::scalarAfter(QByteArrayView opening)
{
    skip(opening);
    if (!m_isRight || m_rest.isEmpty())
        return {};
    switch (m_rest.front()) {
    case '"':
        return text();
    case 't':
        skip("true");
        return booleanValue(true);
    case 'f':
        skip("false");
        return booleanValue(false);
    case 'n':
        skip("null");
        return {};
    default:
        return integer();
    }
}

JsonValue LineCursor::text()
{
    const qsizetype end = m_rest.indexOf('"', 1);
    if (end < 0) {
        m_isRight = false;
        return {};
    }
    JsonValue value;
    value.kind = JsonValue::Kind::String;
    value.text = m_rest.sliced(1, end - 1).toByteArray();
    m_rest = m_rest.sliced(end + 1);
    return value;
}

JsonValue LineCursor::integer()
{
    JsonValue value;
    value.kind = JsonValue::Kind::Integer;
    const auto [end, error] = std::from_chars(m_rest.begin(), m_rest.end(), value.integer);
    m_isRight = m_isRight && error == std::errc();
    m_rest = m_rest.sliced(end - m_rest.begin());
    return value;
}

} // namespace mirror
