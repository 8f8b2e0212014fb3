#pragma once

#include "Activity.h"

#include <QPointer>

class PortalRequest;

/// Prints the text on a printer of the user's choice. Available where a portal prints.
class PrintActivity : public Activity {
    Q_OBJECT

public:
    using Activity::Activity;

    /// What the portal's interface is called.
    [[nodiscard]] static QString interface();

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return tr("Print"); }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("printer"); }
    [[nodiscard]] ActivityGroup group() const override { return ActivityGroup::Keep; }

    void ask(const ActivityItem& item) override;
    void perform(const ActivityItem& item) override;
    void stop() override;

private:
    void print(const QVariantMap& choices);
    void fail();

    QString m_text;
    QPointer<PortalRequest> m_request;
    bool m_isHandedOver = false; // what the user said is to be printed
};
