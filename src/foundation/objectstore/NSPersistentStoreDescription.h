#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>
#include <QVariant>

/// Options of a store, each a boolean.
///
/// Whether each save is recorded in the persistent history.
inline const QString NSPersistentHistoryTrackingKey
    = QStringLiteral("NSPersistentHistoryTrackingKey");
/// Whether the coordinator signals what other processes changed when it is asked to look.
inline const QString NSPersistentStoreRemoteChangeNotificationOptionKey
    = QStringLiteral("NSPersistentStoreRemoteChangeNotificationOptionKey");
/// Both together: a store of an older model is taken over; what the model has more gets defaults.
inline const QString NSInferMappingModelAutomaticallyOption
    = QStringLiteral("NSInferMappingModelAutomaticallyOption");
inline const QString NSMigratePersistentStoresAutomaticallyOption
    = QStringLiteral("NSMigratePersistentStoresAutomaticallyOption");

/// Where a store lies and how it is opened. Changes after the store was loaded have no effect.
class NSPersistentStoreDescription {
public:
    explicit NSPersistentStoreDescription(const QUrl& url = {})
        : m_url(url)
    {
    }

    /// A local file.
    [[nodiscard]] const QUrl& url() const { return m_url; }
    void setURL(const QUrl& url) { m_url = url; }

    void setOption(const QVariant& value, const QString& key);
    /// Invalid for an option that was not set.
    [[nodiscard]] QVariant option(const QString& key) const;
    [[nodiscard]] bool isOn(const QString& key) const { return option(key).toBool(); }
    /// Keys and values in the order in which they were first set.
    [[nodiscard]] const QList<QPair<QString, QVariant>>& options() const { return m_options; }

private:
    QUrl m_url;
    QList<QPair<QString, QVariant>> m_options;
};
