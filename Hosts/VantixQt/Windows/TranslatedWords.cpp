#include "VantixQt/Windows/TranslatedWords.h"

#include <QCoreApplication>
#include <QLocale>

#include <array>
#include <string>

namespace vantix::qt {

namespace {

constexpr const char* context = "vantix::qt::SpokenWords";

constexpr std::array words{
    &SpokenWords::close,      &SpokenWords::rating,     &SpokenWords::star,        &SpokenWords::heading,
    &SpokenWords::image,      &SpokenWords::button,     &SpokenWords::radioButton, &SpokenWords::checkBox,
    &SpokenWords::adjustable, &SpokenWords::dialog,     &SpokenWords::selected,    &SpokenWords::notSelected,
    &SpokenWords::checked,    &SpokenWords::notChecked, &SpokenWords::place,
};

}  // namespace

SpokenWordTable translatedSpokenWords(const QLocale& locale) {
    SpokenWordTable table = knownSpokenWords();
    const SpokenWords english = table.at("en");
    std::string language = locale.name().section('_', 0, 0).toStdString();
    SpokenWords& spoken = table.try_emplace(language, english).first->second;
    for (auto word : words) {
        const std::string& source = english.*word;
        std::string translated = QCoreApplication::translate(context, source.c_str()).toStdString();
        if (translated != source) spoken.*word = translated;
    }
    return table;
}

}  // namespace vantix::qt
