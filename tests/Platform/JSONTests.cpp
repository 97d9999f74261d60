#include "Platform/Values/JSON.h"
#include "Platform/Values/JSONText.h"

#include <gtest/gtest.h>

using namespace vantix;

TEST(JSONTest, ReadsWhatJSONCanSayAndWritesItBack) {
    struct {
        const char *text, *written;
    } const cases[] = {
        {" true ", "true"},
        {"\"top\"", "\"top\""},
        {"9223372036854775807", "9223372036854775807"},
        {"18446744073709551615", "18446744073709551616.0"},
        {R"([-100000000000000000000, 9223372036854775807, "\"100000000000000000000"])",
         R"([-1e+20,9223372036854775807,"\"100000000000000000000"])"},
        {"[1, [2, {}], []]", "[1,[2,{}],[]]"},
        {R"({"b": 1, "a": {"c": null}})", R"({"b":1,"a":{"c":null}})"},
        {R"({"a": 1, "b": 2, "a": 3})", R"({"a":3,"b":2})"},
        {R"("\u00e9\n\"\\\u0000\ud83d\ude00")", "\"é\\n\\\"\\\\\\u0000😀\""},
    };
    for (const auto& [text, written] : cases) {
        auto value = parseJSON(text);
        ASSERT_TRUE(value) << text;
        EXPECT_EQ(toJSON(value.value()), written);
        EXPECT_TRUE(isJSON(text)) << text;
    }
}

TEST(JSONTest, RejectsWhatIsNoJSON) {
    const std::string deep = std::string(513, '[') + std::string(513, ']');
    for (const std::string& text : std::vector<std::string>{"",
                                                            "{",
                                                            "{'a':1}",
                                                            "[1,]",
                                                            "nul",
                                                            "\"\\ud800\"",
                                                            "\xEF\xBB\xBF{}",
                                                            "\"\xff\"",
                                                            "{} {}",
                                                            "01",
                                                            "NaN",
                                                            deep,
                                                            std::string("{}\0", 3),
                                                            "\"\\udc00\"",
                                                            "\"\\u00g0\"",
                                                            "\"\x01\"",
                                                            "\"\\x\"",
                                                            "\"a",
                                                            "1.",
                                                            "-",
                                                            "1e",
                                                            "1e400",
                                                            "[1 2]",
                                                            "{\"a\" 1}",
                                                            "{1:2}",
                                                            "[}"}) {
        EXPECT_FALSE(isJSON(text)) << text;
        auto value = parseJSON(text);
        ASSERT_FALSE(value) << text;
        EXPECT_FALSE(value.error().localizedDescription.empty());
    }
    for (const std::string& text : {std::string(512, '[') + std::string(512, ']'), std::string("1e-400"),
                                    "0." + std::string(400, '0') + "1", std::string("\"\\ud83d\\ude00\"")}) {
        EXPECT_TRUE(parseJSON(text) && isJSON(text)) << text;
    }
}

TEST(JSONTest, WritesBytesThatAreNoUTF8AsReplacementCharacters) {
    EXPECT_EQ(toJSON(Value("a\xff\xc3(")), "\"a\uFFFD\uFFFD(\"");
}

TEST(JSONTest, FindsAKeyThatIsWrittenTwice) {
    EXPECT_EQ(repeatedKey(R"({"a": {"b": 1}, "b": 2})"), std::nullopt);
    EXPECT_EQ(repeatedKey(R"({"a": [1], "b": 2, "\u0061": 3})"), "a");
    EXPECT_EQ(repeatedKey("[]"), std::nullopt);
}

TEST(JSONTest, MinifyKeepsKeysAndNumbersAsWritten) {
    EXPECT_EQ(minifyJSON("{ \"b\" : 1.50 ,\n \"a\": [ 1e2, \"x y\" ] }"), R"({"b":1.50,"a":[1e2,"x y"]})");
}

TEST(JSONTest, GivesANestedObjectAsItIsWritten) {
    struct {
        const char *object, *written;
    } const cases[] = {
        {R"({"a": {"b" : 1.50, "b": 1e2 } , "c": 0})", R"({"b" : 1.50, "b": 1e2 })"},
        {R"({"x": {"a": {"inner": 1}}, "a": {}})", "{}"},
        {R"({"x": "\"a\": {}", "\u0061": {"n": 100000000000000000000}})", R"({"n": 100000000000000000000})"},
        {R"({"a": {"b": "}\"{"}})", R"({"b": "}\"{"})"},
        {R"({"a": {"first": 1}, "a": {"last": 1}})", R"({"last": 1})"},
        {R"({"a": {"first": 1}, "a": "text"})", nullptr},
        {R"({"a": "{}"})", nullptr},
    };
    for (const auto& [object, written] : cases) {
        EXPECT_EQ(objectAsWritten(object, "a"), written ? std::optional<std::string>(written) : std::nullopt) << object;
    }
}

TEST(JSONTest, GivesTheElementsOfAContainerAsTheyAreWritten) {
    for (const char* text :
         {R"([ 1 ,"]\"" , {"a":[2]},[ ], -1e2 ])", R"({"1" :"]\"","{}": [[]] , "\\" : null})", "[ ]"}) {
        std::string written;
        for (WrittenElements elements(text); auto element = elements.next();) (written += *element) += ';';
        std::erase_if(written, [](char character) { return character == ' '; });
        EXPECT_EQ(written, text[0] == '{'   ? R"("1";"]\"";"{}";[[]];"\\";null;)"
                           : text[2] == '1' ? R"(1;"]\"";{"a":[2]};[];-1e2;)"
                                            : "");
    }
}
