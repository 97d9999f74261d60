#include "Platform/Values/Value.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

Value nested(int depth) {
    Value value = 1;
    for (int level = 0; level < depth; ++level) value = List{value};
    return value;
}

}  // namespace

TEST(ValueTest, EqualityAndHash) {
    constexpr std::int64_t beyondDouble = (std::int64_t{1} << 53) + 1;
    auto opaque = Value::opaque(std::any(7));
    struct {
        Value a, b;
        bool equal;
    } const cases[] = {
        {1, 1.0, true},
        {0, -0.0, true},
        {beyondDouble, static_cast<double>(beyondDouble - 1), false},
        {INT64_MAX, 9223372036854775808.0, false},
        {1, true, false},
        {nullptr, false, false},
        {"1", 1, false},
        {List{1, "a"}, List{1.0, "a"}, true},
        {List{1, 2}, List{2, 1}, false},
        {Dictionary{{"a", 1}, {"b", 2}}, Dictionary{{"b", 2.0}, {"a", 1}}, true},
        {Dictionary{{"a", 1}}, Dictionary{{"a", 1}, {"b", 2}}, false},
        {opaque, opaque, true},
        {opaque, Value::opaque(std::any(7)), false},
        {nested(512), nested(512), true},
    };
    for (const auto& [a, b, equal] : cases) {
        EXPECT_EQ(a == b, equal);
        EXPECT_EQ(b == a, equal);
        if (equal && a.isHashable()) {
            EXPECT_EQ(hashValue(a), hashValue(b));
        }
    }
}

TEST(ValueTest, WhateverContainsAnOpaqueValueIsNotHashable) {
    auto opaque = Value::opaque(std::any(7));
    EXPECT_FALSE(opaque.isHashable());
    EXPECT_FALSE(Value(List{1, List{opaque}}).isHashable());
    EXPECT_FALSE(Value(Dictionary{{"a", opaque}}).isHashable());
    EXPECT_TRUE(Value(Dictionary{{"a", List{nullptr, true, 1, 1.5, "x"}}}).isHashable());
}

TEST(DictionaryTest, KeepsTheOrderOfFirstSettingAtAnySize) {
    for (int size : {3, 16, 17, 5000}) {
        Dictionary dictionary;
        for (int at = 0; at < size; ++at) dictionary.set("key" + std::to_string(at), at);
        dictionary.set("key1", "replaced");
        ASSERT_EQ(dictionary.size(), static_cast<std::size_t>(size));
        int at = 0;
        for (const auto& [key, value] : dictionary) {
            EXPECT_EQ(key, "key" + std::to_string(at));
            EXPECT_EQ(value, at == 1 ? Value("replaced") : Value(at));
            EXPECT_EQ(dictionary.find(key), &value);
            ++at;
        }
        EXPECT_EQ(dictionary.find("key" + std::to_string(size)), nullptr);
    }
}
