#pragma once

#include <QByteArray>
#include <QLocale>
#include <QPageLayout>
#include <QString>

/// The paper that is usual where a locale is spoken, upright, with margins: Letter in the Americas
/// where the CLDR says so, A4 elsewhere.
[[nodiscard]] QPageLayout usualPage(const QLocale& locale);

/// A plain text as a PDF of as many pages as it needs, black on white.
[[nodiscard]] QByteArray pdfOf(const QString& text, const QPageLayout& page);
