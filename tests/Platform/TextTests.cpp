#include "Platform/Values/CaseFolding.h"
#include "Platform/Values/URL.h"

#include <gtest/gtest.h>

using namespace vantix;

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
