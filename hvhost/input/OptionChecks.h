#pragma once

#include <CLI/CLI.hpp>

/// Validators for options. A value that they reject is a usage error that names the option.

/// Rejects an empty text, which a shell makes of an unset variable.
CLI::Validator notEmpty();
/// Rejects a standard stream.
CLI::Validator noStream();
/// Accepts whole numbers from `minimum` on.
CLI::Validator wholeNumberFrom(long long minimum);
/// Accepts finite numbers above 0.
CLI::Validator positiveNumber();
/// A whole number from 0 up, or a percentage from 0% to 100%.
CLI::Validator sampleSize();
/// Accepts numbers from 0 to 100.
CLI::Validator percentNumber();
/// Accepts a separator character, or a word for one.
CLI::Validator separatorWordCheck();
/// Accepts a word for a kind of data file, in any letter case.
CLI::Validator inputKindWord();
/// The same for a file that is written.
CLI::Validator outputKindWord();
/// Accepts a character, in ASCII.
CLI::Validator oneCharacter();
