#include "Language.h"

#include "Bundle.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace {

/// The catalogue of a language, or of what is left of its code when its last parts are dropped.
std::optional<QString> catalogueOf(const QString& language, const Bundle& bundle)
{
    QStringList parts = language.split(QLatin1Char('-'));
    for (; !parts.isEmpty(); parts.removeLast()) {
        const QString name = QLatin1String("translations/vexilo_") + parts.join(QLatin1Char('_'));
        if (auto file = bundle.pathForResource(name, QStringLiteral("qm")))
            return file;
    }
    return std::nullopt;
}

} // namespace

std::optional<QString> catalogueFor(const QStringList& languages, const Bundle& bundle)
{
    for (const QString& language : languages) {
        const QString code = language.section(QLatin1Char('-'), 0, 0);
        if (code == QLatin1String("en") || code == QLatin1String("C"))
            return std::nullopt;
        if (auto file = catalogueOf(language, bundle))
            return file;
    }
    return std::nullopt;
}

void translateTexts(QCoreApplication& application)
{
    const auto file = catalogueFor(QLocale::system().uiLanguages(), Bundle::main());
    if (!file)
        return;
    auto* const translator = new QTranslator(&application);
    if (translator->load(*file))
        QCoreApplication::installTranslator(translator);
}
