#pragma once

#include "hvhost/base/CommonOptions.h"

namespace CLI {
class App;
}

/// Adds the commands of "hvhost tcm" to the application. `common` must outlive it.
void addTcmCommand(CLI::App& app, CommonOptions& common);
