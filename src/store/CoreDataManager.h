#pragma once

#include "Item.h"
#include "NSFetchedResultsController.h"
#include "NSManagedObjectContext.h"

// What the screens and the switch of mirroring share of the store. For the main thread.

/// Runs the batch deletion in the store and drops what it deleted from this context, and from no
/// other. The store's error where it fails; nothing was merged then.
Result<void> executeAndMergeChanges(NSManagedObjectContext& context, NSBatchDeleteRequest request);

namespace store {

/// The words with which the process ends where the store fails it: the error and its details.
[[nodiscard]] QString unresolvedError(const StoreError& error);

/// Saves a context. Where another program has changed the same records meanwhile, what this context
/// changed wins; a record that was deleted stays deleted, and the context lets go of it.
[[nodiscard]] Result<void> saveDespiteConflicts(NSManagedObjectContext& context);

/// Saves the process-wide container's view context if it has changes. A failure is ignored: the
/// changes stay in the context.
void saveContext();

} // namespace store

namespace ManagedObjectContext {

/// The view context of the process-wide container, which is opened if need be and lives for as
/// long as the context is held.
[[nodiscard]] std::shared_ptr<NSManagedObjectContext> current();

} // namespace ManagedObjectContext

/// Reads the saved bills of one context.
class CoreDataManager {
public:
    /// Made on first use with the context that is current then, and never torn down: a later
    /// switch of the container does not change it.
    static CoreDataManager& shared();

    explicit CoreDataManager(std::shared_ptr<NSManagedObjectContext> context);

    /// Every saved bill, in the store's order, as a list that reads its rows as they are asked for:
    /// a store of a million bills has just been opened. It follows the context, which must outlive
    /// it. Empty, with a diagnostic line, where the store cannot be asked; should reading fail
    /// later, it ends early.
    [[nodiscard]] std::unique_ptr<NSFetchedResultsController> fetchAllItems() const;

    std::shared_ptr<NSManagedObjectContext> moc;
};
