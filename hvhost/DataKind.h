#pragma once

#include <array>
#include <string>
#include <string_view>

/// What a data file holds.
enum class DataKind
{
    Csv,
    Sav,
    Hvbf
};

/// A word for a kind: in options, and as the extension of a file's name.
struct DataKindWord
{
    std::string_view word;
    DataKind kind;
};
inline constexpr std::array<DataKindWord, 4> kDataKinds{{{"csv", DataKind::Csv},
                                                         {"sav", DataKind::Sav},
                                                         {"hvbf", DataKind::Hvbf},
                                                         {"parquet", DataKind::Hvbf}}};

/// The kind that a word stands for, or else the extension of a path; a standard stream is csv.
/// Throws CommandFault (Usage), whose hint names the option for the word, if the command has one.
DataKind dataKind(const std::string& word, const std::string& path, const char* option);
