#include "DeclarativeUI/SpokenWords.h"
#include "VantixInAppMessage/templates/MessageLanguage.h"

#include <gtest/gtest.h>

using namespace vantix;

TEST(MessageLanguage, IsTheOneOfScriptAndCommonWordsAndAbsentWhereUnsure) {
    const std::pair<const char*, const char*> table[] = {
        {"Save on the shoes of your dreams", "en"},
        {"DER HERBST IST DA, für alle", "de"},
        {"Les nouveautés sont là, pour vous.", "fr"},
        {"¿Qué tal la compra? Cuéntanos con una nota", "es"},
        {"Che ne pensi della nuova app? È per te", "it"},
        {"Você não vai acreditar", "pt"},
        {"Het is tijd voor de zee", "nl"},
        {"خصم 20 % على iPhone", "ar"},
        {"מה שלומך?", "he"},
        {"新しい靴", "ja"},
        {"새 신발", "ko"},
        {"Sale", "unsure"},
        {"la", "unsure"},
        {"de la", "unsure"},
        {"پاییز", "unsure"},
        {"新鞋", "unsure"},
        {"Привет", "unsure"},
        {"שלום مرحبا", "unsure"},
        {"20 % \xff", "unsure"},
    };
    for (const auto& [text, language] : table) EXPECT_EQ(messageLanguage(text).value_or("unsure"), language) << text;
}
