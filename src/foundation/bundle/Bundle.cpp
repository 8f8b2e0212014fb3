#include "Bundle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

Bundle Bundle::main()
{
    return Bundle(QCoreApplication::applicationDirPath() + QLatin1String("/../share/vexilo"));
}

Bundle::Bundle(const QString& folder)
    : m_folder(folder)
{
}

std::optional<QString> Bundle::pathForResource(const QString& name, const QString& extension) const
{
    const QString file = extension.isEmpty() ? name : name + QLatin1Char('.') + extension;
    // A name that begins with a slash is no absolute path either.
    const QString inside = QDir::cleanPath(QLatin1String("./") + file);
    const bool leadsOut = inside == QLatin1String("..") || inside.startsWith(QLatin1String("../"));
    const QString path = m_folder + QLatin1Char('/') + inside;
    if (leadsOut || !QFileInfo::exists(path))
        return std::nullopt;
    return path;
}

std::optional<QString> Bundle::stringForInfoKey(const QString& key) const
{
    QFile file(m_folder + QLatin1String("/Info.json"));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonValue value = QJsonDocument::fromJson(file.readAll()).object().value(key);
    if (!value.isString())
        return std::nullopt;
    return value.toString();
}
