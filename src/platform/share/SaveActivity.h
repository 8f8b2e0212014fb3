#pragma once

#include "Activity.h"
#include "FileChooser.h"

#include <QByteArray>

/// Saves the text in a file of the user's choice, which is there whole or not at all.
class SaveActivity : public Activity {
    Q_OBJECT

public:
    explicit SaveActivity(QObject* parent = nullptr);

    [[nodiscard]] ActivityGroup group() const override { return ActivityGroup::Keep; }

    void perform(const ActivityItem& item) override;
    void stop() override { m_chooser.withdraw(); }

protected:
    /// What a file of this kind is called behind its last dot.
    [[nodiscard]] virtual QString suffix() const = 0;
    [[nodiscard]] virtual QByteArray contentOf(const QString& text) const = 0;

private:
    void save(const QString& path);

    FileChooser m_chooser;
    QString m_text;
};
