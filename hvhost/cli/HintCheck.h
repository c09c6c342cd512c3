#pragma once

#include <string>

namespace CLI {
class App;
}

/// The parts of a hint, separated by semicolons, whose options exist: those of the command that the
/// line names, or of the command that the hint itself names, as in "hvhost convert --to sav".
std::string fittingHint(const std::string& hint, const CLI::App& app);
