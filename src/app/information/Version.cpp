#include "Version.h"

#include "Bundle.h"

QString release(const Bundle& bundle)
{
    return bundle.stringForInfoKey(QStringLiteral("CFBundleShortVersionString"))
        .value_or(QStringLiteral("x.x"));
}

QString build(const Bundle& bundle)
{
    return bundle.stringForInfoKey(QStringLiteral("CFBundleVersion")).value_or(QStringLiteral("x"));
}

QString version(const Bundle& bundle) { return release(bundle) + QLatin1Char('.') + build(bundle); }
