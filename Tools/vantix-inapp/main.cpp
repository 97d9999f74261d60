#include "Tools/vantix-inapp/CommandLine/CommandLine.h"

int main(int count, char** words) { return vantix::runCommandLine(count, words); }
