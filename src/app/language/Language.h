#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class Bundle;
class QCoreApplication;

/// The file of the bundle that has the texts in the first of these languages in which there are
/// any; nothing where that is English, the language in which the texts are written, or where there
/// are none in any. The languages are codes as QLocale::uiLanguages() has them, the user's first
/// one first; one with a country or a script is served by the texts without.
[[nodiscard]] std::optional<QString> catalogueFor(
    const QStringList& languages, const Bundle& bundle);

/// Has the application speak the user's language from then on. To be called before there are texts.
void translateTexts(QCoreApplication& application);
