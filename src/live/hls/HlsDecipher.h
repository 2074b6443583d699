// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <memory>
#include <optional>

struct evp_cipher_ctx_st;

namespace velarin::live {

// Undoes the encryption of one segment (RFC 8216, section 4.3.2.4): AES with 128 bits, cipher block chaining over the
// whole segment, padded as PKCS #7 says. Fed piece by piece.
class HlsDecipher
{
public:
    static constexpr qsizetype blockSize = 16;

    // Both of `blockSize` bytes.
    HlsDecipher(QByteArrayView key, QByteArrayView initializationVector);
    ~HlsDecipher();
    HlsDecipher(const HlsDecipher&) = delete;
    HlsDecipher& operator=(const HlsDecipher&) = delete;

    // What can be read of it now; the last block stays behind, since it may be padding.
    [[nodiscard]] QByteArray read(QByteArrayView bytes);
    // What was left behind. Absent if the segment does not end as one does: it was cut short, or the key is not its.
    [[nodiscard]] std::optional<QByteArray> finish();

    // The vector of a segment whose list gives none: its number.
    [[nodiscard]] static QByteArray vectorOf(qint64 sequence);

private:
    struct Cleanup
    {
        void operator()(evp_cipher_ctx_st* context) const;
    };
    std::unique_ptr<evp_cipher_ctx_st, Cleanup> m_context;
};

}
