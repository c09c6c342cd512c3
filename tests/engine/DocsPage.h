#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

/// Pages of documentation that are part of a contract, as tests compare them with the code.
namespace docspage {

inline std::string contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

using Row = std::vector<std::string>;

/// The rows of the tables in a page; a row `| a | b |` has the cells "a" and "b".
inline std::vector<Row> tableRows(const std::string& page)
{
    std::vector<Row> rows;
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("| "))
            continue;
        Row& row = rows.emplace_back();
        for (std::size_t at = 1; at < line.size();) {
            const std::size_t end = line.find('|', at);
            const std::string cell = line.substr(at, end - at);
            const std::size_t first = cell.find_first_not_of(' ');
            row.push_back(first == std::string::npos
                              ? ""
                              : cell.substr(first, cell.find_last_not_of(' ') + 1 - first));
            at = end == std::string::npos ? end : end + 1;
        }
    }
    return rows;
}

} // namespace docspage
