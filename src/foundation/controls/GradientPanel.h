#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

/// A rounded surface with a vertical gradient and an outline, with smooth corners in every
/// renderer: the software renderer draws those of a Rectangle with a gradient in steps.
class GradientPanel : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor topColor MEMBER m_topColor NOTIFY changed)
    Q_PROPERTY(QColor bottomColor MEMBER m_bottomColor NOTIFY changed)
    Q_PROPERTY(QColor outlineColor MEMBER m_outlineColor NOTIFY changed)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)

public:
    explicit GradientPanel(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_topColor;
    QColor m_bottomColor;
    QColor m_outlineColor;
    double m_radius = 0.0;
};
