#include "JsonTree.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace mirror {

namespace {

JsonValue valueOf(JsonValue::Kind kind)
{
    JsonValue value;
    value.kind = kind;
    return value;
}

JsonValue valueOf(JsonValue::Kind kind, QByteArray text)
{
    JsonValue value = valueOf(kind);
    value.text = std::move(text);
    return value;
}

/// Builds the tree while the parser goes through the text, and stops it at the first fault: each
/// function returns whether to go on. A parser that is stopped throws nothing.
class TreeBuilder final : public nlohmann::json_sax<nlohmann::json> {
public:
    [[nodiscard]] JsonValue takeRoot() { return std::move(m_root); }

    bool null() override { return add(valueOf(JsonValue::Kind::Null)); }
    bool boolean(bool value) override
    {
        JsonValue json = valueOf(JsonValue::Kind::Boolean);
        json.boolean = value;
        return add(std::move(json));
    }
    bool number_integer(number_integer_t value) override { return addInteger(value); }
    bool number_unsigned(number_unsigned_t value) override
    {
        if (std::in_range<qint64>(value))
            return addInteger(static_cast<qint64>(value));
        return addNumber(QByteArray::number(qulonglong(value)));
    }
    bool number_float(number_float_t, const string_t& written) override
    {
        return addNumber(QByteArray::fromStdString(written));
    }
    bool string(string_t& value) override
    {
        return isShort(value)
            && add(valueOf(JsonValue::Kind::String, QByteArray::fromStdString(value)));
    }
    bool binary(binary_t&) override { return false; } // JSON has none

    bool start_object(std::size_t) override { return open(JsonValue::Kind::Object); }
    bool key(string_t& name) override
    {
        auto& names = m_open.back()->names;
        const QByteArray bytes = QByteArray::fromStdString(name);
        if (!isShort(name) || std::find(names.begin(), names.end(), bytes) != names.end())
            return false;
        names.push_back(bytes);
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(JsonValue::Kind::Array); }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception&) override
    {
        return false;
    }

private:
    static bool isShort(const string_t& text)
    {
        return text.size() <= static_cast<std::size_t>(JsonLimits::TextBytes);
    }

    bool addInteger(qint64 value)
    {
        JsonValue json = valueOf(JsonValue::Kind::Integer);
        json.integer = value;
        return add(std::move(json));
    }
    bool addNumber(const QByteArray& written)
    {
        return add(valueOf(JsonValue::Kind::Number, written));
    }

    bool add(JsonValue value)
    {
        if (++m_count > JsonLimits::Values)
            return false;
        place(std::move(value));
        return true;
    }

    bool open(JsonValue::Kind kind)
    {
        if (m_open.size() == JsonLimits::Nesting || ++m_count > JsonLimits::Values)
            return false;
        m_open.push_back(&place(valueOf(kind)));
        return true;
    }

    bool close()
    {
        m_open.pop_back();
        return true;
    }

    /// A container gets no new element while one of its elements is open, so that the addresses of
    /// the open ones hold.
    JsonValue& place(JsonValue value)
    {
        if (m_open.empty())
            return m_root = std::move(value);
        return m_open.back()->values.emplace_back(std::move(value));
    }

    JsonValue m_root;
    std::vector<JsonValue*> m_open; // from the root to the innermost
    int m_count = 0;
};

} // namespace

std::optional<JsonValue> readJsonTree(QByteArrayView json)
{
    TreeBuilder builder;
    if (!nlohmann::json::sax_parse(json.begin(), json.end(), &builder))
        return std::nullopt;
    return builder.takeRoot();
}

} // namespace mirror
