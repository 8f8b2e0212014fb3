#include "ShareSheet.h"

#include <utility>

// With other names than where they are declared: they would hide the members.
ShareSheet::ShareSheet(
    Binding<bool> presented, Binding<QString> item, std::optional<ActivityCompletion> completion)
    : isPresented(std::move(presented))
    , activityItem(std::move(item))
    , callback(std::move(completion))
{
}

std::unique_ptr<UIActivityViewController> ShareSheet::makeController() const
{
    auto controller = std::make_unique<UIActivityViewController>(
        ActivityItems { { .text = activityItem.get() } }, applicationActivities);
    controller->setExcludedActivityTypes(excludedActivityTypes);
    controller->setCompletionHandler(
        [completion = callback, flag = isPresented](const std::optional<ActivityType>& type,
            bool completed, const std::optional<QVariantList>& returnedItems,
            const std::optional<ActivityError>& error) {
            if (completion)
                (*completion)(type, completed, returnedItems, error);
            flag.set(false);
        });
    return controller;
}

void ShareSheet::updateController(UIActivityViewController&) const { }
