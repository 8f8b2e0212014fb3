#include "BillMirror.h"

#include "Bundle.h"
#include "GlobalModel.h"
#include "Item.h"
#include "PersistenceController.h"
#include "PersistentContainer.h"

namespace {

constexpr auto Readme
    = "Vexilo keeps your saved bills here, so that they are on all your devices.\n"
      "Please do not change, move or delete anything in this folder by hand: to remove it,\n"
      "switch off syncing in Vexilo's settings. The bills on your devices stay.\n";

} // namespace

CloudSetup billMirror()
{
    const auto& descriptions
        = PersistenceController::shared().container->persistentStoreDescriptions();
    CloudSetup setup;
    setup.storeFile = descriptions.front().url().toLocalFile();
    setup.model = std::get<PersistentContainer::Model>(PersistentContainer::model(AppName));
    setup.entity = Item::fetchRequest().entityName;
    setup.renamable = QStringLiteral("ref");
    setup.format = "vexilo-bills";
    setup.container = Bundle::main()
                          .stringForInfoKey(QStringLiteral("CKContainerIdentifier"))
                          .value_or(QString());
    setup.readme = Readme;
    setup.choiceKey = QStringLiteral("icloud_sync");
    setup.userAgent = (AppName + QLatin1Char('/')
        + Bundle::main()
              .stringForInfoKey(QStringLiteral("CFBundleShortVersionString"))
              .value_or(QString()))
                          .toUtf8();
    return setup;
}
