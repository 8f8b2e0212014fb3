#pragma once

#include "Activity.h"

/// Shows the text as a code to be scanned across the table. It is completed when the user, who has
/// shown it, closes the sheet. A text that is too long for a code does not have it.
class QrCodeActivity : public Activity {
    Q_OBJECT
    /// What is shown while it is performed.
    Q_PROPERTY(QString text READ text NOTIFY textChanged)

public:
    using Activity::Activity;

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return tr("Show QR code"); }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("qrcode"); }
    [[nodiscard]] ActivityGroup group() const override { return ActivityGroup::Take; }
    [[nodiscard]] QString page() const override { return QStringLiteral("QrCodePage.qml"); }

    void ask(const ActivityItem& item) override;
    void perform(const ActivityItem& item) override;
    void stop() override { finish(); }

    [[nodiscard]] QString text() const { return m_text; }

Q_SIGNALS:
    void textChanged();

private:
    QString m_text;
};
