#pragma once

#include "Activity.h"

/// Puts the item's excerpt on the clipboard. Items without one do not have it.
class CopyExcerptActivity : public Activity {
    Q_OBJECT

public:
    using Activity::Activity;

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return m_excerpt.title; }
    [[nodiscard]] QString detail() const override { return m_excerpt.text; }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("text.excerpt"); }
    [[nodiscard]] ActivityGroup group() const override { return ActivityGroup::Take; }

    void ask(const ActivityItem& item) override;
    void perform(const ActivityItem& item) override;

private:
    ActivityItem::Excerpt m_excerpt;
};
