#pragma once

#include <jni.h>

#include <string>

namespace bench {

/// The text of a program of `functions` functions, with the calls that the builders make: each
/// method is looked up for its call, each object is kept under a global reference to the end.
std::string composeByHand(JNIEnv* env, int functions);

} // namespace bench
