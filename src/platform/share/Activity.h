#pragma once

#include "ActivityItem.h"

#include <QObject>
#include <QString>
#include <QVariantList>

#include <memory>
#include <optional>
#include <vector>

/// Names a kind of destination; an application's own activities have names of their own.
using ActivityType = QString;

/// Why an activity could not be performed, for the user to read.
struct ActivityError {
    QString description;
};

/// What came of an activity.
struct ActivityOutcome {
    bool completed = false; ///< false where the user cancelled it, or it failed
    std::optional<QVariantList> returnedItems = std::nullopt;
    std::optional<ActivityError> error = std::nullopt;
};

/// Where the sheet shows an activity.
enum class ActivityGroup { Take, Send, Keep, Application };

/// A destination of a share sheet. It is asked once whether it takes the item, and may then be
/// performed.
class Activity : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString detail READ detail CONSTANT)
    Q_PROPERTY(QString iconName READ iconName CONSTANT)
    Q_PROPERTY(QString page READ page CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] virtual ActivityType activityType() const = 0;
    [[nodiscard]] virtual QString title() const = 0;
    /// What is said beside the title; empty for nothing. Known once the activity is available.
    [[nodiscard]] virtual QString detail() const { return {}; }
    [[nodiscard]] virtual QString iconName() const = 0;
    [[nodiscard]] virtual ActivityGroup group() const { return ActivityGroup::Application; }
    /// The view that shows the activity in the sheet's place while it is performed, by its address;
    /// one of the sheet's own by its name; empty for none. Its `controller` is set to the sheet's
    /// state.
    [[nodiscard]] virtual QString page() const { return {}; }

    /// Asks whether this desktop has the destination, and it takes the item. `available` says yes,
    /// during the call or later; no answer is a no.
    virtual void ask(const ActivityItem& item) = 0;

    /// Returns at once. `finished` tells once what came of it, during the call or later.
    virtual void perform(const ActivityItem& item) = 0;

    /// The user closes the sheet while this is performed, or goes back from its page. What still
    /// goes on is given up, unless it has done its work; `finished` may be emitted with what came
    /// of it, which is not heard from who went back. It may be performed again.
    virtual void stop() { }

Q_SIGNALS:
    void available();
    void finished(const ActivityOutcome& outcome);

protected:
    void finish() { Q_EMIT finished({ .completed = true }); }
    void finishCancelled() { Q_EMIT finished({}); }
    void finishFailed(const QString& description)
    {
        Q_EMIT finished({ .error = ActivityError { description } });
    }
};

using Activities = std::vector<std::shared_ptr<Activity>>;
