#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

/// The QR code of a text, black on white whatever the theme, since many readers know no other, with
/// its quiet zone. Its modules are all of the same whole number of the screen's pixels: the most
/// that fit. Draws a white ground alone for a text that has no code.
class QrCodeImage : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER m_text NOTIFY changed)
    /// Of the corners of the white ground.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)

public:
    explicit QrCodeImage(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QString m_text;
    double m_radius = 0.0;
};
