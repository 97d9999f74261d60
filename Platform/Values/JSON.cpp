#include "Platform/Values/JSON.h"

#include "Platform/Values/UTF8.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <new>
#include <utility>

namespace vantix {

namespace {

using simdjson::dom::element_type;

/// The implementations that simdjson would choose from are destroyed at exit, when threads may still read JSON. This
/// one is not.
[[maybe_unused]] const bool lastsToTheEnd = [] {
    simdjson::get_active_implementation() = new simdjson::builtin::implementation;
    return true;
}();

/// The parser has bounded the nesting, so recursion is safe.
Value convert(simdjson::dom::element element) {
    switch (element.type()) {
        case element_type::NULL_VALUE:
            return nullptr;
        case element_type::BOOL:
            return bool(element);
        case element_type::INT64:
            return int64_t(element);
        case element_type::UINT64:
            return static_cast<double>(uint64_t(element));
        case element_type::DOUBLE:
            return double(element);
        case element_type::STRING:
            return std::string(std::string_view(element));
        case element_type::ARRAY: {
            List list;
            for (simdjson::dom::element child : simdjson::dom::array(element)) list.push_back(convert(child));
            return list;
        }
        case element_type::OBJECT: {
            Dictionary dictionary;
            for (auto [key, child] : simdjson::dom::object(element)) dictionary.set(std::string(key), convert(child));
            return dictionary;
        }
    }
    return nullptr;
}

bool exceeds64Bits(std::string_view number) {
    std::int64_t value = 0;
    auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    return error == std::errc::result_out_of_range && end == number.data() + number.size();
}

/// The text with every integer that does not fit 64 bits written as a floating-point number.
std::string widenLongIntegers(std::string_view text) {
    constexpr std::string_view numeric = "+-.0123456789eE";
    std::string widened;
    bool insideText = false;
    for (std::size_t at = 0; at < text.size();) {
        bool beginsNumber = !insideText && (text[at] == '-' || (text[at] >= '0' && text[at] <= '9'));
        std::size_t length = beginsNumber ? std::min(text.find_first_not_of(numeric, at), text.size()) - at : 1;
        if (insideText && text[at] == '\\') length = std::min<std::size_t>(2, text.size() - at);
        if (text[at] == '"') insideText = !insideText;
        auto token = text.substr(at, length);
        widened += token;
        if (beginsNumber && exceeds64Bits(token)) widened += "e0";
        at += length;
    }
    return widened;
}

void writeText(std::string_view text, std::string& out) {
    constexpr std::string_view hexadecimal = "0123456789abcdef";
    out += '"';
    for (char character : text) {
        switch (character) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (static_cast<unsigned char>(character) >= 0x20) {
                    out += character;
                } else {
                    out += "\\u00";
                    out += hexadecimal[static_cast<unsigned char>(character) >> 4];
                    out += hexadecimal[character & 15];
                }
        }
    }
    out += '"';
}

void writeNumber(double number, std::string& out) {
    if (!std::isfinite(number)) {
        out += "null";
        return;
    }
    std::array<char, 32> buffer{};
    auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    out += digits;
    if (digits.find_first_of(".e") == std::string_view::npos) out += ".0";
}

void write(const Value& value, std::string& out);

void writeList(const List& list, std::string& out) {
    out += '[';
    const char* separator = "";
    for (const Value& element : list) {
        out += std::exchange(separator, ",");
        write(element, out);
    }
    out += ']';
}

void writeDictionary(const Dictionary& dictionary, std::string& out) {
    out += '{';
    const char* separator = "";
    for (const auto& [key, element] : dictionary) {
        out += std::exchange(separator, ",");
        writeText(repairUTF8(key), out);
        out += ':';
        write(element, out);
    }
    out += '}';
}

void write(const Value& value, std::string& out) {
    if (const bool* boolean = value.boolean()) {
        out += *boolean ? "true" : "false";
    } else if (const std::int64_t* integer = value.integer()) {
        out += std::to_string(*integer);
    } else if (const double* real = value.real()) {
        writeNumber(*real, out);
    } else if (const std::string* text = value.text()) {
        writeText(repairUTF8(*text), out);
    } else if (const List* list = value.list()) {
        writeList(*list, out);
    } else if (const Dictionary* dictionary = value.dictionary()) {
        writeDictionary(*dictionary, out);
    } else {
        out += "null";
    }
}

}  // namespace

Result<Value> parseJSON(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) return Error{"a byte-order mark stands before the JSON text"};
    simdjson::dom::parser parser;
    simdjson::dom::element document;
    auto parse = [&](std::string_view source) {
        if (auto error = parser.allocate(source.size(), maximumNesting)) return error;
        simdjson::padded_string padded(source);
        if (padded.size() != source.size()) return simdjson::MEMALLOC;
        return parser.parse(padded).get(document);
    };
    auto error = parse(text);
    if (error == simdjson::NUMBER_ERROR) error = parse(widenLongIntegers(text));
    // Which says nothing of the text.
    if (error == simdjson::MEMALLOC) throw std::bad_alloc();
    if (error) return Error{simdjson::error_message(error)};
    return convert(document);
}

std::string toJSON(const Value& value) {
    std::string out;
    write(value, out);
    return out;
}

std::string minifyJSON(std::string_view text) {
    std::string out(text.size() + simdjson::SIMDJSON_PADDING, '\0');
    std::size_t length = 0;
    if (simdjson::minify(text.data(), text.size(), out.data(), length)) return std::string(text);
    out.resize(length);
    return out;
}

}  // namespace vantix
