#include "CampaignCheck/Text/JSONWalk.h"

#include "Platform/Values/JSON.h"
#include "Platform/Values/JSONText.h"
#include "Platform/Values/UTF8.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace vantix {

namespace {

/// Where the bytes of a text stand in the outermost one.
class Origins {
public:
    /// The byte at `at`, and those after it that stand as close to each other, come from `origin`.
    void add(std::size_t at, std::size_t origin) {
        bool goesOn = !jumps_.empty() && jumps_.back().origin + (at - jumps_.back().at) == origin;
        if (!goesOn) jumps_.push_back({at, origin});
    }

    std::size_t of(std::size_t at) const {
        auto next = std::ranges::upper_bound(jumps_, at, {}, &Jump::at);
        const Jump& jump = *std::prev(next);
        return jump.origin + (at - jump.at);
    }

private:
    struct Jump {
        std::size_t at;
        std::size_t origin;
    };
    std::vector<Jump> jumps_;
};

/// A text that is read, and where it comes from.
struct Source {
    std::string_view text;
    /// Null: the text is the outermost one.
    const Origins* origins = nullptr;

    std::size_t offset(std::size_t at) const { return origins ? origins->of(at) : at; }
};

/// A text's bytes without quotation marks and escapes.
struct DecodedText {
    std::string text;
    Origins origins;

    void append(std::string_view bytes, std::size_t origin) {
        origins.add(text.size(), origin);
        text += bytes;
    }
};

std::string utf8(std::uint32_t character) {
    auto byte = [](std::uint32_t bits) { return static_cast<char>(bits); };
    auto next = [&](unsigned shift) { return byte(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) return {byte(character)};
    if (character < 0x800) return {byte(0xC0 | (character >> 6)), next(0)};
    if (character < 0x10000) return {byte(0xE0 | (character >> 12)), next(6), next(0)};
    return {byte(0xF0 | (character >> 18)), next(12), next(6), next(0)};
}

/// Thrown where a text stops being JSON; the offset is one of the outermost text.
struct Mistake {
    std::size_t offset;
};

class Walk {
public:
    /// Of the text that stands under the pointer.
    Walk(Source source, std::string pointer, const JSONVisitor& visitor)
        : source_(source), pointer_(std::move(pointer)), visitor_(visitor) {}

    void document() {
        const std::string pointer = pointer_;
        try {
            blanks();
            content(0);
            blanks();
            if (at_ != source_.text.size()) fail();
        } catch (const Mistake& mistake) {
            visitor_.mistake(pointer, mistake.offset);
        }
    }

private:
    void value(std::size_t key, int depth) {
        visitor_.value(pointer_, {key, source_.offset(at_)});
        content(depth);
    }

    void content(int depth) {
        if (depth > maximumNesting) fail();
        switch (next()) {
            case '{':
                return object(depth);
            case '[':
                return list(depth);
            case '"':
                return text();
            default:
                return scalar();
        }
    }

    void object(int depth) {
        take('{');
        members('}', [&] {
            std::size_t key = source_.offset(at_);
            std::string name = decodedText().text;
            blanks();
            take(':');
            blanks();
            step(pointerStep(name), key, depth);
        });
    }

    void list(int depth) {
        take('[');
        std::size_t index = 0;
        members(']', [&] { step(std::to_string(index++), source_.offset(at_), depth); });
    }

    template <typename Member>
    void members(char end, Member member) {
        blanks();
        if (next() == end) return take(end);
        while (true) {
            member();
            blanks();
            if (next() == end) return take(end);
            take(',');
            blanks();
        }
    }

    void step(const std::string& name, std::size_t key, int depth) {
        std::size_t length = pointer_.size();
        pointer_ += '/' + name;
        value(key, depth + 1);
        pointer_.resize(length);
    }

    void text() {
        if (!visitor_.holdsJSON(pointer_)) return readText(nullptr);
        DecodedText nested = decodedText();
        Walk({nested.text, &nested.origins}, pointer_, visitor_).document();
    }

    DecodedText decodedText() {
        DecodedText decoded;
        readText(&decoded);
        decoded.origins.add(decoded.text.size(), source_.offset(at_ - 1));
        return decoded;
    }

    void readText(DecodedText* decoded) {
        take('"');
        while (next() != '"') {
            std::size_t origin = source_.offset(at_);
            if (next() == '\\') {
                std::string character = escape();
                if (decoded) decoded->append(character, origin);
            } else {
                std::size_t length = plainLength();
                if (length == 0) fail();
                if (decoded) decoded->append(source_.text.substr(at_, length), origin);
                at_ += length;
            }
        }
        take('"');
    }

    /// How many bytes from here on stand for themselves: some letters, or one character; 0 where nothing may stand.
    std::size_t plainLength() const {
        auto isLetter = [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; };
        std::string_view rest = source_.text.substr(at_);
        auto letters = std::find_if_not(rest.begin(), rest.end(), isLetter) - rest.begin();
        if (letters > 0) return static_cast<std::size_t>(letters);
        bool isControl = static_cast<unsigned char>(rest.front()) < 0x20;
        constexpr std::size_t longestCharacter = 4;
        return isControl ? 0 : codePointLength(rest.substr(0, longestCharacter));
    }

    std::string escape() {
        take('\\');
        constexpr std::string_view letters = "\"\\/bfnrt";
        constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        if (auto found = letters.find(next()); found != std::string_view::npos) {
            ++at_;
            return {meanings[found]};
        }
        take('u');
        std::uint32_t character = fourDigits();
        bool isFirstHalf = character >= 0xD800 && character < 0xDC00;
        if (isFirstHalf) {
            take('\\');
            take('u');
            std::uint32_t second = fourDigits();
            if (second < 0xDC00 || second > 0xDFFF) fail();
            character = 0x10000 + ((character - 0xD800) << 10) + (second - 0xDC00);
        } else if (character >= 0xDC00 && character < 0xE000) {
            fail();
        }
        return utf8(character);
    }

    std::uint32_t fourDigits() {
        std::uint32_t number = 0;
        for (int digit = 0; digit < 4; ++digit, ++at_) {
            constexpr std::string_view digits = "0123456789abcdefABCDEF";
            auto value = digits.find(next());
            if (value == std::string_view::npos) fail();
            number = number * 16 + static_cast<std::uint32_t>(value < 16 ? value : value - 6);
        }
        return number;
    }

    /// A number or a word; the module's parser knows exactly which there are.
    void scalar() {
        std::size_t end = source_.text.find_first_of(" \t\r\n,]}:\"[{", at_);
        std::string_view token = source_.text.substr(at_, end == std::string_view::npos ? end : end - at_);
        if (token.empty() || !isJSON(token)) fail();
        at_ += token.size();
    }

    void blanks() { at_ = std::min(source_.text.find_first_not_of(" \t\r\n", at_), source_.text.size()); }

    char next() const {
        if (at_ >= source_.text.size()) fail();
        return source_.text[at_];
    }

    void take(char expected) {
        if (next() != expected) fail();
        ++at_;
    }

    [[noreturn]] void fail() const { throw Mistake{source_.offset(at_)}; }

    Source source_;
    std::string pointer_;
    const JSONVisitor& visitor_;
    std::size_t at_ = 0;
};

}  // namespace

std::string pointerStep(std::string_view key) {
    std::string step;
    for (char character : key) {
        if (character == '~')
            step += "~0";
        else if (character == '/')
            step += "~1";
        else
            step += character;
    }
    return step;
}

void walkJSON(std::string_view json, const JSONVisitor& visitor) { Walk({json}, "", visitor).document(); }

}  // namespace vantix
