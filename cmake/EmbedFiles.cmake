# Writes a C++ source that holds the given text files; see vantix_embed.

set(entries "")
foreach(file IN LISTS FILES)
  get_filename_component(name "${file}" NAME)
  file(READ "${file}" text)
  string(APPEND entries "        {\"${name}\", R\"embedded(${text})embedded\"},\n")
endforeach()

file(WRITE "${OUTPUT}" "#include <map>
#include <string>
#include <string_view>

namespace vantix {

const std::string* ${FUNCTION}(std::string_view fileName);

const std::string* ${FUNCTION}(std::string_view fileName) {
    // Never destroyed: threads may ask until the very end of the process.
    static const auto& files = *new const std::map<std::string, std::string, std::less<>>{
${entries}    };
    auto file = files.find(fileName);
    return file == files.end() ? nullptr : &file->second;
}

}  // namespace vantix
")
