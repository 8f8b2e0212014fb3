#include "GradientPanel.h"

#include <QLinearGradient>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRendererInterface>
#include <QSGTexture>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

/// For an item that stands between two pixels. The software renderer puts it on one of them, and
/// what is stretched only where it is not filtered.
QSGTexture::Filtering filtering(const QQuickWindow& window)
{
    const auto renderer = window.rendererInterface()->graphicsApi();
    return renderer == QSGRendererInterface::Software ? QSGTexture::Nearest : QSGTexture::Linear;
}

std::unique_ptr<QSGImageNode> imageNode(
    QQuickWindow& window, QSGTexture* texture, const QRectF& target, const QRectF& source)
{
    std::unique_ptr<QSGImageNode> node(window.createImageNode());
    node->setTexture(texture);
    node->setRect(target);
    node->setSourceRect(source);
    node->setFiltering(filtering(window));
    return node;
}

} // namespace

GradientPanel::GradientPanel(QQuickItem* parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &GradientPanel::changed, this, &GradientPanel::update);
}

void GradientPanel::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        update();
}

/// Made anew each time: it hardly ever changes. All parts begin and end at whole pixels.
QSGNode* GradientPanel::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    delete node;
    const double scale = window()->effectiveDevicePixelRatio();
    const QSize all = (size() * scale).toSize();
    const int edge = static_cast<int>(std::ceil((m_radius + 1.0) * scale));
    const QSize kept(std::min(2 * edge + 1, all.width()), all.height());
    if (kept.isEmpty())
        return nullptr;

    QSGTexture* const texture = window()->createTextureFromImage(painted(kept, scale));
    const int left = (kept.width() - 1) / 2;
    const int right = kept.width() - 1 - left;
    auto parts = std::make_unique<QSGNode>();
    const auto append = [&](int from, int to, int column, int columns) {
        const QRectF target(QPointF(from, 0) / scale, QSizeF(to - from, all.height()) / scale);
        const QRectF source(column, 0, columns, all.height());
        auto part = imageNode(*window(), texture, target, source);
        part->setOwnsTexture(parts->childCount() == 0);
        parts->appendChildNode(part.release());
    };
    append(0, left, 0, left);
    append(left, all.width() - right, left, 1);
    append(all.width() - right, all.width(), left + 1, right);
    return parts.release();
}

QImage GradientPanel::painted(const QSize& pixels, double pixelsPerPoint) const
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QSizeF size = QSizeF(pixels) / pixelsPerPoint;
    QLinearGradient gradient(0.0, 0.0, 0.0, size.height());
    gradient.setColorAt(0.0, m_topColor);
    gradient.setColorAt(1.0, m_bottomColor);
    QPainter painter(&image);
    painter.scale(pixelsPerPoint, pixelsPerPoint);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(gradient);
    painter.setPen(m_outlineColor);
    const QRectF outline = QRectF(QPointF(), size).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(outline, m_radius, m_radius);
    return image;
}
