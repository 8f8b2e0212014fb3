#pragma once

#include "Bundle.h"
#include "NSPersistentContainer.h"

#include <memory>
#include <variant>

/// Why there is no data model.
struct CoreDataModelError {
    enum class Case {
        modelURLNotFound, ///< the bundle has no such resource
        modelLoadingFailed, ///< the resource cannot be read as the model of the saved bills
    };

    Case reason = Case::modelURLNotFound;
    QString subject; ///< the resource's name, or the address of the one that could not be read
    QString detail; ///< one sentence for a person; empty where the case says it all

    /// All in one line, for the diagnostic log.
    [[nodiscard]] QString toString() const;
};

/// Chooses and builds the container of the saved bills. For the main thread.
class PersistentContainer {
public:
    using Model = std::shared_ptr<const NSManagedObjectModel>;

    PersistentContainer() = delete;

    /// A container without its stores: mirrored to the user's cloud, or a local one.
    [[nodiscard]] static std::variant<std::shared_ptr<NSPersistentContainer>, CoreDataModelError>
    get(bool iCloud);

    /// The data model, read from the program's bundle the first time and then the same for every
    /// container of the process.
    [[nodiscard]] static std::variant<Model, CoreDataModelError> model(const QString& name);

    /// Reads a model from the bundle, afresh.
    [[nodiscard]] static std::variant<Model, CoreDataModelError> loadModel(
        const QString& name, const Bundle& bundle);

private:
    static Model _model;
};
