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
    double width; // in points
    double height;
    double scale; // pixels for a point
    bool mirrored;

    [[nodiscard]] auto tied() const { return std::tie(name, width, height, scale, mirrored); }
    friend bool operator<(const Shape& a, const Shape& b) { return a.tied() < b.tied(); }
};

/// Null where there is no such icon.
QImage draw(const Shape& shape)
{
    const QString file = iconFile(shape.name);
    if (shape.name.isEmpty() || !QFile::exists(file))
        return {};
    QImage image(static_cast<int>(std::ceil(shape.width * shape.scale)),
        static_cast<int>(std::ceil(shape.height * shape.scale)),
        QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(shape.scale, shape.scale);
    if (shape.mirrored) {
        painter.translate(shape.width, 0.0);
        painter.scale(-1.0, 1.0);
    }
    QSvgRenderer(file).render(&painter, QRectF(0.0, 0.0, shape.width, shape.height));
    painter.end();
    image.setDevicePixelRatio(shape.scale);
    return image;
}

/// Kept for good: there are no more than the sizes of the few icons.
const QImage& drawn(const Shape& shape)
{
    static std::map<Shape, QImage> all;
    const auto found = all.find(shape);
    return found == all.end() ? all.emplace(shape, draw(shape)).first->second : found->second;
}

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
    (void)drawn({ name, naturalSize, naturalSize, scale, false });
}

void Icon::paint(QPainter* painter)
{
    const QImage& shape
        = drawn({ m_name, width(), height(), painter->deviceTransform().m11(), m_mirrored });
    if (shape.isNull())
        return;
    painter->drawImage(QPointF(), shape);
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(QRectF(0.0, 0.0, width(), height()), m_color);
}
