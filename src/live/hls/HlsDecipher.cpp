// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsDecipher.h"

#include <openssl/evp.h>

#include <QtEndian>

namespace velarin::live {

namespace {

const unsigned char* unsignedBytes(QByteArrayView bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

unsigned char* unsignedBytes(QByteArray& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

}

void HlsDecipher::Cleanup::operator()(evp_cipher_ctx_st* context) const
{
    EVP_CIPHER_CTX_free(context);
}

HlsDecipher::HlsDecipher(QByteArrayView key, QByteArrayView initializationVector)
    : m_context(EVP_CIPHER_CTX_new())
{
    Q_ASSERT(key.size() == blockSize && initializationVector.size() == blockSize);
    EVP_DecryptInit_ex(
        m_context.get(), EVP_aes_128_cbc(), nullptr, unsignedBytes(key), unsignedBytes(initializationVector));
}

HlsDecipher::~HlsDecipher() = default;

QByteArray HlsDecipher::read(QByteArrayView bytes)
{
    QByteArray plain(bytes.size() + blockSize, Qt::Uninitialized);
    int size = 0;
    EVP_DecryptUpdate(
        m_context.get(), unsignedBytes(plain), &size, unsignedBytes(bytes), static_cast<int>(bytes.size()));
    plain.truncate(size);
    return plain;
}

std::optional<QByteArray> HlsDecipher::finish()
{
    QByteArray plain(blockSize, Qt::Uninitialized);
    int size = 0;
    if (EVP_DecryptFinal_ex(m_context.get(), unsignedBytes(plain), &size) != 1)
        return std::nullopt;
    plain.truncate(size);
    return plain;
}

QByteArray HlsDecipher::vectorOf(qint64 sequence)
{
    QByteArray vector(blockSize, '\0');
    qToBigEndian(sequence, vector.data() + blockSize - static_cast<qsizetype>(sizeof sequence));
    return vector;
}

}
