#pragma once

#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

/// Scrolls a Flickable to the item in it that the keyboard came to, where that is not all in sight,
/// and keeps it in sight when the content or the window changes its size. While a pointer's button
/// is down nothing moves: who clicks, sees where. What was scrolled away from stays away. A window
/// that is not active has an item that the keyboard will come back to, and is treated as if it had
/// the keyboard.
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

private Q_SLOTS:
    void followScrolling();
    void followSizes();

private:
    void follow(QQuickWindow* window);
    void followFocus();
    void revealAfterLayout();
    void keepInSight();
    void reveal(const QQuickItem& item);
    [[nodiscard]] QSizeF sizes() const;
    [[nodiscard]] QRectF placeOf(const QQuickItem& item) const;
    [[nodiscard]] bool isInSight(const QQuickItem& item) const;

    QPointer<QQuickItem> m_flickable;
    QPointer<QQuickWindow> m_window;
    QMetaObject::Connection m_focusConnection;
    QMetaObject::Connection m_layoutConnection;
    QPointer<QQuickItem> m_item; // in the flickable, with the keyboard
    QSizeF m_sizes; // those at which the item was last looked at
    bool m_itemIsInSight = false;
};
