#pragma once

#include <QAccessible>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// Whether anything listens to what the program tells of its screens. What exists for it alone is
/// not made while nothing does.
class AssistiveSoftware : public QObject, private QAccessible::ActivationObserver {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool connected READ connected NOTIFY connectedChanged)

public:
    explicit AssistiveSoftware(QObject* parent = nullptr);
    ~AssistiveSoftware() override;

    [[nodiscard]] bool connected() const { return m_connected; }

Q_SIGNALS:
    void connectedChanged();

private:
    void accessibilityActiveChanged(bool active) override;

    bool m_connected = QAccessible::isActive();
};
