#include "MirrorFixture.h"

#include <QTest>

using mirror::DeadRecord;
using mirror::DeviceId;
using mirror::join;
using mirror::LiveRecord;
using mirror::RecordState;
using mirror::Renaming;
using mirror::Text;
using mirror::UnknownKeys;

namespace {

Renaming renaming(qint64 milliseconds, quint64 device, const std::optional<QString>& text)
{
    return { timeAt(milliseconds), DeviceId(device),
        text ? std::optional(Text::of(*text)) : std::nullopt };
}

LiveRecord renamed(LiveRecord record, const Renaming& renaming)
{
    record.renaming = renaming;
    return record;
}

template <typename State> State with(State state, const QByteArray& unknown)
{
    state.unknown = unknownKeys(unknown);
    return state;
}

QByteArray unknownText(const UnknownKeys& left, const UnknownKeys& right)
{
    return join(left, right).toText();
}

} // namespace

/// The examples; JoinPropertyTest has the laws.
class RecordStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDeadRecordStaysDeadWhateverIsSaidLater()
    {
        const RecordState dead = deadNote(1);
        const RecordState later = renamed(liveNote({}, {}), renaming(999'999, 1, QString()));

        QVERIFY(join(dead, later) == dead);
        QVERIFY(join(later, dead) == dead);
    }

    void ofTwoDeathsTheLaterStays()
    {
        QVERIFY(join(deadNote(5), deadNote(7)) == RecordState(deadNote(7)));
    }

    void nothingOfADeletedRecordIsKept()
    {
        const RecordState live
            = with(liveNote({}, QStringLiteral("secret")), R"({"note":"secret"})");

        QVERIFY(join(live, deadNote(1)) == RecordState(deadNote(1)));
    }

    void whatANewerVersionAddedToADeathIsKept()
    {
        const RecordState dead = with(deadNote(5), R"({"why":1})");

        QVERIFY(join(dead, deadNote(7)) == RecordState(with(deadNote(7), R"({"why":1})")));
        QVERIFY(join(liveNote({}, {}), dead) == dead);
    }

    void theLaterNameStays_data()
    {
        QTest::addColumn<Renaming>("winner");
        const auto text = [](const char* ascii) { return QString::fromLatin1(ascii); };

        QTest::newRow("later") << renaming(6, 0, text("a"));
        QTest::newRow("device of two at once") << renaming(5, 8, text("a"));
        QTest::newRow("text of two clones at once") << renaming(5, 7, text("n"));
        QTest::newRow("removed later") << renaming(6, 0, std::nullopt);
    }
    void theLaterNameStays()
    {
        QFETCH(const Renaming, winner);
        const LiveRecord note = liveNote({}, {});
        const RecordState loser = renamed(note, renaming(5, 7, QStringLiteral("m")));

        QVERIFY(join(loser, renamed(note, winner)) == RecordState(renamed(note, winner)));
        QVERIFY(join(renamed(note, winner), loser) == RecordState(renamed(note, winner)));
    }

    void aNameBeatsNoneAtOnce()
    {
        const LiveRecord note = liveNote({}, {});
        const RecordState named = renamed(note, renaming(5, 7, QString()));

        QVERIFY(join(named, renamed(note, renaming(5, 7, std::nullopt))) == named);
    }

    void ofTwoContentsTheEarlierStays()
    {
        LiveRecord first = liveNote({ .amount = 9 }, {});
        LiveRecord second = liveNote({ .amount = 1 }, {});
        first.content.time = timeAt(1);
        second.content.time = timeAt(2);

        QVERIFY(join(second, first) == RecordState(first));
    }

    void ofTwoContentsAtOnceTheSmallerStays()
    {
        const RecordState ten = liveNote({ .amount = 10 }, {});
        const RecordState nine = liveNote({ .amount = 9 }, {});

        QVERIFY(join(nine, ten) == ten); // the texts are compared
    }

    void unknownKeysOfBothAreKept()
    {
        QCOMPARE(unknownText(unknownKeys(R"({"b":1})"), unknownKeys(R"({"a":[null]})")),
            ",\"a\":[null],\"b\":1");
    }

    void ofOneUnknownKeyTheLargerTextStays()
    {
        QCOMPARE(unknownText(unknownKeys(R"({"a":10})"), unknownKeys(R"({"a":9})")), ",\"a\":9");
    }

    void ofTooManyUnknownKeysTheFirstAreKept()
    {
        const UnknownKeys even = unknownKeys(R"({"a":0,"c":0,"e":0,"g":0,"i":0,"k":0})");
        const UnknownKeys odd = unknownKeys(R"({"b":0,"d":0,"f":0,"h":0,"j":0,"l":0})");

        QCOMPARE(unknownText(even, odd),
            ",\"a\":0,\"b\":0,\"c\":0,\"d\":0,\"e\":0,\"f\":0,\"g\":0,\"h\":0");
    }

    void unknownKeysPastALimitAreRefused()
    {
        const auto keys = [](const QByteArray& object) {
            return UnknownKeys::of(mirror::readJsonLine(object).value(), { "known" });
        };
        const QByteArray value(UnknownKeys::MaxMemberBytes - 6, 'x'); // "a":""

        QVERIFY(keys("{\"a\":\"" + value + "\"}"));
        QVERIFY(!keys("{\"a\":\"" + value + "x\"}"));
        QVERIFY(keys("{\"known\":\"" + value + "x\"}"));
        QVERIFY(keys(R"({"a":0,"b":0,"c":0,"d":0,"e":0,"f":0,"g":0,"h":0,"known":0})"));
        QVERIFY(!keys(R"({"a":0,"b":0,"c":0,"d":0,"e":0,"f":0,"g":0,"h":0,"i":0})"));
    }
};

QTEST_APPLESS_MAIN(RecordStateTest)
#include "RecordStateTest.moc"
