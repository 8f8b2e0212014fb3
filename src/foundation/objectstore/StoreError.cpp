#include "StoreError.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace {

/// What SQLite says of the failures that may happen to a user.
constexpr std::array reasons {
    QT_TRANSLATE_NOOP("StoreError", "attempt to write a readonly database"),
    QT_TRANSLATE_NOOP("StoreError", "database disk image is malformed"),
    QT_TRANSLATE_NOOP("StoreError", "database is locked"),
    QT_TRANSLATE_NOOP("StoreError", "database or disk is full"),
    QT_TRANSLATE_NOOP("StoreError", "disk I/O error"),
    QT_TRANSLATE_NOOP("StoreError", "file is not a database"),
    QT_TRANSLATE_NOOP("StoreError", "unable to open database file"),
};

QString translatedReason(const QString& place)
{
    const auto* const reason = std::ranges::find_if(
        reasons, [&](const char* text) { return place == QLatin1String(text); });
    return reason == reasons.end() ? place : QCoreApplication::translate("StoreError", *reason);
}

/// The text with what stands in its places; they are filled at once, so that none is sought in what
/// filled another.
QString filled(const QString& text, const QStringList& places)
{
    switch (places.size()) {
    case 0:
        return text;
    case 1:
        return text.arg(places[0]);
    default:
        return text.arg(places[0], places[1]);
    }
}

QString nameOf(StoreError::Code code)
{
    using Code = StoreError::Code;
    switch (code) {
    case Code::ModelUnreadable:
        return QStringLiteral("model unreadable");
    case Code::CannotOpen:
        return QStringLiteral("cannot open");
    case Code::PermissionDenied:
        return QStringLiteral("permission denied");
    case Code::Corrupt:
        return QStringLiteral("corrupt");
    case Code::NewerFormat:
        return QStringLiteral("newer format");
    case Code::IncompatibleModel:
        return QStringLiteral("incompatible model");
    case Code::NoStore:
        return QStringLiteral("no store");
    case Code::Locked:
        return QStringLiteral("locked");
    case Code::DiskFull:
        return QStringLiteral("disk full");
    case Code::InputOutput:
        return QStringLiteral("input/output");
    case Code::Conflict:
        return QStringLiteral("conflict");
    case Code::Validation:
        return QStringLiteral("validation");
    case Code::InvalidRequest:
        return QStringLiteral("invalid request");
    case Code::ObjectMissing:
        return QStringLiteral("object missing");
    case Code::GenerationUnavailable:
        return QStringLiteral("generation unavailable");
    }
    return QStringLiteral("unknown");
}

QString textOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::QStringList)
        return QLatin1Char('[') + value.toStringList().join(QStringLiteral(", "))
            + QLatin1Char(']');
    return value.toString();
}

} // namespace

QString StoreText::english() const { return filled(QString::fromUtf8(source), places); }

QString StoreText::translated() const
{
    QStringList translatedPlaces;
    for (const QString& place : places)
        translatedPlaces.append(translatedReason(place));
    return filled(QCoreApplication::translate("StoreError", source), translatedPlaces);
}

QString StoreError::toString() const
{
    return QLatin1String("StoreError (") + nameOf(code) + QLatin1String("): ")
        + description.english();
}

QString StoreError::translated() const
{
    return QLatin1String("StoreError (") + nameOf(code) + QLatin1String("): ")
        + description.translated();
}

QString StoreError::userInfoText() const
{
    QStringList parts;
    for (auto it = userInfo.cbegin(); it != userInfo.cend(); ++it)
        parts.append(it.key() + QLatin1String(": ") + textOf(it.value()));
    return QLatin1Char('[') + parts.join(QStringLiteral(", ")) + QLatin1Char(']');
}
