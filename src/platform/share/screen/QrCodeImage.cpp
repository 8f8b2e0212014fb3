#include "QrCodeImage.h"

#include "QrCode.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

void paintModules(QPainter& painter, const QrCode& code, QSize pixels)
{
    const int modules = code.side() + 2 * QrCode::quietZone;
    const int module = std::min(pixels.width(), pixels.height()) / modules;
    const int left = (pixels.width() - module * code.side()) / 2;
    const int top = (pixels.height() - module * code.side()) / 2;
    for (int row = 0; row < code.side(); ++row) {
        for (int column = 0; column < code.side(); ++column) {
            if (code.isDark(row, column))
                painter.fillRect(
                    left + column * module, top + row * module, module, module, Qt::black);
        }
    }
}

} // namespace

QrCodeImage::QrCodeImage(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    connect(this, &QrCodeImage::changed, this, [this] { update(); });
}

void QrCodeImage::paint(QPainter* painter)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::white);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->drawRoundedRect(boundingRect(), m_radius, m_radius);
    const std::optional<QrCode> code = QrCode::encode(m_text);
    if (!code)
        return;
    // In points, a module would end between two pixels where the screen has one and a half of them.
    const QTransform toPixels = painter->transform();
    painter->setTransform(QTransform::fromTranslate(toPixels.dx(), toPixels.dy()));
    painter->setRenderHint(QPainter::Antialiasing, false);
    paintModules(*painter, *code,
        { static_cast<int>(std::floor(width() * toPixels.m11())),
            static_cast<int>(std::floor(height() * toPixels.m22())) });
}
