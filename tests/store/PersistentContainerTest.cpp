#include "PersistentContainer.h"
#include "Item.h"
#include "NSPersistentCloudKitContainer.h"
#include "StoreFiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

class PersistentContainerTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_resources;
    Bundle m_bundle { m_resources.path() };
    int m_resourceCount = 0;

    QString pathOf(const QString& name) const
    {
        return m_resources.filePath(name + QStringLiteral(".momd"));
    }

    /// The name of a new resource.
    QString resourceOf(const QByteArray& content)
    {
        QString name = QStringLiteral("Model%1").arg(++m_resourceCount);
        QFile file(pathOf(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("no resource");
        return name;
    }

    static QByteArray programModel()
    {
        const auto path
            = Bundle::main().pathForResource(QStringLiteral("Vexilo"), QStringLiteral("momd"));
        QFile file(path.value_or(QString()));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("the program has no model");
        return file.readAll();
    }

    static std::shared_ptr<NSPersistentContainer> containerFrom(
        const std::variant<std::shared_ptr<NSPersistentContainer>, CoreDataModelError>& made)
    {
        return std::get<std::shared_ptr<NSPersistentContainer>>(made);
    }

private Q_SLOTS:
    void withoutTheCloudThereIsAPlainContainer()
    {
        const auto container = containerFrom(PersistentContainer::get(false));

        QCOMPARE(dynamic_cast<NSPersistentCloudKitContainer*>(container.get()), nullptr);
        QCOMPARE(container->name(), QStringLiteral("Vexilo"));
    }

    void withTheCloudThereIsAMirroredContainer()
    {
        const auto container = containerFrom(PersistentContainer::get(true));

        QVERIFY(dynamic_cast<NSPersistentCloudKitContainer*>(container.get()) != nullptr);
        QCOMPARE(container->name(), QStringLiteral("Vexilo"));
    }

    void aContainerIsMadeWithoutOptionsAndWithoutItsStore()
    {
        const TemporaryHome home;
        const auto container = containerFrom(PersistentContainer::get(false));

        QCOMPARE(container->persistentStoreDescriptions().size(), std::size_t(1));
        QCOMPARE(
            container->persistentStoreDescriptions().front().url().toLocalFile(), home.storeFile());
        QVERIFY(container->persistentStoreDescriptions().front().options().isEmpty());
        QCOMPARE(container->persistentStoreCoordinator().store(), nullptr);
        QVERIFY(!QFile::exists(home.storeFile()));
    }

    void everyContainerUsesTheSameModelObject()
    {
        const auto first = containerFrom(PersistentContainer::get(false));
        const auto second = containerFrom(PersistentContainer::get(true));
        const auto model = PersistentContainer::model(QStringLiteral("Vexilo"));

        QCOMPARE(&first->persistentStoreCoordinator().managedObjectModel(),
            std::get<PersistentContainer::Model>(model).get());
        QCOMPARE(&second->persistentStoreCoordinator().managedObjectModel(),
            std::get<PersistentContainer::Model>(model).get());
    }

    void loadingReadsTheModelAfresh()
    {
        const QString name = QStringLiteral("Vexilo");
        const auto kept = PersistentContainer::model(name);
        const auto loaded = PersistentContainer::loadModel(name, Bundle::main());

        QVERIFY(std::get<PersistentContainer::Model>(loaded)
            != std::get<PersistentContainer::Model>(kept));
        QCOMPARE(std::get<PersistentContainer::Model>(loaded)->versionHash(),
            std::get<PersistentContainer::Model>(kept)->versionHash());
    }

    void onceThereIsAModelAFailedLoadingDoesNotTakeIt()
    {
        const auto before = PersistentContainer::model(QStringLiteral("Vexilo"));

        (void)PersistentContainer::loadModel(QStringLiteral("Nothing"), m_bundle);
        const auto after = PersistentContainer::model(QStringLiteral("Nothing"));

        QCOMPARE(std::get<PersistentContainer::Model>(after),
            std::get<PersistentContainer::Model>(before));
    }

    void theModelMakesItsRecordsAsBills()
    {
        const auto container = containerFrom(PersistentContainer::get(false));

        const auto record = container->viewContext().insertNewObject(QStringLiteral("Item"));

        QVERIFY(std::dynamic_pointer_cast<Item>(record) != nullptr);
    }

    void theModelHasTheElevenAttributesInOrder()
    {
        const auto model = PersistentContainer::model(QStringLiteral("Vexilo"));
        const auto* item
            = std::get<PersistentContainer::Model>(model)->entity(QStringLiteral("Item"));
        QVERIFY(item != nullptr);

        QStringList names;
        QStringList optionals;
        for (const NSAttributeDescription& attribute : item->attributes()) {
            names.append(attribute.name);
            if (attribute.isOptional)
                optionals.append(attribute.name);
        }

        QCOMPARE(names.join(QLatin1Char(' ')),
            QStringLiteral(
                "bill everyone people ref roundshare roundtip service share timestamp tip total"));
        QCOMPARE(optionals.join(QLatin1Char(' ')), QStringLiteral("ref timestamp"));
        QCOMPARE(std::get<PersistentContainer::Model>(model)->entities().size(), std::size_t(1));
    }

    void aMissingResourceIsNamedInTheError()
    {
        const auto loaded = PersistentContainer::loadModel(QStringLiteral("Nothing"), m_bundle);

        const auto* error = std::get_if<CoreDataModelError>(&loaded);
        QVERIFY(error != nullptr);
        QCOMPARE(error->reason, CoreDataModelError::Case::modelURLNotFound);
        QCOMPARE(error->subject, QStringLiteral("Nothing"));
        QCOMPARE(error->toString(), QStringLiteral("modelURLNotFound(\"Nothing\")"));
    }

    void aResourceThatIsNoModelOfBillsIsRefusedWithItsAddress_data()
    {
        QTest::addColumn<QByteArray>("content");
        QByteArray model = programModel();
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("bplist00");
        QTest::newRow("cut off") << model.left(model.size() / 2);
        QTest::newRow("no entity") << QByteArray(R"({"version": "1", "entities": []})");
        QTest::newRow("another entity") << QByteArray(model).replace("\"Item\"", "\"Bill\"");
        QTest::newRow("an attribute of another type") << QByteArray(model).replace(
            R"("people", "type": "integer32")", R"("people", "type": "double")");
        QTest::newRow("an attribute of another name")
            << QByteArray(model).replace("\"share\"", "\"stake\"");
        QTest::newRow("an attribute too many") << QByteArray(model).replace(R"("attributes": [)",
            R"("attributes": [{ "name": "zone", "type": "string", "optional": true },)");
    }

    void aResourceThatIsNoModelOfBillsIsRefusedWithItsAddress()
    {
        QFETCH(const QByteArray, content);
        QVERIFY(content != programModel());
        const QString name = resourceOf(content);

        const auto loaded = PersistentContainer::loadModel(name, m_bundle);

        const auto* error = std::get_if<CoreDataModelError>(&loaded);
        QVERIFY(error != nullptr);
        QCOMPARE(error->reason, CoreDataModelError::Case::modelLoadingFailed);
        QCOMPARE(QUrl(error->subject), QUrl::fromLocalFile(pathOf(name)));
        QVERIFY(error->toString().startsWith(
            QStringLiteral("modelLoadingFailed(\"") + error->subject + QStringLiteral("\"): ")));
        QVERIFY(!error->toString().contains(QLatin1Char('\n')));
    }

    void aFolderInPlaceOfTheResourceIsRefused()
    {
        QVERIFY(QDir().mkpath(pathOf(QStringLiteral("Folder"))));

        const auto loaded = PersistentContainer::loadModel(QStringLiteral("Folder"), m_bundle);

        const auto* error = std::get_if<CoreDataModelError>(&loaded);
        QVERIFY(error != nullptr);
        QCOMPARE(error->reason, CoreDataModelError::Case::modelLoadingFailed);
    }

    void theProgramsModelIsTakenFromAnyBundle()
    {
        const QString name = resourceOf(programModel());

        const auto loaded = PersistentContainer::loadModel(name, m_bundle);

        QVERIFY(std::holds_alternative<PersistentContainer::Model>(loaded));
    }
};

int main(int argc, char** argv)
{
    const TemporaryHome home;
    QCoreApplication application(argc, argv);
    PersistentContainerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PersistentContainerTest.moc"
