#include "support/EmptyFile.h"

#include <cstdio>

#include "ExtNameStr.h"

void createEmpty(const ExtNameStr& path)
{
    if (std::FILE* const file = ExtNameStr::fopen(path, "w"))
        std::fclose(file);
}
