#include "Platform/Foundation/NSFatalError.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

void NSFatalError(std::string_view message)
{
    std::string line = "Fatal error: " + std::string(message);
    std::replace(line.begin(), line.end(), '\n', ' ');
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::abort();
}
