#include "runner/HVStatExeListener.h"

// Here and not inline, so that the class has one type information, this library's.
HVStatExeListener::~HVStatExeListener() = default;
