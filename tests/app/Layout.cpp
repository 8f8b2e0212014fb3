#include "Layout.h"

#include <QVariant>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double tolerance = 1.0; // points, for what is rounded to pixels
constexpr double leastSize = 0.6; // of a figure that has little room

bool isFlickable(const QQuickItem& item) { return item.inherits("QQuickFlickable"); }

bool isSeen(const QQuickItem& item) { return item.isVisible() && item.opacity() > 0.0; }

QRectF placeOf(const QQuickItem& item)
{
    return item.mapRectToScene(QRectF(QPointF(), item.size()));
}

/// Where the lines stand in a text's item.
QRectF paintedLines(const QQuickItem& text)
{
    const QSizeF lines(
        text.property("contentWidth").toDouble(), text.property("contentHeight").toDouble());
    const auto room = QSizeF(text.size()) - lines;
    const auto across = text.property("effectiveHorizontalAlignment").toInt();
    const auto down = text.property("verticalAlignment").toInt();
    const double x = across == Qt::AlignRight ? room.width()
        : across == Qt::AlignHCenter          ? room.width() / 2.0
                                              : 0.0;
    const double y = down == Qt::AlignBottom ? room.height()
        : down == Qt::AlignVCenter           ? room.height() / 2.0
                                             : 0.0;
    return text.mapRectToScene(QRectF(QPointF(x, y), lines));
}

bool isCut(const QQuickItem& text)
{
    return text.property("truncated").toBool()
        || text.property("contentWidth").toDouble() > text.width() + tolerance
        || text.property("contentHeight").toDouble() > text.height() + tolerance;
}

void addText(const QQuickItem& item, std::vector<Drawn>& drawn)
{
    const QString text = item.property("text").toString();
    if (!text.isEmpty())
        drawn.push_back(
            { .text = text, .place = paintedLines(item), .cut = isCut(item), .item = &item });
}

void addFigure(const QQuickItem& item, std::vector<Drawn>& drawn)
{
    const QString text = item.property("text").toString();
    if (!text.isEmpty())
        drawn.push_back({ .kind = Drawn::Kind::Figure,
            .text = text,
            .place = placeOf(item),
            .size = std::min(1.0, item.width() / item.implicitWidth()),
            .item = &item });
}

void add(const QQuickItem& item, std::vector<Drawn>& drawn)
{
    if (item.inherits("QQuickText"))
        addText(item, drawn);
    else if (item.inherits("FigureText"))
        addFigure(item, drawn);
    else if (item.inherits("Icon") && !item.property("name").toString().isEmpty())
        drawn.push_back({ .kind = Drawn::Kind::Icon,
            .text = item.property("name").toString(),
            .place = placeOf(item),
            .item = &item });
    else if (item.inherits("QQuickAbstractButton") || item.inherits("QQuickTextInput")
        || item.inherits("QQuickSlider"))
        drawn.push_back({ .kind = Drawn::Kind::Control,
            .text = QString::fromLatin1(item.metaObject()->className()),
            .place = placeOf(item),
            .item = &item });
}

/// What is left of a place after all that scrolls or clips around the item.
QRectF inSight(const Drawn& one)
{
    QRectF place = one.place;
    for (const QQuickItem* around = one.item->parentItem(); around; around = around->parentItem()) {
        if (isFlickable(*around) || around->clip())
            place &= placeOf(*around);
    }
    return place;
}

/// Whether an item's edge can be seen, by what it draws or by what it cuts off.
bool isBounded(const QQuickItem& item)
{
    const std::array drawing { "QQuickRectangle", "GradientPanel", "QQuickAbstractButton",
        "QQuickPopupItem", "QQuickFlickable", "QQuickRootItem" };
    return item.clip()
        || std::ranges::any_of(drawing, [&item](const char* name) { return item.inherits(name); });
}

QString described(const Drawn& one)
{
    return QStringLiteral("'%1' at %2, %3, %4 x %5")
        .arg(one.text.left(40))
        .arg(one.place.x())
        .arg(one.place.y())
        .arg(one.place.width())
        .arg(one.place.height());
}

bool holds(const QRectF& around, const QRectF& place, bool scrolls)
{
    const bool across
        = place.left() >= around.left() - tolerance && place.right() <= around.right() + tolerance;
    const bool down
        = place.top() >= around.top() - tolerance && place.bottom() <= around.bottom() + tolerance;
    return across && (scrolls || down);
}

/// What around it does not hold all of it; null where everything does.
const QQuickItem* leftItem(const Drawn& one)
{
    bool scrolls = false;
    for (const QQuickItem* around = one.item->parentItem(); around; around = around->parentItem()) {
        scrolls = scrolls || isFlickable(*around);
        if (isBounded(*around) && !holds(placeOf(*around), one.place, scrolls))
            return around;
    }
    return nullptr;
}

bool overlap(const Drawn& one, const Drawn& other)
{
    const bool nested = one.item->isAncestorOf(other.item) || other.item->isAncestorOf(one.item);
    if (nested)
        return false;
    const QRectF common = inSight(one) & inSight(other);
    return common.width() > tolerance && common.height() > tolerance;
}

} // namespace

QList<const QQuickItem*> shownIn(const QQuickItem& root)
{
    if (!isSeen(root))
        return {};
    QList<const QQuickItem*> items { &root };
    for (const QQuickItem* const child : root.childItems())
        items.append(shownIn(*child));
    return items;
}

bool showsText(const QQuickItem& item)
{
    const bool isText = item.inherits("QQuickText") || item.inherits("QQuickTextInput")
        || item.inherits("FigureText");
    return isText && !item.property("text").toString().isEmpty();
}

std::vector<Drawn> drawnIn(const QQuickItem& root)
{
    std::vector<Drawn> drawn;
    for (const QQuickItem* const item : shownIn(root))
        add(*item, drawn);
    std::erase_if(
        drawn, [](const Drawn& one) { return !one.place.isEmpty() && inSight(one).isEmpty(); });
    return drawn;
}

QStringList faultsOf(const std::vector<Drawn>& drawn, const QStringList& ofAnyLength)
{
    QStringList faults;
    for (const Drawn& one : drawn) {
        const bool mayBeCut = std::ranges::any_of(
            ofAnyLength, [&one](const QString& start) { return one.text.startsWith(start); });
        if (one.cut && !mayBeCut)
            faults.append(described(one) + QStringLiteral(" is cut"));
        if (one.kind == Drawn::Kind::Text && one.place.isEmpty())
            faults.append(described(one) + QStringLiteral(" has no room"));
        if (one.size < leastSize)
            faults.append(described(one) + QStringLiteral(" is drawn too small"));
        if (const QQuickItem* const left = leftItem(one); left && !one.cut)
            faults.append(described(one) + QStringLiteral(" leaves ")
                + QLatin1String(left->metaObject()->className()));
    }
    for (auto one = drawn.begin(); one != drawn.end(); ++one) {
        for (auto other = std::next(one); other != drawn.end(); ++other) {
            if (overlap(*one, *other))
                faults.append(described(*one) + QStringLiteral(" lies over ") + described(*other));
        }
    }
    return faults;
}

QStringList unmirrored(
    const std::vector<Drawn>& leftToRight, const std::vector<Drawn>& rightToLeft, double width)
{
    if (leftToRight.size() != rightToLeft.size())
        return {
            QStringLiteral("%1 things became %2").arg(leftToRight.size()).arg(rightToLeft.size())
        };
    QStringList faults;
    for (std::size_t i = 0; i < leftToRight.size(); ++i) {
        const double expected = width - leftToRight[i].place.right();
        if (std::abs(rightToLeft[i].place.left() - expected) > 2.0 * tolerance)
            faults.append(described(rightToLeft[i]) + QStringLiteral(" should be at ")
                + QString::number(expected));
    }
    return faults;
}
