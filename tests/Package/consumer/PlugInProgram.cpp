#include <cstdio>
#include <dlfcn.h>

/// The same in a plug-in, whose program knows nothing of the package.
int main(int count, char** arguments) {
    void* plugIn = count == 3 ? dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (!plugIn) return std::fprintf(stderr, "%s\n", dlerror());
    auto show = reinterpret_cast<int (*)(const char*)>(dlsym(plugIn, "showFirstPopup"));
    return show && show(arguments[2]) > 3 ? 0 : 1;
}
