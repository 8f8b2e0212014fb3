#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

/// A rounded surface with a vertical gradient and an outline, with smooth corners in every
/// renderer: the software renderer draws those of a Rectangle with a gradient in steps. No more is
/// kept as an image than its two edges and one column between them, which is stretched.
class GradientPanel : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor topColor MEMBER m_topColor NOTIFY changed)
    Q_PROPERTY(QColor bottomColor MEMBER m_bottomColor NOTIFY changed)
    Q_PROPERTY(QColor outlineColor MEMBER m_outlineColor NOTIFY changed)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)

public:
    explicit GradientPanel(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    [[nodiscard]] QImage painted(const QSize& pixels, double pixelsPerPoint) const;

    QColor m_topColor;
    QColor m_bottomColor;
    QColor m_outlineColor;
    double m_radius = 0.0;
};
