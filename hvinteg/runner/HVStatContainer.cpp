#include "runner/HVStatContainer.h"

// Defined here so that only this library has the type information of the class.
HVStatContainer::~HVStatContainer() = default;
