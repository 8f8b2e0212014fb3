#pragma once

#include "SaveActivity.h"

/// Saves the text as it is, in UTF-8. Available where a portal asks for files.
class SaveTextActivity : public SaveActivity {
    Q_OBJECT

public:
    using SaveActivity::SaveActivity;

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return tr("Save as text file"); }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("doc.text"); }

    void ask(const ActivityItem& item) override;

protected:
    [[nodiscard]] QString suffix() const override { return QStringLiteral("txt"); }
    [[nodiscard]] QByteArray contentOf(const QString& text) const override;
};
