#pragma once

#include "Activity.h"

/// An application's own activity, which does what a test says.
class FakeActivity : public Activity {
    Q_OBJECT

public:
    explicit FakeActivity(ActivityType type);

    [[nodiscard]] ActivityType activityType() const override { return m_type; }
    [[nodiscard]] QString title() const override { return m_type; }
    [[nodiscard]] QString iconName() const override { return {}; }
    [[nodiscard]] QString page() const override { return m_page; }

    void ask(const ActivityItem& item) override { asked.append(item.text); }
    void perform(const ActivityItem& item) override { performed.append(item.text); }
    void stop() override;

    void setPage(const QString& page) { m_page = page; }
    void sayAvailable() { Q_EMIT available(); }
    void sayFinished(const ActivityOutcome& outcome) { Q_EMIT finished(outcome); }

    // What it was called with.
    QStringList asked;
    QStringList performed;
    int stops = 0;
    std::optional<ActivityOutcome> outcomeOfStop;

private:
    const ActivityType m_type;
    QString m_page;
};
