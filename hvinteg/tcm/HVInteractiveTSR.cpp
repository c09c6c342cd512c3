#include "tcm/HVInteractiveTSR.h"

HVInteractiveTSR::HVInteractiveTSR() = default;

HVInteractiveTSR::~HVInteractiveTSR() = default;
