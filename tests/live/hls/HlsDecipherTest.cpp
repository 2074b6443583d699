// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsDecipher.h"

#include <gtest/gtest.h>

namespace velarin::live {

namespace {

// NIST SP 800-38A, F.2.1 (CBC-AES128), whose four blocks are followed by one of padding.
const QByteArray key = QByteArray::fromHex("2b7e151628aed2a6abf7158809cf4f3c");
const QByteArray vector = QByteArray::fromHex("000102030405060708090a0b0c0d0e0f");
const QByteArray plain = QByteArray::fromHex("6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
                                             "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710");
const QByteArray secret = QByteArray::fromHex(
    "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
    "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a78cb82807230e1321d3fae00d18cc2012");

}

TEST(HlsDecipherTest, readsWhatTheStandardsExampleEncrypted)
{
    for (const qsizetype piece : { 1, 7, 16, 100 }) {
        HlsDecipher decipher(key, vector);
        QByteArray read;
        for (qsizetype at = 0; at < secret.size(); at += piece)
            read += decipher.read(secret.mid(at, piece));
        const std::optional<QByteArray> last = decipher.finish();
        ASSERT_TRUE(last.has_value());
        EXPECT_EQ(read + *last, plain) << piece;
    }
}

TEST(HlsDecipherTest, aSegmentCutShortIsToldAsSuch)
{
    HlsDecipher decipher(key, vector);
    (void)decipher.read(secret.first(40));
    EXPECT_FALSE(decipher.finish().has_value());
}

TEST(HlsDecipherTest, theVectorOfASegmentIsItsNumber)
{
    EXPECT_EQ(HlsDecipher::vectorOf(0x0102), QByteArray(14, '\0') + QByteArray("\1\2"));
}

}
