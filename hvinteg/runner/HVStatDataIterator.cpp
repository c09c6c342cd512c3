#include "runner/HVStatDataIterator.h"

// Here and not inline, so that the class has one type information, this library's.
HVStatDataIterator::~HVStatDataIterator() = default;
