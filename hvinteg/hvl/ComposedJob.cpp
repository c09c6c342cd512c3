#include "hvl/ComposedJob.h"

#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLFunction.h"

std::string composedJob(JNIHvlProgram& program, HVLFunction& last)
{
    last.GenerateHVL();
    std::string text;
    program.getHvlText(text);
    return text;
}
