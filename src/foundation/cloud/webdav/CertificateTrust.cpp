#include "CertificateTrust.h"

#include <QCryptographicHash>
#include <QSslCertificate>

#include <algorithm>

namespace mirror {

namespace {

QByteArray digestOf(const QSslCertificate& certificate)
{
    return certificate.digest(QCryptographicHash::Sha256).toHex();
}

/// What a self-signed certificate is always accused of; whether it is the right one, the pin tells.
bool comesWithSelfSigning(QSslError::SslError error)
{
    return error == QSslError::SelfSignedCertificate || error == QSslError::HostNameMismatch
        || error == QSslError::CertificateUntrusted;
}

} // namespace

CertificateTrust::CertificateTrust(const WebDavAccount& account)
    : m_selfSigned(account.selfSigned)
    , m_pin(account.certificatePin.toLower())
{
}

QList<QSslError> CertificateTrust::overlooked(const QList<QSslError>& errors) const
{
    if (m_selfSigned == WebDavAccount::SelfSigned::Refuse)
        return {};
    const bool isHarmless = std::all_of(errors.cbegin(), errors.cend(), [this](const auto& error) {
        const QSslCertificate certificate = error.certificate();
        if (!certificate.isSelfSigned())
            return false;
        if (m_pin.isEmpty())
            return comesWithSelfSigning(error.error());
        return digestOf(certificate) == m_pin
            && (comesWithSelfSigning(error.error())
                || error.error() == QSslError::CertificateExpired);
    });
    return isHarmless ? errors : QList<QSslError>();
}

bool CertificateTrust::accepts(const QSslCertificate& certificate)
{
    const bool pinsFirst = m_selfSigned == WebDavAccount::SelfSigned::AcceptPinned;
    if (m_pin.isEmpty() && pinsFirst && certificate.isSelfSigned())
        m_pin = digestOf(certificate);
    return m_pin.isEmpty() || digestOf(certificate) == m_pin;
}

} // namespace mirror
