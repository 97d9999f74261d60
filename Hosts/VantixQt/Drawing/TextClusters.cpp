#include "VantixQt/Drawing/TextClusters.h"

#include <QChar>

namespace vantix {

namespace {

constexpr QChar zeroWidthJoiner(0x200D);
constexpr QChar textVariation(0xFE0E);
constexpr QChar emojiVariation(0xFE0F);
constexpr QChar keycap(0x20E3);

/// Below the planes of pictures: the characters that are emoji without being told.
constexpr QStringView emojiOfTheFirstPlane =
    u"\u231A\u231B\u23E9\u23EA\u23EB\u23EC\u23F0\u23F3\u25FD\u25FE\u2614\u2615\u2648\u2649\u264A\u264B\u264C\u264D"
    u"\u264E"
    u"\u264F\u2650\u2651\u2652\u2653\u267F\u2693\u26A1\u26AA\u26AB\u26BD\u26BE\u26C4\u26C5\u26CE\u26D4\u26EA\u26F2"
    u"\u26F3"
    u"\u26F5\u26FA\u26FD\u2705\u270A\u270B\u2728\u274C\u274E\u2753\u2754\u2755\u2757\u2795\u2796\u2797\u27B0\u27BF"
    u"\u2B1B"
    u"\u2B1C\u2B50\u2B55";

char32_t firstCharacter(QStringView text) {
    if (text.size() > 1 && text[0].isHighSurrogate()) return QChar::surrogateToUcs4(text[0], text[1]);
    return text.isEmpty() ? 0 : text[0].unicode();
}

bool isWithin(char32_t character, char32_t first, char32_t last) { return character >= first && character <= last; }

bool isPictograph(char32_t character) { return isWithin(character, 0x1F000, 0x1FAFF); }

bool isRegionalIndicator(char32_t character) { return isWithin(character, 0x1F1E6, 0x1F1FF); }

/// Marks, joiners, skin tones, the letters of a regional flag's name, and the later parts of a composed syllable.
bool extends(char32_t character) {
    return QChar::isMark(character) || isWithin(character, 0x200C, 0x200D) || isWithin(character, 0x1F3FB, 0x1F3FF) ||
           isWithin(character, 0xE0020, 0xE007F) || isWithin(character, 0x1160, 0x11FF);
}

bool isJoined(QStringView before, char32_t after) {
    if (extends(after)) return true;
    if (isRegionalIndicator(after)) return isRegionalIndicator(firstCharacter(before)) && before.size() == 2;
    return before.back() == zeroWidthJoiner && isEmoji(before);
}

}  // namespace

bool forEachCharacter(QStringView text, const std::function<bool(char32_t)>& visit) {
    while (!text.isEmpty()) {
        char32_t character = firstCharacter(text);
        if (!visit(character)) return false;
        text = text.sliced(QChar::requiresSurrogates(character) ? 2 : 1);
    }
    return true;
}

void forEachCluster(QStringView text, const std::function<void(QStringView)>& visit) {
    // Qt's own boundaries part surrogates near Thai and Devanagari.
    QStringView cluster = text.first(0);
    forEachCharacter(text, [&](char32_t character) {
        if (!cluster.isEmpty() && !isJoined(cluster, character)) {
            visit(cluster);
            cluster = cluster.sliced(cluster.size());
        }
        cluster = {cluster.data(), cluster.size() + (QChar::requiresSurrogates(character) ? 2 : 1)};
        return true;
    });
    if (!cluster.isEmpty()) visit(cluster);
}

bool isEmoji(QStringView cluster) {
    if (cluster.contains(textVariation)) return false;
    return isPictograph(firstCharacter(cluster)) || cluster.contains(emojiVariation) || cluster.contains(keycap) ||
           (!cluster.isEmpty() && emojiOfTheFirstPlane.contains(cluster.front()));
}

bool isCJK(QStringView cluster) {
    char32_t character = firstCharacter(cluster);
    switch (QChar::script(character)) {
        case QChar::Script_Han:
        case QChar::Script_Hiragana:
        case QChar::Script_Katakana:
        case QChar::Script_Hangul:
        case QChar::Script_Bopomofo:
            return true;
        default:
            return isWithin(character, 0x3000, 0x303F) || isWithin(character, 0xFF00, 0xFFEF);
    }
}

}  // namespace vantix
