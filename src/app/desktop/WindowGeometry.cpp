#include "WindowGeometry.h"

#include <QMap>

#include <algorithm>

namespace {

constexpr int greatestSide = 32767; // of the X server's windows and places
constexpr int greatestMargin = 200;

using Values = QMap<QByteArray, QByteArray>;

Values valuesIn(const QByteArray& text)
{
    Values values;
    for (const QByteArray& line : text.split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals > 0)
            values.insert(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
    }
    return values;
}

/// Nothing where there is no whole number from the least to the greatest.
std::optional<int> number(const Values& values, const char* key, int least, int greatest)
{
    bool isNumber = false;
    const int value = values.value(key).toInt(&isNumber);
    const bool fits = isNumber && value >= least && value <= greatest;
    return fits ? std::optional(value) : std::nullopt;
}

std::optional<QPoint> placeIn(const Values& values)
{
    const std::optional<int> x = number(values, "x", -greatestSide, greatestSide);
    const std::optional<int> y = number(values, "y", -greatestSide, greatestSide);
    return x && y ? std::optional(QPoint(*x, *y)) : std::nullopt;
}

QMargins frameIn(const Values& values)
{
    const auto margin
        = [&values](const char* key) { return number(values, key, 0, greatestMargin).value_or(0); };
    return { margin("frameLeft"), margin("frameTop"), margin("frameRight"), margin("frameBottom") };
}

qint64 area(const QRect& rectangle)
{
    return rectangle.isEmpty() ? 0 : qint64 { rectangle.width() } * rectangle.height();
}

/// The upper left corner is what must be seen of a window that is too large.
int within(int least, int at, int most) { return std::max(least, std::min(at, most)); }

} // namespace

QByteArray textOf(const WindowGeometry& geometry)
{
    QByteArray text = "[Window]\n";
    const auto add
        = [&text](const char* key, const QByteArray& value) { text += key + ('=' + value) + '\n'; };
    const auto addNumber
        = [&add](const char* key, int value) { add(key, QByteArray::number(value)); };
    if (geometry.place) {
        addNumber("x", geometry.place->x());
        addNumber("y", geometry.place->y());
    }
    addNumber("width", geometry.size.width());
    addNumber("height", geometry.size.height());
    addNumber("frameLeft", geometry.frame.left());
    addNumber("frameTop", geometry.frame.top());
    addNumber("frameRight", geometry.frame.right());
    addNumber("frameBottom", geometry.frame.bottom());
    add("maximized", geometry.isMaximised ? "true" : "false");
    return text;
}

std::optional<WindowGeometry> windowGeometryFrom(const QByteArray& text)
{
    const Values values = valuesIn(text);
    const std::optional<int> width = number(values, "width", 1, greatestSide);
    const std::optional<int> height = number(values, "height", 1, greatestSide);
    if (!width || !height)
        return std::nullopt;
    return WindowGeometry { .size = { *width, *height },
        .place = placeIn(values),
        .frame = frameIn(values),
        .isMaximised = values.value("maximized") == "true" };
}

WindowGeometry restored(
    const WindowGeometry& geometry, const QList<QRect>& screens, QSize leastSize)
{
    WindowGeometry result = geometry;
    result.size = geometry.size.expandedTo(leastSize);
    if (screens.isEmpty()) {
        result.place.reset();
        return result;
    }
    // Without a place it may be on any of them, also on the roomiest.
    const QRect seen = QRect(geometry.place.value_or(QPoint()), result.size) + geometry.frame;
    const auto seenOn
        = [&](const QRect& screen) { return geometry.place ? area(screen & seen) : area(screen); };
    const QRect screen = *std::max_element(screens.begin(), screens.end(),
        [&](const QRect& one, const QRect& other) { return seenOn(one) < seenOn(other); });

    const QRect room = screen - geometry.frame;
    result.size = result.size.boundedTo(room.size()).expandedTo(leastSize);
    if (!geometry.place)
        return result;
    const QPoint wanted
        = seenOn(screen) > 0 ? *geometry.place : room.center() - QRect({}, result.size).center();
    result.place
        = QPoint(within(room.left(), wanted.x(), room.left() + room.width() - result.size.width()),
            within(room.top(), wanted.y(), room.top() + room.height() - result.size.height()));
    return result;
}
