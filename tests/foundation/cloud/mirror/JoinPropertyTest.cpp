#include "MirrorGenerators.h"
#include "RecordLine.h"

#include <QTest>

using namespace mirror;

namespace {

/// Whether joins of such states depend neither on order nor on repetition.
template <typename State> bool joinsAreLawful(const rc::Gen<State>& states)
{
    return rc::check([&states] {
        const State a = *states;
        const State b = *states;
        const State c = *states;

        RC_ASSERT(join(a, a) == a);
        RC_ASSERT(join(a, b) == join(b, a));
        RC_ASSERT(join(join(a, b), c) == join(a, join(b, c)));
        RC_ASSERT(join(join(a, b), b) == join(a, b));
    });
}

} // namespace

class JoinPropertyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void unknownKeysJoinInAnyOrder() { QVERIFY(joinsAreLawful(arbitraryUnknownKeys())); }
    void recordsJoinInAnyOrder() { QVERIFY(joinsAreLawful(arbitraryState())); }
    void keysAndValuesJoinInAnyOrder() { QVERIFY(joinsAreLawful(arbitraryKeyValueState())); }

    void deathIsForEver()
    {
        QVERIFY(rc::check([] {
            const RecordState a = *arbitraryState();
            const RecordState b = *arbitraryState();
            const bool isDead
                = std::holds_alternative<DeadRecord>(a) || std::holds_alternative<DeadRecord>(b);

            RC_ASSERT(std::holds_alternative<DeadRecord>(join(a, b)) == isDead);
        }));
    }

    void aRecordIsReadAsItWasWritten()
    {
        QVERIFY(rc::check([] {
            const Record record = *arbitraryRecord();

            RC_ASSERT(readRecordLine(recordLine(record), noteSchema()) == record);
        }));
    }

    void anEntryIsReadAsItWasWritten()
    {
        QVERIFY(rc::check([] {
            const KeyValue entry { Text::of(u"key"), *arbitraryKeyValueState() };

            RC_ASSERT(readKeyValueLine(keyValueLine(entry)) == entry);
        }));
    }

    void whatIsJoinedIsReadAsItWasWritten()
    {
        QVERIFY(rc::check([] {
            const Record joined { identity(1), join(*arbitraryState(), *arbitraryState()) };

            RC_ASSERT(readRecordLine(recordLine(joined), noteSchema()) == joined);
        }));
    }
};

QTEST_APPLESS_MAIN(JoinPropertyTest)
#include "JoinPropertyTest.moc"
