#pragma once

#include "Activity.h"
#include "ActivityModel.h"

#include <QList>
#include <QObject>

#include <array>
#include <functional>
#include <optional>

/// Told what came of a share sheet: the chosen activity, unless the user chose none; whether it was
/// completed; what it returned; and why it failed.
using ActivityCompletion = std::function<void(const std::optional<ActivityType>& type,
    bool completed, const std::optional<QVariantList>& returnedItems,
    const std::optional<ActivityError>& error)>;

/// The state of a share sheet: offers the destinations that this desktop has for a text, performs
/// the one that the user chooses, and then is finished. It lives for one presentation.
///
/// Whatever happens, the completion is called exactly once, unless the sheet is taken away before
/// the user has finished with it. The completion may destroy the sheet.
class UIActivityViewController : public QObject {
    Q_OBJECT
    /// The text that is shared.
    Q_PROPERTY(QString text READ text CONSTANT)
    /// The available activities, a list for each group.
    Q_PROPERTY(QList<ActivityModel*> groups READ groups CONSTANT)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    /// The chosen activity; null before one is chosen.
    Q_PROPERTY(Activity* chosen READ chosen NOTIFY stateChanged)
    /// Why the chosen activity failed; empty unless it did.
    Q_PROPERTY(QString failure READ failure NOTIFY stateChanged)

public:
    enum State {
        Choosing,
        Performing,
        Failed, ///< the user is told why
        Finished,
    };
    Q_ENUM(State)

    /// Offers the application's activities after those of the desktop.
    explicit UIActivityViewController(ActivityItems activityItems,
        std::optional<Activities> applicationActivities = std::nullopt);
    ~UIActivityViewController() override;

    [[nodiscard]] const ActivityItems& activityItems() const { return m_items; }
    [[nodiscard]] const std::optional<Activities>& applicationActivities() const
    {
        return m_applicationActivities;
    }

    /// Destinations that are not offered; none when absent. To be set before `open`.
    [[nodiscard]] const std::optional<QList<ActivityType>>& excludedActivityTypes() const
    {
        return m_excludedActivityTypes;
    }
    void setExcludedActivityTypes(std::optional<QList<ActivityType>> types);

    /// To be set before `open`; none by itself.
    void setCompletionHandler(ActivityCompletion handler);

    /// The sheet is being presented: asks what this desktop has. Returns at once; what the bus has
    /// to be asked for is added to the groups as it answers.
    void open();

    /// The user chooses an activity of the groups. Ignored after the first choice.
    Q_INVOKABLE void choose(Activity* activity);
    /// The user goes back from the page of the chosen activity, which is stopped, to choose another
    /// one.
    Q_INVOKABLE void goBack();
    /// The user closes the sheet, or has read why the activity failed. Ignored once finished.
    Q_INVOKABLE void close();

    [[nodiscard]] QString text() const { return m_item.text; }
    [[nodiscard]] QList<ActivityModel*> groups();
    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] Activity* chosen() const { return m_chosen; }
    [[nodiscard]] QString failure() const;

Q_SIGNALS:
    void stateChanged();

private:
    void offer(const std::shared_ptr<Activity>& activity);
    void offerDevices();
    void take(const Activity* activity, const ActivityOutcome& outcome);
    void finish();
    void setState(State state);

    const ActivityItems m_items;
    const ActivityItem m_item;
    const std::optional<Activities> m_applicationActivities;
    std::optional<QList<ActivityType>> m_excludedActivityTypes;
    ActivityCompletion m_completion;

    Activities m_offered;
    std::array<ActivityModel, 4> m_groups; // as ActivityGroup counts them
    State m_state = Choosing;
    Activity* m_chosen = nullptr;
    ActivityOutcome m_outcome;
};
