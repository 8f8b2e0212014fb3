#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

#include <functional>

namespace mirror {

/// A question of the Secret Service to the user, who may dismiss it.
class SecretPrompt : public QObject {
    Q_OBJECT

public:
    /// Shows the question of this path, and tells whether it was dismissed. Belongs to the context.
    static void show(const QDBusConnection& bus, const QString& path, QObject* context,
        const std::function<void(bool isDismissed)>& done);

private Q_SLOTS:
    void onCompleted(bool isDismissed, const QDBusVariant& result);

private:
    SecretPrompt(QObject* parent, std::function<void(bool)> done);

    std::function<void(bool)> m_done;
};

} // namespace mirror
