#pragma once

#include <QString>

#include <optional>

/// A folder of resources with an information dictionary (Info.json), both read as asked for and
/// never cached: the folder is the truth.
class Bundle {
public:
    /// The program's own bundle: share/vexilo beside the folder that holds the executable, in an
    /// installation and in a build tree alike.
    static Bundle main();

    explicit Bundle(const QString& folder);

    /// Path of a resource, or nothing where there is none. The name may lead through folders of the
    /// bundle, with or without a slash before it, but not out of it; with an empty extension it is
    /// the whole name.
    [[nodiscard]] std::optional<QString> pathForResource(
        const QString& name, const QString& extension) const;

    /// A text of the information dictionary. A missing or unreadable dictionary, a missing key and
    /// a value that is no text all give nothing.
    [[nodiscard]] std::optional<QString> stringForInfoKey(const QString& key) const;

private:
    QString m_folder;
};
