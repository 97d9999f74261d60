#include "Tools/vantix-inapp/Input/InputFile.h"

#include "Tools/vantix-inapp/Input/BadInput.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace vantix {

std::string readInputFile(const std::string& file) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(nullptr, std::fclose);
    if (file != "-") opened.reset(std::fopen(file.c_str(), "rb"));
    std::FILE* stream = file == "-" ? stdin : opened.get();

    std::string text;
    char block[64 * 1024];
    while (stream && !std::ferror(stream) && !std::feof(stream)) {
        text.append(block, std::fread(block, 1, sizeof block, stream));
    }
    if (!stream || std::ferror(stream)) {
        throw BadInput::at(file, 1, "cannot be read: " + std::string(std::strerror(errno)));
    }
    return text;
}

}  // namespace vantix
