#include "runner/HVStatDataIterator.h"

// Defined here so that only this library has the type information of the class.
HVStatDataIterator::~HVStatDataIterator() = default;
