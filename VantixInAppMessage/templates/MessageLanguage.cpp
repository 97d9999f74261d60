#include "VantixInAppMessage/templates/MessageLanguage.h"

#include "Platform/Values/CaseFolding.h"
#include "Platform/Values/UTF8.h"

#include <algorithm>
#include <vector>

namespace vantix {

namespace {

/// A script and the language that it is taken for.
struct Script {
    char32_t first;
    char32_t last;
    const char* language;
};

constexpr Script scripts[] = {
    {0x0590, 0x05FF, "he"}, {0x0600, 0x06FF, "ar"}, {0x3040, 0x30FF, "ja"},
    {0x1100, 0x11FF, "ko"}, {0xAC00, 0xD7AF, "ko"},
};

/// Letters of Persian, Urdu and others that Arabic does not have.
constexpr std::u32string_view neighboursOfArabic =
    U"\u067E\u0686\u0698\u06A9\u06AF\u06CC\u0679\u0688\u0691\u06BA\u06BE\u06C1\u06D2";

struct CommonWords {
    const char* language;
    /// Each between blanks.
    std::u32string_view words;
};

constexpr CommonWords commonWords[] = {
    {"en", U" the and you your of to is are for with this we our on it have not how what "},
    {"de", U" der die das und ist nicht mit für ein eine einen sie wir ihr ihre auf zu den im wie was uns "},
    {"fr", U" le la les et est des une un pour vous votre vos nous avec dans de du ce pas comment "},
    {"es", U" el la los las y es una un para con usted su sus tu por que en de del cómo qué "},
    {"it", U" il lo la gli le e è una un per con di del della che non tuo tua come cosa "},
    {"pt", U" o a os as e é uma um para com você seu sua não em que do da de como "},
    {"nl", U" de het een en is niet met voor je jouw u uw wij we van op hoe wat ons "},
};

bool isLatinLetter(char32_t point) {
    return (point >= U'a' && point <= U'z') || (point >= U'A' && point <= U'Z') || (point >= 0xC0 && point <= 0x24F);
}

std::optional<std::string> languageOfScript(const std::u32string& points) {
    const Script* found = nullptr;
    for (char32_t point : points) {
        if (neighboursOfArabic.find(point) != std::u32string_view::npos) return {};
        for (const Script& script : scripts) {
            if (point < script.first || point > script.last) continue;
            if (found && std::string_view(found->language) != script.language) return {};
            found = &script;
        }
    }
    return found ? std::optional<std::string>(found->language) : std::nullopt;
}

/// In lower case, without what stands between them.
std::vector<std::u32string> wordsOf(std::string_view texts) {
    std::vector<std::u32string> words(1);
    for (char32_t point : codePoints(foldCase(texts))) {
        if (isLatinLetter(point)) {
            words.back() += point;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    return words;
}

std::optional<std::string> languageOfWords(std::string_view texts) {
    constexpr std::ptrdiff_t fewest = 2;
    std::ptrdiff_t most = fewest - 1;
    std::optional<std::string> likeliest;
    auto words = wordsOf(texts);
    for (const CommonWords& common : commonWords) {
        auto isCommon = [&](const std::u32string& word) {
            return !word.empty() && common.words.find(U" " + word + U" ") != std::u32string_view::npos;
        };
        auto count = std::count_if(words.begin(), words.end(), isCommon);
        if (count == most) likeliest.reset();
        if (count > most) likeliest = common.language;
        most = std::max(most, count);
    }
    return likeliest;
}

}  // namespace

std::optional<std::string> messageLanguage(std::string_view allTexts) {
    constexpr std::size_t enoughToTell = 4096;
    std::string_view texts = allTexts.substr(0, enoughToTell);
    std::u32string points = codePoints(texts);
    auto isOfScript = [](char32_t point) { return point >= 0x0370; };
    bool isLatin = std::count_if(points.begin(), points.end(), isLatinLetter) >
                   std::count_if(points.begin(), points.end(), isOfScript);
    return isLatin ? languageOfWords(texts) : languageOfScript(points);
}

}  // namespace vantix
