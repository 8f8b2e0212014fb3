#pragma once

/// What a save does with a record that was changed or deleted elsewhere since the context read it.
/// Under either, a record that both sides deleted is no conflict.
enum class NSMergePolicy {
    /// The save fails with StoreError::Code::Conflict and changes nothing.
    NSErrorMergePolicy,
    /// Attribute by attribute, what was changed in memory is kept, and everything else is taken
    /// from the store. A record deleted on either side stays deleted.
    NSMergeByPropertyObjectTrumpMergePolicy,
};
