#include "Platform/Values/JSONText.h"

#include "Platform/Values/JSON.h"
#include "Platform/Values/UTF8.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <string>

namespace vantix {

namespace {

constexpr std::string_view space = " \t\n\r";
constexpr std::string_view digits = "0123456789";

/// Takes a text apart from its front.
class JSONChecker {
public:
    explicit JSONChecker(std::string_view text) : rest_(text) {}

    bool isOneValue() {
        skip(space);
        bool isValue = takeValue(0);
        skip(space);
        return isValue && rest_.empty();
    }

private:
    bool takeValue(int depth) {
        switch (rest_.empty() ? '\0' : rest_.front()) {
            case '{':
                return takeContainer('}', depth, &JSONChecker::takeMember);
            case '[':
                return takeContainer(']', depth, &JSONChecker::takeValue);
            case '"':
                return takeText();
            case 't':
                return takeWord("true");
            case 'f':
                return takeWord("false");
            case 'n':
                return takeWord("null");
            default:
                return takeNumber();
        }
    }

    /// The nesting is that of the parser, for which an empty container is none.
    bool takeContainer(char end, int depth, bool (JSONChecker::*takeElement)(int)) {
        take(rest_.front());
        skip(space);
        if (take(end)) return true;
        if (depth + 1 >= maximumNesting) return false;
        do {
            skip(space);
            if (!(this->*takeElement)(depth + 1)) return false;
            skip(space);
        } while (take(','));
        return take(end);
    }

    bool takeMember(int depth) {
        if (!takeText()) return false;
        skip(space);
        if (!take(':')) return false;
        skip(space);
        return takeValue(depth);
    }

    bool takeText() {
        if (!take('"')) return false;
        while (!take('"')) {
            bool isTaken = !rest_.empty() && (rest_.front() == '\\' ? takeEscape() : takeCharacter());
            if (!isTaken) return false;
        }
        return true;
    }

    bool takeCharacter() {
        if (static_cast<unsigned char>(rest_.front()) < 0x20) return false;
        std::size_t length = codePointLength(rest_);
        rest_.remove_prefix(length);
        return length > 0;
    }

    bool takeEscape() {
        take('\\');
        if (rest_.starts_with('u')) return takeCodePoint();
        return takeOneOf("\"\\/bfnrt");
    }

    /// One that needs two units is written as two escapes.
    bool takeCodePoint() {
        auto unit = takeUnit();
        if (!unit || (*unit >= 0xdc00 && *unit <= 0xdfff)) return false;
        if (*unit < 0xd800 || *unit > 0xdbff) return true;
        auto second = take('\\') ? takeUnit() : std::nullopt;
        return second && *second >= 0xdc00 && *second <= 0xdfff;
    }

    /// "uXXXX"
    std::optional<unsigned> takeUnit() {
        constexpr std::size_t length = 4;
        if (!take('u') || rest_.size() < length) return {};
        unsigned unit = 0;
        auto [end, error] = std::from_chars(rest_.data(), rest_.data() + length, unit, 16);
        if (error != std::errc() || end != rest_.data() + length) return {};
        rest_.remove_prefix(length);
        return unit;
    }

    bool takeNumber() {
        std::string_view number = rest_;
        take('-');
        if (!take('0') && skip(digits) == 0) return false;
        if (take('.') && skip(digits) == 0) return false;
        if (takeOneOf("eE")) {
            takeOneOf("+-");
            if (skip(digits) == 0) return false;
        }
        return isFinite(number.substr(0, number.size() - rest_.size()));
    }

    /// One that is too large for a double is no number, one that is too small is zero; the parser tells which.
    static bool isFinite(std::string_view number) {
        double value = 0;
        auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
        return error == std::errc() || parseJSON(number);
    }

    bool takeWord(std::string_view word) {
        if (!rest_.starts_with(word)) return false;
        rest_.remove_prefix(word.size());
        return true;
    }

    bool take(char character) { return takeOneOf({&character, 1}); }

    bool takeOneOf(std::string_view characters) {
        if (rest_.empty() || characters.find(rest_.front()) == std::string_view::npos) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::size_t skip(std::string_view characters) {
        std::size_t count = std::min(rest_.find_first_not_of(characters), rest_.size());
        rest_.remove_prefix(count);
        return count;
    }

    std::string_view rest_;
};

/// Of the text that begins with a quotation mark.
std::size_t lengthOfText(std::string_view text) {
    std::size_t at = 1;
    while (text[at] != '"') at += text[at] == '\\' ? 2 : 1;
    return at + 1;
}

std::size_t lengthOfContainer(std::string_view text) {
    std::size_t at = 0;
    for (int depth = 0;;) {
        at = text.find_first_of("\"{}[]", at);
        if (text[at] == '"') {
            at += lengthOfText(text.substr(at));
            continue;
        }
        depth += text[at] == '{' || text[at] == '[' ? 1 : -1;
        ++at;
        if (depth == 0) return at;
    }
}

std::size_t lengthOfValue(std::string_view text) {
    switch (text.front()) {
        case '"':
            return lengthOfText(text);
        case '{':
        case '[':
            return lengthOfContainer(text);
        default:
            return text.find_first_of(",:]} \t\n\r");
    }
}

/// A key without its quotation marks and escapes.
std::string plainKey(std::string_view written) {
    if (written.find('\\') != std::string_view::npos) return *parseJSON(written).value().text();
    return std::string(written.substr(1, written.size() - 2));
}

}  // namespace

bool isJSON(std::string_view text) { return JSONChecker(text).isOneValue(); }

bool isObject(std::string_view text) {
    auto first = text.find_first_not_of(" \t\n\r");
    return first != std::string_view::npos && text[first] == '{';
}

WrittenElements::WrittenElements(std::string_view container)
    : rest_(container.substr(container.find_first_of("[{") + 1)) {}

std::optional<std::string_view> WrittenElements::next() {
    rest_.remove_prefix(rest_.find_first_not_of(" \t\n\r,:"));
    if (rest_.front() == ']' || rest_.front() == '}') return {};
    auto element = rest_.substr(0, lengthOfValue(rest_));
    rest_.remove_prefix(element.size());
    return element;
}

std::optional<std::string> repeatedKey(std::string_view object) {
    if (!isObject(object)) return {};
    std::set<std::string, std::less<>> keys;
    for (WrittenElements members(object); auto written = members.next(); members.next()) {
        auto [key, isNew] = keys.insert(plainKey(*written));
        if (!isNew) return *key;
    }
    return {};
}

std::optional<std::string_view> memberAsWritten(std::string_view object, std::string_view key) {
    if (!isObject(object)) return {};
    std::optional<std::string_view> found;
    for (WrittenElements members(object); auto written = members.next();) {
        auto value = members.next();
        if (plainKey(*written) == key) found = value;
    }
    return found;
}

std::optional<std::string> objectAsWritten(std::string_view object, std::string_view key) {
    auto member = memberAsWritten(object, key);
    if (!member || !isObject(*member)) return {};
    return std::string(*member);
}

}  // namespace vantix
