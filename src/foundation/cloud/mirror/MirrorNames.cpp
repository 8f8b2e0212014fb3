#include "MirrorNames.h"

#include "FixedDigits.h"
#include "Sha256.h"

#include <QStringBuilder>

namespace mirror {

namespace {

constexpr QByteArrayView RecordsPrefix = "b1-";
constexpr QByteArrayView KeyValuesPrefix = "k1-";
constexpr QByteArrayView LinesSuffix = ".jsonl";
constexpr qsizetype HashDigits = 64;

constexpr QByteArrayView EpochPrefix = "e-";
constexpr int MillisecondDigits = 13;
constexpr int RandomDigits = 16;
constexpr QByteArrayView ClosedPrefix = "closed-";
constexpr QByteArrayView ClosedSuffix = ".json";

/// What stands between the two, nothing where the text does not begin and end with them.
std::optional<QByteArrayView> between(
    QByteArrayView text, QByteArrayView prefix, QByteArrayView suffix)
{
    if (text.size() < prefix.size() + suffix.size() || !text.startsWith(prefix)
        || !text.endsWith(suffix))
        return std::nullopt;
    return text.sliced(prefix.size(), text.size() - prefix.size() - suffix.size());
}

std::optional<QByteArray> hashIn(QByteArrayView name, QByteArrayView prefix)
{
    const auto hash = between(name, prefix, LinesSuffix);
    if (!hash || hash->size() != HashDigits || !isLowerHex(*hash))
        return std::nullopt;
    return hash->toByteArray();
}

std::optional<Epoch> epochIn(QByteArrayView name)
{
    const auto rest = between(name, EpochPrefix, {});
    if (!rest || rest->size() != MillisecondDigits + 1 + RandomDigits
        || rest->at(MillisecondDigits) != '-')
        return std::nullopt;
    const auto milliseconds = readFixedDecimal(rest->first(MillisecondDigits), MillisecondDigits);
    const auto random = readFixedHex(rest->last(RandomDigits));
    if (!milliseconds || !random)
        return std::nullopt;
    return Epoch { *milliseconds, *random };
}

QByteArray nameOf(const Epoch& epoch)
{
    return EpochPrefix + fixedDecimal(epoch.milliseconds, MillisecondDigits) + "-"
        + fixedHex(epoch.random);
}

} // namespace

FileName FileName::of(FileContent content, QByteArrayView bytes)
{
    return { content, mirror::sha256(bytes) };
}

// No name has a question mark, which is what toLatin1 makes of every foreign character.
std::optional<FileName> FileName::fromText(QStringView name)
{
    const QByteArray text = name.toLatin1();
    if (auto hash = hashIn(text, RecordsPrefix))
        return FileName { FileContent::Records, *std::move(hash) };
    if (auto hash = hashIn(text, KeyValuesPrefix))
        return FileName { FileContent::KeyValues, *std::move(hash) };
    return std::nullopt;
}

QString FileName::toText() const
{
    const QByteArrayView prefix = content == FileContent::Records ? RecordsPrefix : KeyValuesPrefix;
    return QString::fromLatin1(prefix + sha256 + LinesSuffix);
}

std::optional<Epoch> Epoch::fromFolderName(QStringView name) { return epochIn(name.toLatin1()); }

QString Epoch::folderName() const { return QString::fromLatin1(nameOf(*this)); }

std::optional<Epoch> Epoch::fromClosedMarkerName(QStringView name)
{
    const QByteArray text = name.toLatin1();
    const auto epoch = between(text, ClosedPrefix, ClosedSuffix);
    return epoch ? epochIn(*epoch) : std::nullopt;
}

QString Epoch::closedMarkerName() const
{
    return QString::fromLatin1(ClosedPrefix + nameOf(*this) + ClosedSuffix);
}

} // namespace mirror
