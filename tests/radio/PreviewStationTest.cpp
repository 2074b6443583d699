// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/PreviewStation.h"

#include "RadioWorld.h"

namespace velarin::test {

TEST(PreviewStation, isAStationThatBelongsNowhere)
{
    Station expected;
    expected.id = u"custom/preview"_s;
    expected.name = u"Anteprima"_s;
    expected.streamUrl = u"http://radio.example:8000/live?x=1"_s;
    expected.genre = u"Varie"_s;
    expected.group = u"Altre"_s;
    EXPECT_EQ(previewStation(u"http://radio.example:8000/live?x=1"_s), expected);
}

TEST(PreviewStation, takesASecureAddress)
{
    ASSERT_TRUE(previewStation(u"https://radio.example/"_s));
    EXPECT_EQ(previewStation(u"https://radio.example/"_s)->streamURL()->scheme(), u"https"_s);
}

TEST(PreviewStation, trimsTheAddress)
{
    EXPECT_EQ(previewStation(u" \n http://radio.example/a \t"_s)->streamUrl, u"http://radio.example/a"_s);
}

TEST(PreviewStation, rescuesBlanksAndAccents)
{
    EXPECT_EQ(
        previewStation(u"http://radio.example/città uno"_s)->streamUrl, u"http://radio.example/citt%C3%A0%20uno"_s);
}

TEST(PreviewStation, refusesWhatIsNoAddressOfTheWeb)
{
    for (const QString& address :
        { QString(), u"   "_s, u"radio"_s, u"file:///etc/passwd"_s, u"ftp://radio.example/a"_s,
            u"rtsp://radio.example/a"_s, u"javascript:alert(1)"_s, u"http://"_s, u"http:"_s, u"//radio.example/a"_s })
        EXPECT_EQ(previewStation(address), std::nullopt) << address.toStdString();
}

}
