#include "Sha256.h"

namespace mirror {

Sha256::Sha256()
    : m_state()
{
    sha256_init(&m_state);
}

void Sha256::add(QByteArrayView bytes)
{
    sha256_update(
        &m_state, std::size_t(bytes.size()), reinterpret_cast<const quint8*>(bytes.data()));
}

QByteArray Sha256::takeResult()
{
    QByteArray digest(SHA256_DIGEST_SIZE, '\0');
    sha256_digest(&m_state, SHA256_DIGEST_SIZE, reinterpret_cast<quint8*>(digest.data()));
    return digest.toHex();
}

QByteArray sha256(QByteArrayView bytes)
{
    Sha256 hash;
    hash.add(bytes);
    return hash.takeResult();
}

} // namespace mirror
