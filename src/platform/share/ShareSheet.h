#pragma once

#include "Binding.h"
#include "UIActivityViewController.h"

#include <memory>
#include <optional>

/// Makes share sheets for a view that says by a flag whether one is shown. It is made anew with
/// each change of the view; the sheet is made once for each presentation.
struct ShareSheet {
    ShareSheet(Binding<bool> isPresented, Binding<QString> activityItem,
        std::optional<ActivityCompletion> callback);

    /// A sheet of the text as it is now. When the user has finished with it, the callback is told
    /// of the outcome, where there is one, and then `isPresented` is set to false.
    [[nodiscard]] std::unique_ptr<UIActivityViewController> makeController() const;

    /// The view has changed: does nothing, since a presented sheet stays as it was made.
    void updateController(UIActivityViewController& controller) const;

    Binding<bool> isPresented;
    Binding<QString> activityItem;
    std::optional<Activities> applicationActivities = std::nullopt;
    std::optional<QList<ActivityType>> excludedActivityTypes = std::nullopt;
    std::optional<ActivityCompletion> callback;
};
