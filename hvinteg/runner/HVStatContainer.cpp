#include "runner/HVStatContainer.h"

// Here and not inline, so that the class has one type information, this library's.
HVStatContainer::~HVStatContainer() = default;
