#include "VantixQt/Windows/TranslatedWords.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>
#include <gtest/gtest.h>

using namespace vantix;

namespace {

struct Latin final : QTranslator {
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override {
        bool isKnown = context == std::string("vantix::qt::SpokenWords") && source == std::string("Close");
        return isKnown ? "Claude" : QString();
    }
};

}  // namespace

TEST(TranslatedWords, StandInTheLanguageOfTheApplication) {
    Latin latin;
    QCoreApplication::installTranslator(&latin);
    auto german = qt::translatedSpokenWords(QLocale("de_AT")), polish = qt::translatedSpokenWords(QLocale("pl_PL"));
    EXPECT_EQ(german.at("de").close, "Claude");
    EXPECT_EQ(german.at("de").image, "Bild");
    EXPECT_EQ(german.at("fr").close, "Fermer");
    EXPECT_EQ(polish.at("pl").close, "Claude");
    EXPECT_EQ(polish.at("pl").image, "image");
}
