#pragma once

#include "hvhost/base/CommonOptions.h"

namespace CLI {
class App;
}

/// Adds the commands of "hvhost map" to the application. `common` must outlive it.
void addMapCommand(CLI::App& app, CommonOptions& common);
