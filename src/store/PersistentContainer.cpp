#include "PersistentContainer.h"

#include "Item.h"
#include "NSPersistentCloudKitContainer.h"

PersistentContainer::Model PersistentContainer::_model;

QString CoreDataModelError::toString() const
{
    const QLatin1String name(
        reason == Case::modelURLNotFound ? "modelURLNotFound" : "modelLoadingFailed");
    const QString text = name + QLatin1String("(\"") + subject + QLatin1String("\")");
    return detail.isEmpty() ? text : QString(text + QLatin1String(": ") + detail);
}

std::variant<std::shared_ptr<NSPersistentContainer>, CoreDataModelError> PersistentContainer::get(
    bool iCloud)
{
    const QString name = QStringLiteral("Vexilo");
    const auto found = model(name);
    if (const auto* const error = std::get_if<CoreDataModelError>(&found))
        return *error;
    if (iCloud)
        return std::make_shared<NSPersistentCloudKitContainer>(name, std::get<Model>(found));
    return std::make_shared<NSPersistentContainer>(name, std::get<Model>(found));
}

std::variant<PersistentContainer::Model, CoreDataModelError> PersistentContainer::model(
    const QString& name)
{
    if (!_model) {
        auto loaded = loadModel(name, Bundle::main());
        if (const auto* const error = std::get_if<CoreDataModelError>(&loaded))
            return *error;
        _model = std::get<Model>(std::move(loaded));
    }
    return _model;
}

std::variant<PersistentContainer::Model, CoreDataModelError> PersistentContainer::loadModel(
    const QString& name, const Bundle& bundle)
{
    using Case = CoreDataModelError::Case;
    const std::optional<QString> path = bundle.pathForResource(name, QStringLiteral("momd"));
    if (!path)
        return CoreDataModelError { Case::modelURLNotFound, name, {} };
    const QUrl url = QUrl::fromLocalFile(*path);
    const Result<std::shared_ptr<NSManagedObjectModel>> model = NSManagedObjectModel::load(url);
    if (!model)
        return CoreDataModelError { Case::modelLoadingFailed, url.toString(),
            model.error().description.english() };
    NSEntityDescription* const item = model.value()->entity(Item::fetchRequest().entityName);
    if (item == nullptr || !Item::isDescribedBy(*item))
        return CoreDataModelError { Case::modelLoadingFailed, url.toString(),
            QStringLiteral("The model does not describe a saved bill.") };
    item->setManagedObjectClass<Item>();
    return Model(model.value());
}
