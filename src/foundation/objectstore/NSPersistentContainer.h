#pragma once

#include "NSPersistentStoreCoordinator.h"

/// A model, its store file and the contexts that work on it, set up together.
///
/// Everything belongs to one thread, that of the event loop. A container closes its store when it
/// goes; its contexts must be gone by then, the view context goes with it.
class NSPersistentContainer {
public:
    /// With one store description: the file `name`.sqlite in the default folder, no options.
    NSPersistentContainer(
        const QString& name, const std::shared_ptr<const NSManagedObjectModel>& model);
    virtual ~NSPersistentContainer();
    NSPersistentContainer(const NSPersistentContainer&) = delete;
    NSPersistentContainer& operator=(const NSPersistentContainer&) = delete;

    /// The application's folder for data of the user, which need not exist yet.
    static QUrl defaultDirectoryURL();

    [[nodiscard]] const QString& name() const { return m_name; }
    /// To be changed before the stores are loaded.
    std::vector<NSPersistentStoreDescription>& persistentStoreDescriptions()
    {
        return m_descriptions;
    }

    using LoadCompletion = std::function<void(
        const NSPersistentStoreDescription& description, const std::optional<StoreError>& error)>;
    /// Opens the stores before it returns, and calls the completion once for each description.
    void loadPersistentStores(const LoadCompletion& completion);

    [[nodiscard]] NSManagedObjectContext& viewContext() { return *m_viewContext; }
    /// Another context on the same store and thread. The container must outlive it.
    [[nodiscard]] std::unique_ptr<NSManagedObjectContext> newContext();
    [[nodiscard]] NSPersistentStoreCoordinator& persistentStoreCoordinator()
    {
        return m_coordinator;
    }

protected:
    /// Whether the persistent history is kept whatever the store's description says, because
    /// something else than the contexts has to follow every change.
    [[nodiscard]] virtual NSPersistentStoreCoordinator::History history() const
    {
        return NSPersistentStoreCoordinator::History::AsDescribed;
    }

    /// A store of that file was opened.
    virtual void didLoad(const QString& /*file*/) { }

private:
    QString m_name;
    std::vector<NSPersistentStoreDescription> m_descriptions;
    NSPersistentStoreCoordinator m_coordinator;
    std::unique_ptr<NSManagedObjectContext> m_viewContext;
};
