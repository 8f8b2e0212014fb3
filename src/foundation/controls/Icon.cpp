#include "Icon.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace {

constexpr double naturalSize = 22.0;

QString iconFile(const QString& name)
{
    return QLatin1String(":/qt-project.org/imports/Vexilo/Controls/icons/") + name
        + QLatin1String(".svg");
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

void Icon::paint(QPainter* painter)
{
    const QString file = iconFile(m_name);
    if (m_name.isEmpty() || !QFile::exists(file))
        return;
    if (m_mirrored) {
        painter->translate(width(), 0.0);
        painter->scale(-1.0, 1.0);
    }
    QSvgRenderer(file).render(painter, QRectF(0.0, 0.0, width(), height()));
    // The drawing gives the shape, the property the colour.
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(QRectF(0.0, 0.0, width(), height()), m_color);
}
