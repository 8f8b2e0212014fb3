#include "CoreDataManager.h"

#include "Diagnostics.h"
#include "PersistenceController.h"

Result<void> executeAndMergeChanges(NSManagedObjectContext& context, NSBatchDeleteRequest request)
{
    request.resultType = NSBatchDeleteRequestResultType::resultTypeObjectIDs;
    Result<NSBatchDeleteResult> result = context.execute(request);
    if (!result)
        return result.error();

    auto* const list = std::get_if<std::vector<NSManagedObjectID>>(&result->result);
    NSObjectIDChanges changes;
    changes.insert(
        NSDeletedObjectsKey, list != nullptr ? std::move(*list) : std::vector<NSManagedObjectID>());
    NSManagedObjectContext::mergeChanges(changes, { &context });
    return {};
}

QString store::unresolvedError(const StoreError& error)
{
    return QLatin1String("Unresolved error ") + error.toString() + QLatin1String(", ")
        + error.userInfoText();
}

Result<void> store::saveDespiteConflicts(NSManagedObjectContext& context)
{
    const NSMergePolicy policy = context.mergePolicy();
    context.setMergePolicy(NSMergePolicy::NSMergeByPropertyObjectTrumpMergePolicy);
    Result<void> saved = context.save();
    context.setMergePolicy(policy);
    return saved;
}

void store::saveContext()
{
    const std::shared_ptr<NSManagedObjectContext> context = ManagedObjectContext::current();
    if (context->hasChanges())
        (void)context->save();
}

std::shared_ptr<NSManagedObjectContext> ManagedObjectContext::current()
{
    const std::shared_ptr<NSPersistentContainer> owner = store::container();
    return { owner, &owner->viewContext() };
}

CoreDataManager& CoreDataManager::shared()
{
    static auto* const instance = new CoreDataManager(ManagedObjectContext::current());
    return *instance;
}

CoreDataManager::CoreDataManager(std::shared_ptr<NSManagedObjectContext> context)
    : moc(std::move(context))
{
}

std::unique_ptr<NSFetchedResultsController> CoreDataManager::fetchAllItems() const
{
    auto items = std::make_unique<NSFetchedResultsController>(Item::fetchRequest(), *moc);
    const Result<void> fetched = items->performFetch();
    if (!fetched)
        printDiagnostic(fetched.error().toString().toStdString());
    return items;
}
