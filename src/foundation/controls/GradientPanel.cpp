#include "GradientPanel.h"

#include <QLinearGradient>
#include <QPainter>

GradientPanel::GradientPanel(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    connect(this, &GradientPanel::changed, this, [this] { update(); });
}

void GradientPanel::paint(QPainter* painter)
{
    QLinearGradient gradient(0.0, 0.0, 0.0, height());
    gradient.setColorAt(0.0, m_topColor);
    gradient.setColorAt(1.0, m_bottomColor);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(gradient);
    painter->setPen(m_outlineColor);
    const QRectF outline = QRectF(0.0, 0.0, width(), height()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter->drawRoundedRect(outline, m_radius, m_radius);
}
