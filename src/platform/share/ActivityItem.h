#pragma once

#include <QList>
#include <QString>

#include <optional>

/// What is shared: a plain text and, where the text has one, the one thing in it that is wanted
/// most.
struct ActivityItem {
    /// A part of the text that can also be copied alone.
    struct Excerpt {
        QString title; ///< what the sheet calls copying it
        QString text;
    };

    QString text;
    std::optional<Excerpt> excerpt = std::nullopt;
};

using ActivityItems = QList<ActivityItem>;

/// The items as one: their texts with an empty line between two, and the first excerpt.
[[nodiscard]] ActivityItem combined(const ActivityItems& items);
