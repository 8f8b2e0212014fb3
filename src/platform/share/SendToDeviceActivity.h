#pragma once

#include "Activity.h"

/// Sends the text to a device that KDE Connect reaches. Available where the device takes texts.
class SendToDeviceActivity : public Activity {
    Q_OBJECT

public:
    /// `device` is KDE Connect's identifier, `name` what the user calls the device.
    SendToDeviceActivity(QString device, QString name);

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return tr("Send to %1").arg(m_name); }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("smartphone"); }
    [[nodiscard]] ActivityGroup group() const override { return ActivityGroup::Send; }

    void ask(const ActivityItem& item) override;
    void perform(const ActivityItem& item) override;
    void stop() override { finish(); } // what was sent is not called back

private:
    const QString m_device;
    const QString m_name;
};
