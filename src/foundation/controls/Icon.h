#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

/// One of the program's own icons, drawn in one colour. 22 points square by itself.
class Icon : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// The icon's name; an unknown or empty one draws nothing.
    Q_PROPERTY(QString name MEMBER m_name NOTIFY nameChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)
    /// Whether the icon points somewhere, and so is mirrored in a right-to-left layout.
    Q_PROPERTY(bool mirrored MEMBER m_mirrored NOTIFY mirroredChanged)

public:
    explicit Icon(QQuickItem* parent = nullptr);

    /// Draws an icon's shape ahead, not mirrored, in its natural size and so many pixels for a
    /// point: showing it so then takes no more than its colour. Neither this nor painting is for
    /// two threads at once; the main thread waits while the scene graph's paints.
    static void prepare(const QString& name, double scale);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();
    void mirroredChanged();

private:
    QString m_name;
    QColor m_color = Qt::black;
    bool m_mirrored = false;
};
