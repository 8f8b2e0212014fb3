#pragma once

#include "NSPersistentContainer.h"

#include <QTemporaryDir>

/// What the tests of the store work on: an entity "Note" with one attribute of each type and an
/// index on its date, and containers on a file in a folder of their own.

[[nodiscard]] QByteArray noteModelJson();
[[nodiscard]] std::shared_ptr<NSManagedObjectModel> modelFrom(const QByteArray& json);
[[nodiscard]] std::shared_ptr<NSManagedObjectModel> noteModel();

/// A later version of it: two attributes, an index and an entity more.
[[nodiscard]] std::shared_ptr<NSManagedObjectModel> newerNoteModel();

/// A date, by milliseconds since 1970.
[[nodiscard]] QDateTime at(qint64 milliseconds);

/// A container with the view context, loaded. Stops the test program where it cannot be opened.
[[nodiscard]] std::unique_ptr<NSPersistentContainer> openContainer(const QString& file,
    const std::shared_ptr<NSManagedObjectModel>& model = noteModel(),
    const QStringList& options = { NSPersistentHistoryTrackingKey });
/// The error with which the same fails, or nothing where it does not.
[[nodiscard]] std::optional<StoreError> openError(const QString& file,
    const std::shared_ptr<NSManagedObjectModel>& model = noteModel(),
    const QStringList& options = { NSPersistentHistoryTrackingKey });

/// A new, unsaved note.
NSManagedObjectContext::Object addNote(
    NSManagedObjectContext& context, const QString& title, qint64 stamp = 0);
/// Saves, and stops the test program where that fails.
void mustSave(NSManagedObjectContext& context);

[[nodiscard]] NSFetchRequest notesByDate(SortDescriptor::Order order);
[[nodiscard]] QStringList titles(NSManagedObjectContext& context, const NSFetchRequest& request);
/// In the store's order.
[[nodiscard]] QStringList titles(NSManagedObjectContext& context);
[[nodiscard]] QString title(const NSManagedObject& note);

/// The words of a text, for comparisons with titles.
[[nodiscard]] QStringList words(const char* text);

/// A folder with a store file in it that does not exist yet.
class StoreFolder {
public:
    [[nodiscard]] QString file() const { return m_folder.filePath(QStringLiteral("Notes.sqlite")); }
    [[nodiscard]] QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};
