#include "VantixInAppMessage/API/Status.h"

#include "VantixCore/VantixLogger.h"

#include <stdexcept>

namespace vantix {

namespace {

constexpr LogSource log{"API/Status"};

template <typename T>
const T& required(const Dictionary& dictionary, const char* key, const T* (Value::*kind)() const) {
    const Value* value = dictionary.find(key);
    if (!value) throw std::invalid_argument(std::string("\"") + key + "\" is missing");
    const T* content = (value->*kind)();
    if (!content) throw std::invalid_argument(std::string("\"") + key + "\" is of a wrong kind");
    return *content;
}

}  // namespace

Status Status::generate(const Dictionary& dictionary) {
    Status status;
    try {
        status.success = required(dictionary, "success", &Value::boolean);
        status.code = required(dictionary, "code", &Value::integer);
        status.message = required(dictionary, "message", &Value::text);
    } catch (const std::invalid_argument& error) {
        log.error("init(from:)",
                  [&] { return std::string("Error encountered while decoding Status in Response: ") + error.what(); });
    }
    return status;
}

}  // namespace vantix
