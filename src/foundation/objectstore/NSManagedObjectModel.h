#pragma once

#include "NSEntityDescription.h"
#include "StoreError.h"

#include <QUrl>

#include <memory>
#include <vector>

/// What a store can hold: its entities, read from a model resource.
///
/// The resource is a JSON text: {"version": text, "entities": [{"name": text, "attributes":
/// [{"name", "type": boolean | integer32 | double | string | date, "optional": false, "default"}],
/// "indexes": [attribute names]}]}. A scalar (boolean, integer32, double) that is not optional has
/// a default, 0 or false unless given. Names are ASCII letters and digits, the first a letter, and
/// differ in more than their case; an entity has at most 63 attributes.
///
/// A model must outlive the containers made with it, their contexts, objects and identities.
class NSManagedObjectModel {
public:
    /// Fails with ModelUnreadable; the user information names the file under "url".
    static Result<std::shared_ptr<NSManagedObjectModel>> load(const QUrl& url);
    /// The same from the resource's content; `url` only serves the error.
    static Result<std::shared_ptr<NSManagedObjectModel>> parse(
        const QByteArray& json, const QUrl& url = {});

    NSManagedObjectModel(
        QString versionIdentifier, std::vector<std::unique_ptr<NSEntityDescription>> entities);

    [[nodiscard]] const QString& versionIdentifier() const { return m_versionIdentifier; }
    /// Null where the model has no entity of that name.
    [[nodiscard]] NSEntityDescription* entity(const QString& name) const;
    [[nodiscard]] const std::vector<std::unique_ptr<NSEntityDescription>>& entities() const
    {
        return m_entities;
    }
    /// SHA-256 of what a store file depends on: the names and types, not the defaults or indexes.
    [[nodiscard]] QByteArray versionHash() const;

private:
    QString m_versionIdentifier;
    std::vector<std::unique_ptr<NSEntityDescription>> m_entities; // sorted by name
};
