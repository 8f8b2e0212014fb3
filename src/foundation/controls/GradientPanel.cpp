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

void GradientPanel::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        update();
}

/// Made anew each time: it hardly ever changes.
QSGNode* GradientPanel::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    delete node;
    const double scale = window()->effectiveDevicePixelRatio();
    const int edge = static_cast<int>(std::ceil((m_radius + 1.0) * scale));
    const QSize pixels(std::min(2 * edge + 1, static_cast<int>(std::round(width() * scale))),
        static_cast<int>(std::round(height() * scale)));
    if (pixels.isEmpty())
        return nullptr;

    QSGTexture* const texture = window()->createTextureFromImage(painted(pixels, scale));
    const int left = (pixels.width() - 1) / 2;
    const int right = pixels.width() - 1 - left;
    const double leftEnd = left / scale;
    const double rightBegin = width() - right / scale;
    auto all = std::make_unique<QSGNode>();
    const auto append = [&](double from, double to, int column, int columns) {
        auto part = imageNode(*window(), texture, { from, 0.0, to - from, height() },
            QRectF(column, 0, columns, pixels.height()));
        part->setOwnsTexture(all->childCount() == 0);
        all->appendChildNode(part.release());
    };
    append(0.0, leftEnd, 0, left);
    append(leftEnd, rightBegin, left, 1);
    append(rightBegin, width(), left + 1, right);
    return all.release();
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
