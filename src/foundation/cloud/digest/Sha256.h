#pragma once

#include <QByteArray>

#include <nettle/sha2.h>

namespace mirror {

/// The SHA-256 of bytes that come in pieces. Every file is hashed when it is written and when it is
/// read; the library behind this uses the processor's own instructions for that, which Qt's does
/// not.
class Sha256 {
public:
    Sha256();

    void add(QByteArrayView bytes);
    /// Of all that was added, 64 lower-case hexadecimal digits; begins anew then.
    [[nodiscard]] QByteArray takeResult();

private:
    sha256_ctx m_state;
};

/// Of all the bytes, 64 lower-case hexadecimal digits.
[[nodiscard]] QByteArray sha256(QByteArrayView bytes);

} // namespace mirror
