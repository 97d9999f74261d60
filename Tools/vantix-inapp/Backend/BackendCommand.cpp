#include "Tools/vantix-inapp/Backend/BackendCommand.h"

#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Backend/Endings.h"
#include "Tools/vantix-inapp/Input/InputFile.h"
#include "Tools/vantix-inapp/Output/StandardOutput.h"

namespace vantix {

namespace {

BackendOptions optionsOf(const BackendArguments& arguments) {
    BackendOptions options = arguments.options;
    if (arguments.triggers) {
        readInputFile(*arguments.triggers);
        options.triggers = [file = *arguments.triggers](const std::string&) { return readInputFile(file); };
    }
    return options;
}

Dictionary addressOf(const Backend& backend) {
    Dictionary address{{"baseURL", backend.url()}};
    if (backend.pin()) address.set("sslKeyHash", *backend.pin());
    return {{"backend", address}};
}

}  // namespace

void runBackend(const BackendArguments& arguments) {
    BackendOptions options = optionsOf(arguments);
    sigset_t endings = blockEndings();
    Backend backend(options, printLine);
    printLine(toJSON(addressOf(backend)));
    requirePrinted();

    int signal = 0;
    sigwait(&endings, &signal);
}

}  // namespace vantix
