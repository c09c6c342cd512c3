#include "support/JvmFixture.h"
