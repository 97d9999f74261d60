#include "Platform/Values/CaseFolding.h"
#include "Platform/Values/ControlCharacters.h"
#include "Platform/Values/URL.h"
#include "Platform/Values/URLRefusal.h"

#include <gtest/gtest.h>

using namespace vantix;
using namespace std::string_literals;

TEST(URLTest, ParsesStrictly) {
    struct {
        const char* text;
        bool valid, web;
    } const cases[] = {
        {"https://example.com/a.png", true, true},
        {"HTTP://example.com", true, true},
        {"https://user:pw@example.com:8080/a%20b?q=1&r=/?#f", true, true},
        {"http://[2001:db8::1]:80/x", true, true},
        {"images/a.png", true, false},
        {"https:example.com", true, false},
        {"", false, false},
        {" https://example.com", false, false},
        {"https://example.com/a b", false, false},
        {"https://exämple.com", false, false},
        {"https://example.com/%zz", false, false},
        {"http://[1::2::3]/", false, false},
        {"\xff", false, false},
    };
    for (const auto& [text, valid, web] : cases) {
        auto url = URL::parse(text);
        EXPECT_EQ(url.has_value(), valid) << text;
        EXPECT_EQ(url && url->isWebAddress(), web) << text;
    }
}

TEST(URLTest, AnOriginIsThatOfAServer) {
    for (const auto& [text, origin] : {std::pair("HTTPS://u@Example.com/a", "https://example.com:443"),
                                       {"http://example.com:?q", "http://example.com:80"},
                                       {"http://[::1]:81", "http://::1:81"}}) {
        EXPECT_EQ(URL::parse(text)->origin(), origin);
    }
}

TEST(CaseFoldingTest, ComparesTextsInAnyScript) {
    struct {
        const char *a, *b;
        bool equal;
    } const cases[] = {
        {"maybe", "MAYBE", true}, {"STRASSE", "straße", true}, {"ΣΊΣΥΦΟΣ", "σίσυφος", true},
        {"É", "e\u0301", true},   {"нет", "НЕТ", true},        {"e", "é", false},
        {"\xff", "\xff", true},   {"\xff", "\xfe", false},     {"a\xff", "A\xff", false},
    };
    for (const auto& [a, b, equal] : cases) EXPECT_EQ(foldCase(a) == foldCase(b), equal) << a << " " << b;
}

TEST(ControlCharacters, AreWrittenAsEscapes) {
    const std::pair<std::string, std::string> cases[] = {
        {"plain, \\n \u00a0é日😀\u200d", "plain, \\n \u00a0é日😀\u200d"},
        {"a\r\n\tb\0"s, R"(a\r\n\tb\u0000)"},
        {"\x1b[2J\x7f\u0085\u009b", R"(\u001b[2J\u007f\u0085\u009b)"},
        {"\u2028\u2029\u202a\u202e", R"(\u2028\u2029\u202a\u202e)"},
        {"\u061c\u200e\u200f\u2066\u2069", R"(\u061c\u200e\u200f\u2066\u2069)"},
        {"\xff\xc0\x8a\xed\xa0\x80\xe2\x80", R"(\xff\xc0\x8a\xed\xa0\x80\xe2\x80)"},
    };
    for (const auto& [text, escaped] : cases) {
        EXPECT_EQ(withEscapedControlCharacters(text), escaped);
        EXPECT_EQ(hasControlCharacters(text), text != escaped) << escaped;
    }
}

TEST(URLRefusal, NamesWhatNobodyIsToOpen) {
    constexpr const char *control = "it holds control characters", *none = "it is no absolute URL",
                         *scheme = "its scheme is never opened", *opened = nullptr;
    const std::pair<std::string, const char*> cases[] = {
        {"https://example.com/a b?ü={|}", opened},
        {"mailto:a@example.com", opened},
        {"shop://", opened},
        {"web+shop.1:x", opened},
        {"view-source:https://example.com", opened},
        {"javascript:alert(1)", scheme},
        {"JavaScript://example.com", scheme},
        {"FILE:///etc/passwd", scheme},
        {"data:text/html,x", scheme},
        {"vbscript:x", scheme},
        {"intent://x#Intent;end", scheme},
        {"content://x", scheme},
        {"about:blank", scheme},
        {"blob:https://example.com/1", scheme},
        {"C:\\Windows", scheme},
        {"view-source:JAR:file:///a!/b", scheme},
        {"SSH://host", scheme},
        {"feed:ssh://host", scheme},
        {"view-source: javascript:x", none},
        {"", none},
        {":", none},
        {"//example.com", none},
        {"example.com/a:b", none},
        {"-h https://example.com", none},
        {"--a:b", none},
        {" https://example.com", none},
        {"java%73cript:x", none},
        {"https://example.com ", "it ends with a blank"},
        {"java\tscript:x", control},
        {"https://example.com\n", control},
        {"https://example.com/\0"s, control},
        {"https://example.com/\u202egpj.exe", control},
        {"https://example.com/\xff", control},
    };
    for (const auto& [text, reason] : cases)
        EXPECT_EQ(refusalToOpen(text, {"ssh"}).value_or(""), reason ? reason : "") << text;

    EXPECT_FALSE(refusalToOpen("Content://orders", {}, {"content"}));
    EXPECT_FALSE(refusalToOpen("ssh://orders", {"ssh"}, {"ssh"}));
    EXPECT_TRUE(refusalToOpen("view-source:content://orders", {}, {"content"}));
    EXPECT_TRUE(refusalToOpen("content://\n", {}, {"content"}));
    std::string deep;
    for (int level = 0; level < 1'000'000; ++level) deep += "jar:";
    EXPECT_TRUE(refusalToOpen(deep));
}
