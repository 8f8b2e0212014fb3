#pragma once

#include <QByteArray>
#include <QPageLayout>
#include <QString>

/// The paper that is usual where the user lives, upright, with margins.
[[nodiscard]] QPageLayout usualPage();

/// A plain text as a PDF of as many pages as it needs, black on white.
[[nodiscard]] QByteArray pdfOf(const QString& text, const QPageLayout& page);
