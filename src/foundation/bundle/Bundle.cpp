#include "Bundle.h"

#include <QCoreApplication>
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
    const QString path = m_folder + QLatin1Char('/') + name + QLatin1Char('.') + extension;
    if (!QFileInfo::exists(path))
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
