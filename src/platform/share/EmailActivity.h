#pragma once

#include "Activity.h"
#include "EmailComposer.h"

/// Opens the e-mail program with the text, its subject the program's name. Available where the
/// desktop has a portal for e-mail, or a program for mailto addresses.
class EmailActivity : public Activity {
    Q_OBJECT

public:
    explicit EmailActivity(QObject* parent = nullptr);

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return tr("E-mail"); }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("envelope"); }
    [[nodiscard]] ActivityGroup group() const override { return ActivityGroup::Send; }

    void ask(const ActivityItem& item) override;
    void perform(const ActivityItem& item) override;
    void stop() override { m_composer.withdraw(); }

private:
    void report(EmailComposer::Outcome outcome);

    EmailComposer m_composer;
};
