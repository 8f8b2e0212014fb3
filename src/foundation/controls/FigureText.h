#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QTextLayout>
#include <QtQml/qqmlregistration.h>

/// An amount in tabular figures: every digit takes the same room, so that the amount does not jump
/// when it changes. The system's font may have proportional figures, and Qt 6.4 cannot ask a font
/// for its tabular ones. Drawn smaller, as a whole, where the item is narrower than its text.
class FigureText : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER m_text NOTIFY textChanged)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY fontChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)
    /// Whether the text stands at the left end of the item instead of the right one.
    Q_PROPERTY(bool mirrored MEMBER m_mirrored NOTIFY mirroredChanged)

public:
    explicit FigureText(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

protected:
    void componentComplete() override;

Q_SIGNALS:
    void textChanged();
    void fontChanged();
    void colorChanged();
    void mirroredChanged();

private:
    void layOut();

    QString m_text;
    QFont m_font;
    QColor m_color = Qt::black;
    bool m_mirrored = false;
    QTextLayout m_layout;
    qreal m_start = 0.0; // points before the first character
};
