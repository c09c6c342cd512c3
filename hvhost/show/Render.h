#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/show/ShownOptions.h"

namespace CLI {
class App;
}

/// The options of render. Without an order file, all tables and charts of the document are shown.
struct RenderOptions
{
    std::string document; ///< a file, or "-"
    std::string order;
    ShownOptions shown;
    bool debug = false;
};
/// Shows a result document as text or as a page.
void render(const RenderOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addRenderCommand(CLI::App& app, CommonOptions& common);
