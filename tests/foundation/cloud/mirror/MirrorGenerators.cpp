#include "MirrorGenerators.h"

#include <array>

using namespace mirror;

namespace {

HybridTime someTime() { return timeAt(*rc::gen::inRange(0, 3), *rc::gen::inRange(0, 2)); }

DeviceId someDevice() { return DeviceId(*rc::gen::inRange<quint64>(0, 2)); }

Text someText()
{
    static const std::array texts { Text(), Text::of(u"a"), Text::of(u"B"),
        Text::of(u"\u00e9\"\\\n"), Text::of(u"\U0001F600") };
    return *rc::gen::elementOf(texts);
}

std::optional<Text> someTextOrNone()
{
    return *rc::gen::inRange(0, 4) == 0 ? std::nullopt : std::optional(someText());
}

double someDouble() { return *rc::gen::element(0.0, -0.0, 0.1, 1e300, 5e-324); }

Attributes someAttributes()
{
    Values values = valuesOf({ .amount = someDouble(),
        .count = *rc::gen::inRange<qint32>(-1, 2),
        .done = *rc::gen::arbitrary<bool>() });
    if (const auto text = someTextOrNone())
        values.back() = *text;
    return Attributes::of(values, noteSchema()).value();
}

LiveRecord someLive()
{
    return { { someTime(), someAttributes() }, { someTime(), someDevice(), someTextOrNone() },
        *arbitraryUnknownKeys() };
}

SmallValue someValue()
{
    switch (*rc::gen::inRange(0, 4)) {
    case 0:
        return {};
    case 1:
        return *rc::gen::arbitrary<bool>();
    case 2:
        return qint64(*rc::gen::inRange(-2, 2));
    default:
        return someText();
    }
}

} // namespace

// More names than can be kept, so that joins also have to drop some.
rc::Gen<UnknownKeys> arbitraryUnknownKeys()
{
    return rc::gen::exec([] {
        QByteArrayList members;
        for (char name = 'A'; name < 'A' + 12; ++name) {
            if (members.size() < qsizetype(UnknownKeys::MaxCount) && *rc::gen::inRange(0, 3) == 0)
                members
                    += QByteArray("\"") + name + "\":" + *rc::gen::element("0", "[1.50]", "null");
        }
        return unknownKeys("{" + members.join(',') + "}");
    });
}

rc::Gen<RecordState> arbitraryState()
{
    return rc::gen::exec([] {
        if (*rc::gen::inRange(0, 4) > 0)
            return RecordState(someLive());
        return RecordState(DeadRecord { someTime(), *arbitraryUnknownKeys() });
    });
}

rc::Gen<Record> arbitraryRecord()
{
    return rc::gen::exec([] {
        return Record { identity(*rc::gen::arbitrary<quint32>()), *arbitraryState() };
    });
}

rc::Gen<KeyValueState> arbitraryKeyValueState()
{
    return rc::gen::exec([] {
        return KeyValueState { someTime(), someDevice(), someValue(), *arbitraryUnknownKeys() };
    });
}
