#pragma once

#include "Activity.h"

/// Puts the text on the clipboard, in place of whatever is there.
class CopyActivity : public Activity {
    Q_OBJECT

public:
    using Activity::Activity;

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return tr("Copy text"); }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("doc.on.doc"); }
    [[nodiscard]] ActivityGroup group() const override { return ActivityGroup::Take; }

    void ask(const ActivityItem& item) override;
    void perform(const ActivityItem& item) override;
};
