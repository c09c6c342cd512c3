#pragma once

#include <string>

class HVLFunction;
class JNIHvlProgram;

/// Generates the chain of builders that ends with `last` and returns the text of the job. Without a
/// complete chain the text has no statement that writes, and the engine refuses it. Passes on
/// JNIException.
std::string composedJob(JNIHvlProgram& program, HVLFunction& last);
