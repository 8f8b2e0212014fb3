#include "FaultyVfs.h"
#include "StoreFixture.h"

#include <QTest>

/// How many bytes a record of the program takes in the file, its index and history included.
class SizeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aBillTakesAtMost120Bytes_data()
    {
        QTest::addColumn<int>("perSave");
        QTest::newRow("saved one by one") << 1;
        QTest::newRow("saved together") << 20000;
    }

    void aBillTakesAtMost120Bytes()
    {
        QFETCH(const int, perSave);
        constexpr int count = 20000;
        FaultyVfs& disk = FaultyVfs::install();
        disk.wipe();
        const StoreFolder folder;
        const auto model
            = NSManagedObjectModel::load(QUrl::fromLocalFile(QStringLiteral(PROGRAM_MODEL)));
        auto container = openContainer(folder.file(), *model);
        NSManagedObjectContext& context = container->viewContext();

        for (int i = 0; i < count; ++i) {
            const auto bill = context.insertNewObject(QStringLiteral("Item"));
            bill->setValue(QStringLiteral("Dinner, Aldo"), QStringLiteral("ref"));
            bill->setValue(4, QStringLiteral("people"));
            bill->setValue(2, QStringLiteral("service"));
            bill->setValue(at(1763690400000 + i * 86400000LL), QStringLiteral("timestamp"));
            for (const QString& amount : words("bill share tip total"))
                bill->setValue(i / 7.0, amount);
            if ((i + 1) % perSave == 0)
                mustSave(context);
        }
        container.reset(); // puts everything into the file proper

        const auto size = disk.find(folder.file().toStdString(), false)->content.size();
        QVERIFY2(
            size <= std::size_t(120) * count, QByteArray::number(double(size) / count).constData());
    }
};

QTEST_GUILESS_MAIN(SizeTest)
#include "SizeTest.moc"
