#include "StoreFixture.h"

#include <QTest>

class ModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void attributesComeInAlphabeticalOrder()
    {
        const auto model = noteModel();

        QStringList names;
        for (const auto& attribute : model->entity(QStringLiteral("Note"))->attributes())
            names.append(attribute.name);
        QCOMPARE(names, words("count isDone stamp title weight"));
    }

    void aScalarThatIsNotOptionalDefaultsToZero()
    {
        const NSEntityDescription& note = *noteModel()->entity(QStringLiteral("Note"));

        QCOMPARE(note.defaultValues(),
            (AttributeValues { qint32(0), false, AttributeValue(), AttributeValue(), 0.0 }));
    }

    void givenDefaultsAreTaken()
    {
        const auto model = modelFrom(R"({"entities": [{"name": "A", "attributes": [
            {"name": "a", "type": "boolean", "default": true},
            {"name": "b", "type": "integer32", "default": -3},
            {"name": "c", "type": "double", "default": 2},
            {"name": "d", "type": "string", "default": "x"},
            {"name": "e", "type": "date", "default": "1970-01-01T00:00:01Z"}]}]})");

        QCOMPARE(model->entity(QStringLiteral("A"))->defaultValues(),
            (AttributeValues { true, qint32(-3), 2.0, QStringLiteral("x"), at(1000) }));
    }

    void aNameHasUpTo63LettersAndDigits()
    {
        const QByteArray name = "aZ9" + QByteArray(60, 'a');

        const auto model
            = modelFrom(R"({"entities": [{"name": "A", "attributes": [{"type": "date", "name": ")"
                + name + R"("}]}]})");

        QVERIFY(model);
        QCOMPARE(model->entity(QStringLiteral("A"))->defaultValues().size(), std::size_t(1));
    }

    void anUnusableModelIsAnErrorThatNamesTheUrl_data()
    {
        QTest::addColumn<QByteArray>("json");
        const auto attributes = [](const QByteArray& list) -> QByteArray {
            return R"({"entities": [{"name": "A", "attributes": [)" + list + "]}]}";
        };
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("{");
        QTest::newRow("no entities") << QByteArray("{}");
        QTest::newRow("no attributes") << QByteArray(attributes(""));
        QTest::newRow("unknown type") << QByteArray(attributes(R"({"name":"a","type":"blob"})"));
        const auto named = [&attributes](const QByteArray& name) {
            return attributes(R"({"type":"date","name":")" + name + R"("})");
        };
        QTest::newRow("no name") << named("");
        QTest::newRow("name with a line") << named("_a");
        QTest::newRow("name with a line in it") << named("a_a");
        QTest::newRow("name with a digit first") << named("1a");
        QTest::newRow("name with a letter beyond ASCII") << named("aä");
        QTest::newRow("name of 64 letters") << named(QByteArray(64, 'a'));
        QTest::newRow("twins") << QByteArray(
            attributes(R"({"name":"a","type":"date"},{"name":"A","type":"date"})"));
        QTest::newRow("default of another type")
            << QByteArray(attributes(R"({"name":"a","type":"integer32","default":1.5})"));
        QTest::newRow("index on nothing") << QByteArray(
            R"({"entities":[{"name":"A","attributes":[{"name":"a","type":"date"}],"indexes":["b"]}]})");
    }

    void anUnusableModelIsAnErrorThatNamesTheUrl()
    {
        QFETCH(const QByteArray, json);
        const QUrl url(QStringLiteral("file:///models/Notes.momd"));

        const auto model = NSManagedObjectModel::parse(json, url);

        QVERIFY(!model);
        QCOMPARE(model.error().code, StoreError::Code::ModelUnreadable);
        QCOMPARE(model.error().userInfo.value(QStringLiteral("url")).toUrl(), url);
        QVERIFY(model.error().description.english().contains(url.toString()));
    }

    void aMissingModelFileIsTheSameError()
    {
        const QUrl url(QStringLiteral("file:///nowhere/Notes.momd"));

        const auto model = NSManagedObjectModel::load(url);

        QVERIFY(!model);
        QCOMPARE(model.error().code, StoreError::Code::ModelUnreadable);
        QCOMPARE(model.error().userInfo.value(QStringLiteral("url")).toUrl(), url);
    }

    void theVersionHashFollowsNamesAndTypesOnly()
    {
        const auto hashOf = [](const QByteArray& attribute) {
            return modelFrom(R"({"entities":[{"name":"A","attributes":[)" + attribute + "]}]}")
                ->versionHash();
        };
        const QByteArray hash = hashOf(R"({"name":"a","type":"integer32"})");

        QCOMPARE(hashOf(R"({"name":"a","type":"integer32","default":5})"), hash);
        QVERIFY(hashOf(R"({"name":"a","type":"double"})") != hash);
        QVERIFY(hashOf(R"({"name":"b","type":"integer32"})") != hash);
    }

    void theProgramsModelLoads()
    {
        const auto model
            = NSManagedObjectModel::load(QUrl::fromLocalFile(QStringLiteral(PROGRAM_MODEL)));

        QVERIFY(model);
        const NSEntityDescription* item = (*model)->entity(QStringLiteral("Item"));
        QVERIFY(item != nullptr);
        QCOMPARE(item->attributeCount(), 11);
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "ModelTest.moc"
