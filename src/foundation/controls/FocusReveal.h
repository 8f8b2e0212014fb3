#pragma once

#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

/// Scrolls a Flickable to the item in it that the keyboard came to, where that is not all in sight.
/// While a pointer's button is down nothing moves: who clicks, sees where.
class FocusReveal : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* flickable READ flickable WRITE setFlickable NOTIFY flickableChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem* flickable() const { return m_flickable; }
    /// Must be a Flickable that scrolls from top to bottom.
    void setFlickable(QQuickItem* flickable);

Q_SIGNALS:
    void flickableChanged();

private:
    void follow(QQuickWindow* window);
    void reveal(const QQuickItem& item);

    QPointer<QQuickItem> m_flickable;
    QMetaObject::Connection m_windowConnection;
};
