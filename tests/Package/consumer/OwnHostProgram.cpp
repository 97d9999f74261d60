#include "OwnHost.h"

#include <cstdio>

int main(int count, char** arguments) {
    int elements = count == 2 ? showFirstPopup(arguments[1]) : 0;
    std::printf("%d elements\n", elements);
    return elements > 3 ? 0 : 1;
}
