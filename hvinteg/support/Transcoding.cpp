#include "support/Transcoding.h"

#include "MultiByte.h"

std::string transcodeToUTF8(const char* text, void* converter)
{
    std::string result;
    if (text != nullptr)
        VEXAMBGenericToU8(text, result, converter);
    return result;
}

std::string transcodeFromUTF8(const char* text, void* converter)
{
    std::string result;
    if (text != nullptr)
        VEXAMBU8ToGeneric(text, result, converter);
    return result;
}
