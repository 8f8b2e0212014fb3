#pragma once

#include "WebDavAccount.h"

#include <QList>
#include <QSslError>

class QSslCertificate;

namespace mirror {

/// Decides whether a server is the one that the account means, before anything is sent to it.
class CertificateTrust {
public:
    explicit CertificateTrust(const WebDavAccount& account);

    /// Of what is wrong with a connection, what may be overlooked: all of it, where a self-signed
    /// certificate is accepted and it is the pinned one, or the first one seen; otherwise nothing.
    /// An expired certificate is overlooked only where it is the pinned one.
    [[nodiscard]] QList<QSslError> overlooked(const QList<QSslError>& errors) const;

    /// Whether the certificate of an established connection will do. The first self-signed one is
    /// pinned from then on; once one is pinned, no other will do, whoever signed it.
    [[nodiscard]] bool accepts(const QSslCertificate& certificate);

    /// Whether there is a certificate besides which no other self-signed one will do.
    [[nodiscard]] bool isBound() const
    {
        return m_selfSigned == WebDavAccount::SelfSigned::AcceptPinned && !m_pin.isEmpty();
    }

    /// SHA-256 of the pinned certificate, 64 lower-case hexadecimal digits; empty where there is
    /// none.
    [[nodiscard]] const QByteArray& pin() const { return m_pin; }

private:
    WebDavAccount::SelfSigned m_selfSigned;
    QByteArray m_pin;
};

} // namespace mirror
