#include "Icon.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>
#include <map>
#include <tuple>

namespace {

constexpr double naturalSize = 22.0;

QString iconFile(const QString& name)
{
    return QLatin1String(":/qt-project.org/imports/Vexilo/Controls/icons/") + name
        + QLatin1String(".svg");
}

/// What an icon looks like but for its colour.
struct Shape {
    QString name;
    int width; // in pixels
    int height;
    bool mirrored;

    [[nodiscard]] auto tied() const { return std::tie(name, width, height, mirrored); }
    friend bool operator<(const Shape& a, const Shape& b) { return a.tied() < b.tied(); }
};

/// Null where there is no such icon, or no pixel of it.
QImage draw(const Shape& shape)
{
    const QString file = iconFile(shape.name);
    if (shape.width < 1 || shape.height < 1 || shape.name.isEmpty() || !QFile::exists(file))
        return {};
    QImage image(shape.width, shape.height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    if (shape.mirrored) {
        painter.translate(shape.width, 0.0);
        painter.scale(-1.0, 1.0);
    }
    QSvgRenderer(file).render(&painter, QRectF(0.0, 0.0, shape.width, shape.height));
    painter.end();
    // An image that was painted on keeps the engine that did it, which is larger than itself.
    return image.copy();
}

/// Kept for good: there are no more than the sizes of the few icons.
const QImage& drawn(const Shape& shape)
{
    static std::map<Shape, QImage> all;
    const auto found = all.find(shape);
    return found == all.end() ? all.emplace(shape, draw(shape)).first->second : found->second;
}

/// As many whole pixels as the scene graph has a picture of.
int pixels(double points, double scale) { return static_cast<int>(std::round(points * scale)); }

} // namespace

Icon::Icon(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    setImplicitSize(naturalSize, naturalSize);
    connect(this, &Icon::nameChanged, this, [this] { update(); });
    connect(this, &Icon::colorChanged, this, [this] { update(); });
    connect(this, &Icon::mirroredChanged, this, [this] { update(); });
}

void Icon::prepare(const QString& name, double scale)
{
    const int size = pixels(naturalSize, scale);
    (void)drawn({ name, size, size, false });
}

void Icon::paint(QPainter* painter)
{
    const QTransform& scale = painter->deviceTransform();
    const QImage& shape = drawn(
        { m_name, pixels(width(), scale.m11()), pixels(height(), scale.m22()), m_mirrored });
    if (shape.isNull())
        return;
    const QRectF place(0.0, 0.0, width(), height());
    painter->drawImage(place, shape);
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(place, m_color);
}
