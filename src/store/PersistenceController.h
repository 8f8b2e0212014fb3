#pragma once

#include "NSPersistentContainer.h"

#include <functional>
#include <memory>

// Opens the store of the saved bills: a local one, or one mirrored to the user's cloud. For the
// main thread, as are the containers and their contexts.

namespace store {

/// Whether to open the store mirrored: the user's choice, or else whether the user is known by now
/// to have a cloud account. Asks for the account anew, without waiting for the answer.
[[nodiscard]] bool sync();

/// Whether the account question that this call asks was already answered with "available". The
/// answer comes later, on another thread, so this is false in practice: a start never waits for
/// the network.
[[nodiscard]] bool userHas_iCloudAccount();

/// A container with its store open. Where it cannot be opened the process stops, after the alert.
[[nodiscard]] std::shared_ptr<NSPersistentContainer> setupContainer(bool withSync);

/// What shows to the user, in the language of the texts, why the process is about to stop, and
/// returns when that was read. At first nothing does.
void setStoreFailureAlert(std::function<void(const QString& message)> alert);

/// The process-wide container, opened on first use. The screens work on another one, that of
/// PersistenceController::shared(): switching reaches them at the next launch.
[[nodiscard]] std::shared_ptr<NSPersistentContainer> container();

/// Saves the process-wide container and replaces it. One that is replaced lives on for as long as
/// somebody refers to it.
void updateContainer(bool withSync);

} // namespace store

/// The container whose view context the screens work on.
struct PersistenceController {
    /// Opened on first use, with the choice of that moment. Never torn down.
    static PersistenceController& shared();

    PersistenceController();

    std::shared_ptr<NSPersistentContainer> container;
};
