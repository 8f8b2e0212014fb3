#include "DescriptionBuffer.h"

#include "Item.h"

#include <QTest>

namespace {

const QString tooLong = QStringLiteral("Description too long");

} // namespace

class DescriptionBufferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aNewBufferIsEmpty()
    {
        const DescriptionBuffer buffer;

        QCOMPARE(buffer.text(), QString());
        QCOMPARE(buffer.notice(), QString());
    }

    void whatIsTypedIsTaken()
    {
        DescriptionBuffer buffer;

        QVERIFY(buffer.edit(QStringLiteral("Lunch")));

        QCOMPARE(buffer.text(), QStringLiteral("Lunch"));
        QCOMPARE(buffer.notice(), QString());
    }

    void theTextThatStandsThereAlreadyIsNoEdit()
    {
        DescriptionBuffer buffer;
        buffer.reset(QStringLiteral("Lunch"));

        QVERIFY(!buffer.edit(QStringLiteral("Lunch")));
    }

    void anEmptyTextStandsForBill()
    {
        DescriptionBuffer buffer;
        QCOMPARE(buffer.textOrDefault(), QStringLiteral("Bill"));

        buffer.edit(QStringLiteral("Lunch"));
        buffer.edit(QString());

        QCOMPARE(buffer.text(), QString());
        QCOMPARE(buffer.textOrDefault(), QStringLiteral("Bill"));
    }

    void blanksAreKeptAsTyped()
    {
        DescriptionBuffer buffer;

        buffer.edit(QStringLiteral("  "));

        QCOMPARE(buffer.textOrDefault(), QStringLiteral("  "));
    }

    void severalLinesBecomeOne_data()
    {
        QTest::addColumn<QString>("separator");
        QTest::newRow("line feed") << QStringLiteral("\n");
        QTest::newRow("carriage return") << QStringLiteral("\r");
        QTest::newRow("line separator") << QString(QChar(QChar::LineSeparator));
        QTest::newRow("paragraph separator") << QString(QChar(QChar::ParagraphSeparator));
    }

    void severalLinesBecomeOne()
    {
        QFETCH(const QString, separator);
        DescriptionBuffer buffer;

        QVERIFY(buffer.edit(QStringLiteral("two") + separator + QStringLiteral("lines")));

        QCOMPARE(buffer.text(), QStringLiteral("two lines"));
    }

    void aTextThatIsShownOtherwiseThanTypedIsAnEdit()
    {
        DescriptionBuffer buffer;
        buffer.reset(QStringLiteral("two lines"));

        QVERIFY(buffer.edit(QStringLiteral("two\nlines")));

        QCOMPARE(buffer.text(), QStringLiteral("two lines"));
    }

    void aDescriptionIsMeasuredInBytes_data()
    {
        QTest::addColumn<QString>("letter");
        QTest::newRow("one byte") << QStringLiteral("x");
        QTest::newRow("two bytes") << QString(QChar(0x00e9));
        QTest::newRow("four bytes") << QString::fromUcs4(U"\U0001f37d");
    }

    void aDescriptionIsMeasuredInBytes()
    {
        QFETCH(const QString, letter);
        const QString longest = letter.repeated(Item::longestRef / letter.toUtf8().size());
        DescriptionBuffer buffer;

        buffer.edit(longest);
        QCOMPARE(buffer.text(), longest);
        QCOMPARE(buffer.notice(), QString());

        QVERIFY(buffer.edit(longest + QLatin1Char('x')));
        QCOMPARE(buffer.text(), longest);
        QCOMPARE(buffer.notice(), tooLong);
    }

    void aRefusedTextIsAnEditEveryTimeSoThatTheFieldIsPutBack()
    {
        DescriptionBuffer buffer;
        buffer.reset(QStringLiteral("Lunch"));
        const QString refused(Item::longestRef + 1, QLatin1Char('x'));

        QVERIFY(buffer.edit(refused));
        QVERIFY(buffer.edit(refused));

        QCOMPARE(buffer.text(), QStringLiteral("Lunch"));
        QCOMPARE(buffer.notice(), tooLong);
    }

    void showingTheOldTextAgainKeepsTheNotice()
    {
        DescriptionBuffer buffer;
        buffer.reset(QStringLiteral("Lunch"));
        buffer.edit(QString(Item::longestRef + 1, QLatin1Char('x')));

        QVERIFY(!buffer.edit(QStringLiteral("Lunch")));

        QCOMPARE(buffer.notice(), tooLong);
    }

    void theNextTextThatFitsEndsTheNotice()
    {
        DescriptionBuffer buffer;
        buffer.edit(QString(Item::longestRef + 1, QLatin1Char('x')));

        QVERIFY(buffer.edit(QStringLiteral("Lunch")));

        QCOMPARE(buffer.notice(), QString());
    }

    void startingAgainEndsTheNotice()
    {
        DescriptionBuffer buffer;
        buffer.edit(QString(Item::longestRef + 1, QLatin1Char('x')));

        buffer.reset();

        QCOMPARE(buffer.text(), QString());
        QCOMPARE(buffer.notice(), QString());
    }
};

QTEST_GUILESS_MAIN(DescriptionBufferTest)
#include "DescriptionBufferTest.moc"
