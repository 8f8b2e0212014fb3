#include "StoreError.h"

#include <QStringList>

namespace {

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

QString StoreError::toString() const
{
    return QLatin1String("StoreError (") + nameOf(code) + QLatin1String("): ") + description;
}

QString StoreError::userInfoText() const
{
    QStringList parts;
    for (auto it = userInfo.cbegin(); it != userInfo.cend(); ++it)
        parts.append(it.key() + QLatin1String(": ") + textOf(it.value()));
    return QLatin1Char('[') + parts.join(QStringLiteral(", ")) + QLatin1Char(']');
}
