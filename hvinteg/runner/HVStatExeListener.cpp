#include "runner/HVStatExeListener.h"

// Defined here so that only this library has the type information of the class.
HVStatExeListener::~HVStatExeListener() = default;
