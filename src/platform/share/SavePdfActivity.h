#pragma once

#include "SaveActivity.h"

/// Saves the text as a PDF. Available where a portal asks for files and none prints: what prints
/// also makes PDFs.
class SavePdfActivity : public SaveActivity {
    Q_OBJECT

public:
    using SaveActivity::SaveActivity;

    [[nodiscard]] ActivityType activityType() const override;
    [[nodiscard]] QString title() const override { return tr("Save as PDF"); }
    [[nodiscard]] QString iconName() const override { return QStringLiteral("doc.richtext"); }

    void ask(const ActivityItem& item) override;

protected:
    [[nodiscard]] QString suffix() const override { return QStringLiteral("pdf"); }
    [[nodiscard]] QByteArray contentOf(const QString& text) const override;
};
