#include <roamscan/frame/bvbase/String.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <thread>
#include <vector>

namespace
{

using Bv_1_1::String;

} // namespace

TEST(String, NarrowTextIsUtf8)
{
    EXPECT_STREQ(String(L"Gr\u00FC\u00DFe \u20AC \U0001F600").stringAnsi(),
                 "Gr\xC3\xBC\xC3\x9F"
                 "e \xE2\x82\xAC \xF0\x9F\x98\x80");
}

TEST(String, ConstructsFromNarrowText)
{
    EXPECT_EQ(String::fromNarrow("Gr\xC3\xBC\xC3\x9F"
                                 "e \xF0\x9F\x98\x80")
                  .text(),
              u"Gr\u00FC\u00DFe \U0001F600");
}

TEST(String, ANullNarrowPointerIsNil)
{
    EXPECT_TRUE(String::fromNarrow(nullptr).isNil());
}

TEST(String, EmptyNarrowTextIsTheEmptyStringAndNotNil)
{
    EXPECT_FALSE(String::fromNarrow("").isNil());
    EXPECT_TRUE(String::fromNarrow("").compareEquality(String::EMPTY));
}

TEST(String, MalformedNarrowTextIsReplaced)
{
    EXPECT_EQ(String::fromNarrow("a\xFF"
                                 "b")
                  .text(),
              u"a\uFFFDb");
    EXPECT_EQ(String::fromNarrow("a\x80z").text(), u"a\uFFFDz");             // a trail without a lead
    EXPECT_EQ(String::fromNarrow("a\xE2\x82").text(), u"a\uFFFD");           // cut short by the end
    EXPECT_EQ(String::fromNarrow("a\xE2z").text(), u"a\uFFFDz");             // cut short by a letter
    EXPECT_EQ(String::fromNarrow("a\xC0\xAFz").text(), u"a\uFFFDz");         // overlong
    EXPECT_EQ(String::fromNarrow("a\xED\xA0\x80z").text(), u"a\uFFFDz");     // a surrogate
    EXPECT_EQ(String::fromNarrow("a\xF4\x90\x80\x80z").text(), u"a\uFFFDz"); // beyond Unicode
}

TEST(String, UnpairedSurrogatesAreKeptButReplacedInNarrowText)
{
    std::u16string const text{u'a', char16_t{0xD83D}, u'b', char16_t{0xDE00}, char16_t{0xD83D}};
    String const string = String::fromUtf16(text);
    EXPECT_EQ(string.text(), text);
    String copy(L"");
    copy << string;
    EXPECT_EQ(copy.text(), text);
    EXPECT_STREQ(string.stringAnsi(),
                 "a\xEF\xBF\xBD"
                 "b\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(String, OnlyAnUnpairedLeadSurrogateBeforeAPairIsReplaced)
{
    std::u16string const text{char16_t{0xD83D}, char16_t{0xD83D}, char16_t{0xDE00}};
    EXPECT_STREQ(String::fromUtf16(text).stringAnsi(), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(String, NarrowTextSurvivesARoundTrip)
{
    std::string text;
    for (char32_t const codePoint : {U'\x01',
                                     U'\x7F',
                                     U'\x80',
                                     U'\x7FF',
                                     U'\x800',
                                     U'\uD7FF',
                                     U'\uE000',
                                     U'\uFFFF',
                                     U'\U00010000',
                                     U'\U0010FFFF'})
    {
        std::u16string units;
        if (codePoint <= 0xFFFF) {
            units = {static_cast<char16_t>(codePoint)};
        } else {
            units = {static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)),
                     static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF))};
        }
        text += String::fromUtf16(units).stringAnsi();
    }
    EXPECT_STREQ(String::fromNarrow(text.c_str()).stringAnsi(), text.c_str());
}

TEST(String, NarrowTextIsValidWhileTheStringIsUnchanged)
{
    String const string(L"text");
    char const* const text = string.stringAnsi();
    EXPECT_EQ(string.stringAnsi(), text);
    {
        String copy(string);
        EXPECT_EQ(copy.stringAnsi(), text);
        copy << L" and more";
        EXPECT_STREQ(copy.stringAnsi(), "text and more");
    }
    EXPECT_STREQ(text, "text");
}

TEST(String, ManyThreadsMayGetNarrowTextConcurrently)
{
    constexpr int threadCount = 4;
    for (int round = 0; round < 200; ++round) {
        String const string(L"shared \u20AC");
        std::vector<char const*> texts(threadCount);
        std::atomic<int> waiting = threadCount;
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < threadCount; ++i) {
            threads.emplace_back([copy = string, &texts, &waiting, i] {
                --waiting;
                while (waiting > 0) {
                    std::this_thread::yield();
                }
                texts[i] = copy.stringAnsi();
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (char const* const text : texts) {
            EXPECT_EQ(text, string.stringAnsi());
        }
        EXPECT_STREQ(string.stringAnsi(), "shared \xE2\x82\xAC");
    }
}
