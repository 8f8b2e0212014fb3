#include "StoreFiles.h"

#include <QFile>

TemporaryHome::TemporaryHome()
{
    const QByteArray path = QFile::encodeName(m_folder.path());
    for (const char* name : { "HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME" })
        qputenv(name, path);
}

QString TemporaryHome::storeFolder() const
{
    return NSPersistentContainer::defaultDirectoryURL().toLocalFile();
}

QString TemporaryHome::storeFile() const
{
    return storeFolder() + QStringLiteral("/Vexilo.sqlite");
}

QStringList filesOfStore(const QString& storeFile)
{
    QStringList files;
    for (const char* suffix : { "", "-wal", "-shm" }) {
        if (QFile::exists(storeFile + QLatin1String(suffix)))
            files.append(storeFile + QLatin1String(suffix));
    }
    return files;
}

std::shared_ptr<Item> addItem(NSManagedObjectContext& context, const QString& ref)
{
    auto item = Item::make(context);
    item->setRef(ref);
    return item;
}

void mustSave(NSManagedObjectContext& context)
{
    if (const auto saved = context.save(); !saved)
        qFatal("%s", qPrintable(saved.error().toString()));
}

QStringList refs(NSManagedObjectContext& context)
{
    const auto items = context.fetch(Item::fetchRequest());
    if (!items)
        qFatal("%s", qPrintable(items.error().toString()));
    QStringList result;
    for (const auto& item : *items)
        result.append(
            std::static_pointer_cast<Item>(item)->ref().value_or(QStringLiteral("absent")));
    return result;
}
