#include "StatusError.h"

namespace mirror {

namespace {

using Kind = FileError::Kind;

Kind kindOf(int status)
{
    switch (status) {
    case 401:
    case 403:
        return Kind::Unauthorised;
    case 404:
    case 410:
        return Kind::NotFound;
    case 409:
        return Kind::Conflict;
    case 413:
    case 507:
        return Kind::TooLarge;
    case 423:
        return Kind::Locked;
    case 429:
    case 503:
        return Kind::Busy;
    case 408:
        return Kind::Server;
    default:
        break;
    }
    if (status >= 300 && status < 400)
        return Kind::Redirect;
    return status >= 500 && status < 600 ? Kind::Server : Kind::NotUnderstood;
}

QString meaningOf(Kind kind)
{
    switch (kind) {
    case Kind::Unauthorised:
        return QStringLiteral("the account may not do this");
    case Kind::NotFound:
        return QStringLiteral("not found");
    case Kind::Conflict:
        return QStringLiteral("conflict");
    case Kind::TooLarge:
        return QStringLiteral("no room for it");
    case Kind::Locked:
        return QStringLiteral("locked");
    case Kind::Busy:
        return QStringLiteral("busy");
    case Kind::Redirect:
        return QStringLiteral("redirected, which is not followed");
    case Kind::Server:
        return QStringLiteral("a failure of the server");
    default:
        return QStringLiteral("not what was expected");
    }
}

} // namespace

FileError errorOfStatus(int status)
{
    const Kind kind = kindOf(status);
    return { kind, status, std::nullopt,
        QStringLiteral("the server answered %1: %2").arg(status).arg(meaningOf(kind)) };
}

} // namespace mirror
