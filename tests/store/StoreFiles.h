#pragma once

#include "Item.h"
#include "NSPersistentContainer.h"

#include <QTemporaryDir>

/// A home of nobody's, which the process takes for its user's until another one is made.
class TemporaryHome {
public:
    TemporaryHome();

    /// The folder in which the process keeps the store. Made by whoever needs it first.
    [[nodiscard]] QString storeFolder() const;
    [[nodiscard]] QString storeFile() const;

private:
    QTemporaryDir m_folder;
};

/// The store file, its log and its index, where they exist.
[[nodiscard]] QStringList filesOfStore(const QString& storeFile);

/// A new, unsaved bill with a description.
std::shared_ptr<Item> addItem(NSManagedObjectContext& context, const QString& ref);
/// Saves, and stops the test program where that fails.
void mustSave(NSManagedObjectContext& context);
/// The descriptions of all bills, in the store's order. Stops the test program where that fails.
[[nodiscard]] QStringList refs(NSManagedObjectContext& context);
