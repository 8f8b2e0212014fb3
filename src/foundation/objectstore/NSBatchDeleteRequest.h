#pragma once

#include "NSFetchRequest.h"
#include "NSManagedObjectID.h"

#include <variant>

/// What a batch deletion answers.
enum class NSBatchDeleteRequestResultType {
    resultTypeStatusOnly = 0,
    resultTypeObjectIDs = 1,
    resultTypeCount = 2,
};

/// Deletes in the store what a fetch request describes, without loading it and past any context:
/// contexts learn of it only by NSManagedObjectContext::mergeChanges.
struct NSBatchDeleteRequest {
    explicit NSBatchDeleteRequest(NSFetchRequest request)
        : fetchRequest(std::move(request))
    {
    }

    NSFetchRequest fetchRequest;
    NSBatchDeleteRequestResultType resultType
        = NSBatchDeleteRequestResultType::resultTypeStatusOnly;
};

/// The answer to a batch deletion: a success flag, the identities in the store's order, or their
/// number, as the request wanted.
struct NSBatchDeleteResult {
    NSBatchDeleteRequestResultType resultType
        = NSBatchDeleteRequestResultType::resultTypeStatusOnly;
    std::variant<bool, std::vector<NSManagedObjectID>, qint64> result;
};
