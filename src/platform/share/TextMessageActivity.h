#pragma once

#include "Activity.h"

/// Opens the program for text messages with the text. Available where a program opens sms
/// addresses.
class TextMessageActivity : public Activity {
    Q_OBJECT

public:
    using Activity::Activity;

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return tr("Text message"); }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("message"); }
    [[nodiscard]] ActivityGroup group() const override { return ActivityGroup::Send; }

    void ask(const ActivityItem& item) override;
    void perform(const ActivityItem& item) override;
};
