#include "engine/EngineFixture.h"
