#include "MirrorFixture.h"

#include <QTest>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

using mirror::Attributes;
using mirror::EarliestDate;
using mirror::LatestDate;
using mirror::RecordSchema;
using mirror::Text;
using mirror::Value;
using mirror::Values;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

std::optional<Attributes> read(const QByteArray& object)
{
    return Attributes::fromJson(mirror::readJsonLine(object).value(), noteSchema());
}

/// A note's object whose member of that name has that text.
QByteArray objectWith(const QByteArray& name, const QByteArray& text)
{
    QByteArray object = R"({"amount":"0","count":0,"done":false,"place":null,"stamp":null})";
    const auto start = object.indexOf(QByteArray("\"" + name + "\":")) + name.size() + 3;
    const auto end = object.indexOf(name == "stamp" ? '}' : ',', start);
    return object.replace(start, end - start, text);
}

double amountReadBack(double amount)
{
    const Attributes written = attributesOf({ .amount = amount });
    const Attributes readBack = read(written.text()).value();
    return std::get<double>(readBack.values(noteSchema()).value()[0]);
}

} // namespace

class AttributesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void attributesAreWrittenInTheOrderOfTheirNames()
    {
        const Note note { .amount = 35.5,
            .count = 3,
            .done = true,
            .stamp = 1763690400000,
            .place = QStringLiteral("Caf\u00e9 \"Uno\"") };

        QCOMPARE(attributesOf(note).text(),
            QByteArray(R"({"amount":"35.5","count":3,"done":true,)"
                       "\"place\":\"Caf\xc3\xa9 \\\"Uno\\\"\",\"stamp\":1763690400000}"));
    }

    void whatIsMissingIsNull()
    {
        QCOMPARE(attributesOf({}).text(),
            QByteArray(R"({"amount":"0","count":0,"done":false,"place":null,"stamp":null})"));
    }

    void everyValueComesBack()
    {
        const Values values = valuesOf({ .amount = -1e-5,
            .count = std::numeric_limits<qint32>::min(),
            .done = true,
            .stamp = -1,
            .place = QString() });

        const Attributes attributes = Attributes::of(values, noteSchema()).value();

        QCOMPARE(read(attributes.text()).value(), attributes);
        QVERIFY(attributes.values(noteSchema()).value() == values);
    }

    void aDoubleComesBackBitForBit_data()
    {
        QTest::addColumn<double>("amount");
        using Limits = std::numeric_limits<double>;

        QTest::newRow("zero") << 0.0;
        QTest::newRow("negative zero") << -0.0;
        QTest::newRow("tenth") << 0.1;
        QTest::newRow("sum of tenths") << 0.1 + 0.2;
        QTest::newRow("third") << 1.0 / 3;
        QTest::newRow("whole") << 100.0;
        QTest::newRow("beyond whole numbers") << 9007199254740993.0;
        QTest::newRow("power of ten") << 1e22;
        QTest::newRow("hard to round") << 2.2250738585072011e-308;
        QTest::newRow("largest") << Limits::max();
        QTest::newRow("least") << Limits::lowest();
        QTest::newRow("smallest normal") << Limits::min();
        QTest::newRow("smallest") << Limits::denorm_min();
        QTest::newRow("largest subnormal") << std::bit_cast<double>(0x000fffffffffffffULL);
        QTest::newRow("next to one") << 1 + Limits::epsilon();
    }
    void aDoubleComesBackBitForBit()
    {
        QFETCH(const double, amount);

        QCOMPARE(std::bit_cast<quint64>(amountReadBack(amount)), std::bit_cast<quint64>(amount));
    }

    void anyFiniteDoubleComesBackBitForBit()
    {
        std::mt19937_64 bits(20261121); // NOLINT: the same doubles at every run
        for (int i = 0; i < 20'000; ++i) {
            const auto amount = std::bit_cast<double>(bits());
            if (std::isfinite(amount))
                QCOMPARE(
                    std::bit_cast<quint64>(amountReadBack(amount)), std::bit_cast<quint64>(amount));
        }
    }

    void aDoubleIsWrittenAsShortAsItCanBe()
    {
        const auto text = [](double amount) {
            return mirror::readJsonLine(attributesOf({ .amount = amount }).text())
                ->member("amount")
                ->text;
        };

        QCOMPARE(text(0.1), "0.1");
        QCOMPARE(text(-0.0), "-0");
        QCOMPARE(text(1e22), "1e+22");
        QCOMPARE(text(5e-324), "5e-324");
    }

    void whatCannotBeMirroredIsRefused_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<Value>("value");
        constexpr std::chrono::milliseconds instant(1);

        QTest::newRow("infinity") << 0 << Value(Infinity);
        QTest::newRow("negative infinity") << 0 << Value(-Infinity);
        QTest::newRow("not a number") << 0 << Value(std::numeric_limits<double>::quiet_NaN());
        QTest::newRow("no double") << 0 << Value();
        QTest::newRow("integer for a double") << 0 << Value(qint32(1));
        QTest::newRow("double for an integer") << 1 << Value(1.0);
        QTest::newRow("no integer") << 1 << Value();
        QTest::newRow("no boolean") << 2 << Value();
        QTest::newRow("before the year 1") << 3 << Value(EarliestDate - instant);
        QTest::newRow("after the year 9999") << 3 << Value(LatestDate + instant);
        QTest::newRow("text for a date") << 3 << Value(Text::of(u"1"));
        QTest::newRow("boolean for a text") << 4 << Value(true);
    }
    void whatCannotBeMirroredIsRefused()
    {
        QFETCH(const int, index);
        QFETCH(const Value, value);
        Values values = valuesOf({});

        values[std::size_t(index)] = value;

        QVERIFY(!Attributes::of(values, noteSchema()));
        QVERIFY(!Attributes::existOf(values, noteSchema()));
        const RecordSchema alone(
            "notes", "title", { noteSchema().attributes()[std::size_t(index)] });
        QVERIFY(!Attributes::existOf({ value }, alone));
    }

    void tooFewOrTooManyValuesAreRefused()
    {
        Values values = valuesOf({});
        values.pop_back();
        QVERIFY(!Attributes::of(values, noteSchema()));
        QVERIFY(!Attributes::existOf(values, noteSchema()));

        values.resize(6);
        QVERIFY(!Attributes::of(values, noteSchema()));
        QVERIFY(!Attributes::existOf(values, noteSchema()));
    }

    void datesUpToTheLimitsComeBack()
    {
        for (const auto& date : { EarliestDate, LatestDate }) {
            const auto attributes = attributesOf({ .stamp = date.time_since_epoch().count() });

            QVERIFY(read(attributes.text()).value().values(noteSchema()).value()[3] == Value(date));
        }
    }

    void anAttributeOfAnotherFormIsRefused_data()
    {
        QTest::addColumn<QByteArray>("object");

        QTest::newRow("double as a number") << objectWith("amount", "1");
        QTest::newRow("empty double") << objectWith("amount", R"("")");
        QTest::newRow("sign alone") << objectWith("amount", R"("-")");
        QTest::newRow("no double") << objectWith("amount", "null");
        QTest::newRow("not a number") << objectWith("amount", R"("nan")");
        QTest::newRow("negative not a number") << objectWith("amount", R"("-nan")");
        QTest::newRow("infinity") << objectWith("amount", R"("inf")");
        QTest::newRow("negative infinity") << objectWith("amount", R"("-infinity")");
        QTest::newRow("too large") << objectWith("amount", R"("1e309")");
        QTest::newRow("too small") << objectWith("amount", R"("1e-400")");
        QTest::newRow("plus") << objectWith("amount", R"("+1")");
        QTest::newRow("blank before") << objectWith("amount", R"(" 1")");
        QTest::newRow("blank after") << objectWith("amount", R"("1 ")");
        QTest::newRow("comma") << objectWith("amount", R"("1,5")");
        QTest::newRow("grouping") << objectWith("amount", R"("1,000.5")");
        QTest::newRow("hexadecimal") << objectWith("amount", R"("0x1p3")");
        QTest::newRow("two doubles") << objectWith("amount", R"("1 2")");
        QTest::newRow("NUL after") << objectWith("amount", "\"1\\u0000\"");
        QTest::newRow("too many digits") << objectWith("amount", '"' + QByteArray(33, '1') + '"');
        QTest::newRow("integer as a text") << objectWith("count", R"("1")");
        QTest::newRow("fraction") << objectWith("count", "1.5");
        QTest::newRow("whole number with a point") << objectWith("count", "1.0");
        QTest::newRow("integer with an exponent") << objectWith("count", "1e2");
        QTest::newRow("integer too large") << objectWith("count", "2147483648");
        QTest::newRow("integer too small") << objectWith("count", "-2147483649");
        QTest::newRow("no integer") << objectWith("count", "null");
        QTest::newRow("boolean as a number") << objectWith("done", "1");
        QTest::newRow("no boolean") << objectWith("done", "null");
        QTest::newRow("number for a text") << objectWith("place", "1");
        QTest::newRow("array for a text") << objectWith("place", "[]");
        QTest::newRow("before the year 1") << objectWith("stamp", "-62135596800001");
        QTest::newRow("after the year 9999") << objectWith("stamp", "253402300800000");
        QTest::newRow("date beyond 64 bits") << objectWith("stamp", "9223372036854775808");
        QTest::newRow("date with a fraction") << objectWith("stamp", "1.5");
        QTest::newRow("missing") << objectWith("done", "false").replace("\"count\":0,", "");
        QTest::newRow("the renamable one") << objectWith("done", R"(false,"title":"x")");
    }
    void anAttributeOfAnotherFormIsRefused()
    {
        QFETCH(const QByteArray, object);

        QVERIFY(!read(object));
    }

    void anotherTextOfADoubleGivesTheSameAttributes_data()
    {
        QTest::addColumn<QByteArray>("text");

        QTest::newRow("exponent") << QByteArray(R"("1e2")");
        QTest::newRow("capital exponent") << QByteArray(R"("1E+2")");
        QTest::newRow("zeros") << QByteArray(R"("100.000")");
    }
    void anotherTextOfADoubleGivesTheSameAttributes()
    {
        QFETCH(const QByteArray, text);

        QCOMPARE(read(objectWith("amount", text)).value(), attributesOf({ .amount = 100 }));
    }

    void theOrderOfTheMembersDoesNotMatter()
    {
        QCOMPARE(read(R"({"stamp":null,"place":null,"done":false,"count":0,"amount":"0"})").value(),
            attributesOf({}));
    }

    void whatANewerVersionAddedIsKeptInItsPlace()
    {
        const QByteArray object = objectWith("amount", R"("0","b":{"z":[1.50]})")
                                      .replace("\"stamp\":null", R"("stamp":null,"zz":-1)");

        const auto attributes = read(object);

        QCOMPARE(attributes.value().text(), object);
        QVERIFY(attributes->values(noteSchema()).value() == valuesOf({}));
    }

    void moreThanFitsIsRefused()
    {
        QByteArray more;
        for (char name = 'a'; name < 'e'; ++name)
            more += QByteArray(",\"x") + name + "\":\"" + QByteArray(4060, 'x') + '"';
        const QByteArray object = objectWith("done", "false" + more);
        const auto room = Attributes::MaxBytes - object.size();
        QVERIFY(room > 0);
        const auto filled = [&object](qsizetype size) {
            return QByteArray(object).insert(1, "\"a\":\"" + QByteArray(size - 7, 'x') + "\",");
        };

        QCOMPARE(read(filled(room)).value().text().size(), Attributes::MaxBytes);
        QVERIFY(!read(filled(room + 1)));
    }

    void attributesExistOfWhateverCanBeMirroredAndFits()
    {
        QVERIFY(Attributes::existOf(valuesOf({}), noteSchema()));
        const RecordSchema numbers(
            "notes", "title", { { "amount", mirror::AttributeKind::Double } });
        QVERIFY(Attributes::existOf({ Value(1.5) }, numbers));
        std::vector<mirror::SchemaAttribute> texts;
        for (char name = 'a'; name < 'f'; ++name)
            texts.push_back({ QByteArray(1, name), mirror::AttributeKind::Text });
        const RecordSchema manyTexts("notes", "title", texts);
        Values values(texts.size());
        QVERIFY(Attributes::existOf(values, manyTexts));

        std::ranges::fill(values, Value(Text::of(QString(4000, u'x'))));

        QVERIFY(!Attributes::of(values, manyTexts));
        QVERIFY(!Attributes::existOf(values, manyTexts));
    }

    void anotherSchemaDoesNotReadWhatItDoesNotKnow()
    {
        auto attributes = noteSchema().attributes();
        attributes.push_back({ "rate", mirror::AttributeKind::Double });
        const RecordSchema larger("notes", "title", attributes);

        QVERIFY(!attributesOf({}).values(larger));
    }

    void attributesSortByTheirText()
    {
        QVERIFY(attributesOf({ .amount = 10 }) < attributesOf({ .amount = 9 }));
        QVERIFY(attributesOf({ .done = false }) < attributesOf({ .done = true }));
        QVERIFY(attributesOf({}) == attributesOf({}));
    }
};

QTEST_APPLESS_MAIN(AttributesTest)
#include "AttributesTest.moc"
