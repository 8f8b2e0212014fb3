#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace mirror {

/// Where the user's WebDAV folder is, and how to be let in.
struct WebDavAccount {
    enum class SelfSigned {
        Refuse,
        AcceptPinned, ///< one certificate, see certificatePin
    };

    QUrl root; ///< https, or http to this machine alone
    QString user; ///< without a colon, which Basic authentication cannot carry
    QString password;
    SelfSigned selfSigned = SelfSigned::Refuse;
    /// SHA-256 of the one certificate that is accepted, in hexadecimal digits; where it is empty
    /// and a self-signed one is accepted, the first one seen.
    QByteArray certificatePin;
};

} // namespace mirror
