#include "PersistenceController.h"
#include "StoreFiles.h"

#include <QTest>

#include <bit>
#include <limits>

class ItemTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TemporaryHome> m_home;
    std::shared_ptr<NSPersistentContainer> m_container;

    NSManagedObjectContext& context() { return m_container->viewContext(); }

    /// The only bill of the store, after it was saved and the store was opened anew.
    std::shared_ptr<Item> savedItem()
    {
        mustSave(context());
        m_container.reset();
        m_container = store::setupContainer(false);
        const auto items = context().fetch(Item::fetchRequest());
        if (!items || items->size() != 1)
            qFatal("not one bill");
        return std::static_pointer_cast<Item>(items->front());
    }

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<TemporaryHome>();
        m_container = store::setupContainer(false);
    }

    void cleanup() { m_container.reset(); }

    void aNewBillHasZerosAndNoDescriptionOrDate()
    {
        const auto item = Item::make(context());

        QCOMPARE(item->bill(), 0.0);
        QCOMPARE(item->everyone(), false);
        QCOMPARE(item->people(), 0);
        QCOMPARE(item->ref(), std::nullopt);
        QCOMPARE(item->roundshare(), false);
        QCOMPARE(item->roundtip(), false);
        QCOMPARE(item->service(), 0);
        QCOMPARE(item->share(), 0.0);
        QCOMPARE(item->timestamp(), std::nullopt);
        QCOMPARE(item->tip(), 0.0);
        QCOMPARE(item->total(), 0.0);
    }

    void aDescriptionThatWasNeverSetReadsAsAbsent()
    {
        (void)Item::make(context());

        const auto item = savedItem();

        QCOMPARE(item->ref(), std::nullopt);
        QCOMPARE(item->timestamp(), std::nullopt);
    }

    void anEmptyDescriptionIsNotAnAbsentOne()
    {
        (void)addItem(context(), QString(QLatin1String("")));

        QCOMPARE(savedItem()->ref(), QString(QLatin1String("")));
    }

    void everyAttributeKeepsItsOwnValue()
    {
        const auto item = Item::make(context());
        item->setBill(1.5);
        item->setEveryone(true);
        item->setPeople(7);
        item->setRef(QStringLiteral("Lunch"));
        item->setRoundshare(true);
        item->setRoundtip(false);
        item->setService(2);
        item->setShare(2.5);
        const auto stamp = QDateTime::fromMSecsSinceEpoch(1700000000123, Qt::UTC);
        item->setTimestamp(stamp);
        item->setTip(3.5);
        item->setTotal(4.5);

        const auto saved = savedItem();

        QCOMPARE(saved->bill(), 1.5);
        QCOMPARE(saved->everyone(), true);
        QCOMPARE(saved->people(), 7);
        QCOMPARE(saved->ref(), QStringLiteral("Lunch"));
        QCOMPARE(saved->roundshare(), true);
        QCOMPARE(saved->roundtip(), false);
        QCOMPARE(saved->service(), 2);
        QCOMPARE(saved->share(), 2.5);
        QCOMPARE(saved->timestamp(), stamp);
        QCOMPARE(saved->tip(), 3.5);
        QCOMPARE(saved->total(), 4.5);
    }

    void theThreeSwitchesAreIndependent_data()
    {
        QTest::addColumn<bool>("everyone");
        QTest::addColumn<bool>("roundshare");
        QTest::addColumn<bool>("roundtip");
        QTest::newRow("everyone") << true << false << false;
        QTest::newRow("roundshare") << false << true << false;
        QTest::newRow("roundtip") << false << false << true;
    }

    void theThreeSwitchesAreIndependent()
    {
        QFETCH(const bool, everyone);
        QFETCH(const bool, roundshare);
        QFETCH(const bool, roundtip);
        const auto item = Item::make(context());
        item->setEveryone(everyone);
        item->setRoundshare(roundshare);
        item->setRoundtip(roundtip);

        const auto saved = savedItem();

        QCOMPARE(saved->everyone(), everyone);
        QCOMPARE(saved->roundshare(), roundshare);
        QCOMPARE(saved->roundtip(), roundtip);
    }

    void amountsAreKeptBitForBit_data()
    {
        using Limits = std::numeric_limits<double>;
        QTest::addColumn<double>("amount");
        QTest::newRow("0") << 0.0;
        QTest::newRow("-0") << -0.0;
        QTest::newRow("0.1 + 0.2") << 0.1 + 0.2;
        QTest::newRow("0.3") << 0.3;
        QTest::newRow("1/3") << 1.0 / 3.0;
        QTest::newRow("a whole number") << 100.0;
        QTest::newRow("the first whole number with a gap before it") << 9007199254740994.0;
        QTest::newRow("smallest, denormal") << Limits::denorm_min();
        QTest::newRow("smallest normal") << Limits::min();
        QTest::newRow("largest") << Limits::max();
        QTest::newRow("lowest") << Limits::lowest();
        QTest::newRow("infinite") << Limits::infinity();
    }

    void amountsAreKeptBitForBit()
    {
        QFETCH(const double, amount);
        const auto bits = std::bit_cast<quint64>(amount);
        const auto item = Item::make(context());
        item->setBill(amount);
        item->setShare(amount);
        item->setTip(amount);
        item->setTotal(amount);

        const auto saved = savedItem();

        QCOMPARE(std::bit_cast<quint64>(saved->bill()), bits);
        QCOMPARE(std::bit_cast<quint64>(saved->share()), bits);
        QCOMPARE(std::bit_cast<quint64>(saved->tip()), bits);
        QCOMPARE(std::bit_cast<quint64>(saved->total()), bits);
    }

    void wholeNumbersAreKeptTo32Bits_data()
    {
        QTest::addColumn<qint32>("number");
        QTest::newRow("largest") << std::numeric_limits<qint32>::max();
        QTest::newRow("lowest") << std::numeric_limits<qint32>::min();
        QTest::newRow("-1") << qint32(-1);
        QTest::newRow("2") << qint32(2);
    }

    void wholeNumbersAreKeptTo32Bits()
    {
        QFETCH(const qint32, number);
        const auto item = Item::make(context());
        item->setPeople(number);
        item->setService(number);

        const auto saved = savedItem();

        QCOMPARE(saved->people(), number);
        QCOMPARE(saved->service(), number);
    }

    void anyTextIsKept_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("NUL inside")
            << QStringLiteral("a").append(QChar(0)).append(QLatin1Char('b'));
        QTest::newRow("NUL at the end") << QStringLiteral("a").append(QChar(0));
        QTest::newRow("emoji") << QStringLiteral("🍕👩‍🍳🇮🇹");
        QTest::newRow("right to left") << QStringLiteral("‏عشاء مع سارة 12‏");
        QTest::newRow("combining") << QStringLiteral("Cafe\u0301");
        QTest::newRow("quotes") << QStringLiteral("O'Neill's \"Pub\"; --");
        QTest::newRow("blanks around") << QStringLiteral("  a  ");
        QTest::newRow("private use, U+10FFFD") << QString::fromUtf8("\xf4\x8f\xbf\xbd");
        QTest::newRow("4096 bytes") << QString(2048, QChar(0xe9));
    }

    void anyTextIsKept()
    {
        QFETCH(const QString, text);
        (void)addItem(context(), text);

        QCOMPARE(savedItem()->ref(), text);
    }

    void aDateIsKeptToTheMillisecond_data()
    {
        QTest::addColumn<qint64>("milliseconds");
        QTest::newRow("now") << qint64(1700000000123);
        QTest::newRow("1970") << qint64(0);
        QTest::newRow("before 1970") << qint64(-1);
    }

    void aDateIsKeptToTheMillisecond()
    {
        QFETCH(const qint64, milliseconds);
        Item::make(context())->setTimestamp(QDateTime::fromMSecsSinceEpoch(milliseconds));

        QCOMPARE(savedItem()->timestamp()->toMSecsSinceEpoch(), milliseconds);
    }

    void aRenamingSavedThroughTheViewContextIsThereAfterReopening()
    {
        (void)addItem(context(), QStringLiteral("Bill"));
        const auto item = savedItem();

        item->setRef(QStringLiteral("Anna's birthday"));

        QVERIFY(context().hasChanges());
        QCOMPARE(savedItem()->ref(), QStringLiteral("Anna's birthday"));
    }

    void aRenamingThatIsNotSavedIsGoneAfterReopening()
    {
        (void)addItem(context(), QStringLiteral("Bill"));
        savedItem()->setRef(QStringLiteral("Anna's birthday"));

        m_container.reset();
        m_container = store::setupContainer(false);

        QCOMPARE(refs(context()), QStringList { QStringLiteral("Bill") });
    }

    void aChangeIsSeenByAllWhoShareTheContext()
    {
        const auto item = addItem(context(), QStringLiteral("Bill"));
        mustSave(context());
        const auto other = context().fetch(Item::fetchRequest());
        QCOMPARE(other->size(), std::size_t(1));

        item->setPeople(5);

        QCOMPARE(std::static_pointer_cast<Item>(other->front())->people(), 5);
        QCOMPARE(other->front()->value(QStringLiteral("people")).toInt(), 5);
        QCOMPARE(other->front()->objectID(), item->objectID());
    }

    void theRequestIsForEveryBillInTheStoresOrder()
    {
        const NSFetchRequest request = Item::fetchRequest();

        QCOMPARE(request.entityName, QStringLiteral("Item"));
        QVERIFY(!request.predicate);
        QVERIFY(request.sortDescriptors.empty());
        QCOMPARE(request.fetchLimit, 0);
    }

    void theRequestTakesAPredicateAndASort()
    {
        for (const int days : { 2, 3, 1 })
            addItem(context(), QString::number(days))
                ->setTimestamp(QDateTime(QDate(2024, 1, days), QTime(0, 0), Qt::UTC));
        (void)addItem(context(), QStringLiteral("without a date"));
        mustSave(context());
        NSFetchRequest request = Item::fetchRequest();
        request.predicate = Predicate { QStringLiteral("timestamp"),
            Predicate::Comparison::LessThan, QDateTime(QDate(2024, 1, 3), QTime(0, 0), Qt::UTC) };
        request.sortDescriptors
            = { { QStringLiteral("timestamp"), SortDescriptor::Order::Ascending } };

        const auto found = context().fetch(request);

        QStringList days;
        for (const auto& item : *found)
            days.append(*std::static_pointer_cast<Item>(item)->ref());
        QCOMPARE(days, (QStringList { QStringLiteral("1"), QStringLiteral("2") }));
    }

    void aDescriptionOf4096BytesIsTheLongest_data()
    {
        const QString accent(QChar(0xe9)); // 2 bytes
        const QString euro(QChar(0x20ac)); // 3
        const QString pizza = QStringLiteral("🍕"); // 4
        const auto letters = [](int count) { return QString(count, QLatin1Char('a')); };
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("bytes");
        QTest::addColumn<bool>("isTaken");
        QTest::newRow("letters, 4096") << letters(4096) << 4096 << true;
        QTest::newRow("letters, 4097") << letters(4097) << 4097 << false;
        QTest::newRow("2 bytes at the end, 4096") << letters(4094) + accent << 4096 << true;
        QTest::newRow("2 bytes across the end, 4097") << letters(4095) + accent << 4097 << false;
        QTest::newRow("3 bytes at the end, 4096") << letters(4093) + euro << 4096 << true;
        QTest::newRow("3 bytes across the end, 4097") << letters(4094) + euro << 4097 << false;
        QTest::newRow("4 bytes at the end, 4096") << letters(4092) + pizza << 4096 << true;
        QTest::newRow("4 bytes across the end, 4097") << letters(4093) + pizza << 4097 << false;
        QTest::newRow("all of 4 bytes, 4096") << pizza.repeated(1024) << 4096 << true;
        QTest::newRow("empty") << QString() << 0 << true;
    }

    void aDescriptionOf4096BytesIsTheLongest()
    {
        QFETCH(const QString, text);
        QFETCH(const int, bytes);
        QFETCH(const bool, isTaken);
        QCOMPARE(text.toUtf8().size(), bytes);

        const std::optional<QString> ref = Item::refFromText(text);

        QCOMPARE(ref.has_value(), isTaken);
        QCOMPARE(ref.value_or(text), text);
    }

    void lineBreaksBecomeBlanks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("line feed") << QStringLiteral("a\nb") << QStringLiteral("a b");
        QTest::newRow("carriage return") << QStringLiteral("a\rb") << QStringLiteral("a b");
        QTest::newRow("both") << QStringLiteral("a\r\nb") << QStringLiteral("a  b");
        QTest::newRow("line separator") << QStringLiteral("a\u2028b") << QStringLiteral("a b");
        QTest::newRow("paragraph separator") << QStringLiteral("a\u2029b") << QStringLiteral("a b");
        QTest::newRow("around") << QStringLiteral("\na\n") << QStringLiteral(" a ");
        QTest::newRow("none") << QStringLiteral("a\tb c") << QStringLiteral("a\tb c");
    }

    void lineBreaksBecomeBlanks()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, line);

        QCOMPARE(Item::refFromText(text), line);
    }

    void theLengthIsThatOfTheLineWithBlanks()
    {
        const QString text = QString(4095, QLatin1Char('a')) + QChar(QChar::LineSeparator);

        QCOMPARE(Item::refFromText(text), QString(4095, QLatin1Char('a')) + QLatin1Char(' '));
    }
};

QTEST_GUILESS_MAIN(ItemTest)
#include "ItemTest.moc"
