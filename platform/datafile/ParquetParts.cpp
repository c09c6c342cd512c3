#include "datafile/ParquetParts.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include <glob.h>

#include "base/ListText.h"
#include "datafile/CsvValue.h"
#include "datafile/Fault.h"
#include "datafile/FaultIds.h"
#include "datafile/InputFile.h"
#include "datafile/SqlQuoting.h"

namespace datafile {
namespace {

namespace fs = std::filesystem;

using Keys = std::vector<std::pair<std::string, std::string>>; ///< names and values

constexpr const char* kWildcards = "*?[";

bool isHidden(std::string_view name)
{
    return name.starts_with('.') || name.starts_with('_');
}

/// Calls `take` for each component of a relative path.
template <class Take>
void eachComponent(std::string_view path, Take take)
{
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        take(path.substr(0, end), end == path.size());
        path.remove_prefix(std::min(end + 1, path.size()));
    }
}

/// Adds the files in a folder and below it. Does not follow links to folders, which may be circles.
void addFiles(const std::string& folder, std::vector<std::string>& files)
{
    for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
        const bool isFolder = entry->is_directory();
        if (isHidden(entry->path().filename().string())) {
            if (isFolder)
                entry.disable_recursion_pending();
        } else if (!isFolder) {
            files.push_back(entry->path().string());
        }
    }
}

struct GlobFreer
{
    void operator()(glob_t* found) const { globfree(found); }
};

/// Whether a component is hidden that the pattern does not name so.
bool isHiddenMatch(std::string_view match, std::string_view pattern)
{
    std::vector<std::string_view> wanted;
    eachComponent(pattern, [&](std::string_view name, bool) { wanted.push_back(name); });
    bool isHiddenPart = false;
    std::size_t place = 0;
    eachComponent(match, [&](std::string_view name, bool) {
        const bool isNamed = place < wanted.size() && isHidden(wanted[place]);
        isHiddenPart = isHiddenPart || (isHidden(name) && !isNamed);
        ++place;
    });
    return isHiddenPart;
}

/// Adds the files that match a pattern, and those in the folders that match it.
void addMatches(const ParquetParts& parts, std::vector<std::string>& files)
{
    glob_t found{};
    const std::unique_ptr<glob_t, GlobFreer> owner(&found);
    const int failure = glob(parts.path.c_str(), GLOB_NOSORT, nullptr, &found);
    if (failure != 0 && failure != GLOB_NOMATCH)
        throw std::system_error(std::make_error_code(std::errc::io_error));
    for (std::size_t i = 0; i < found.gl_pathc; ++i) {
        const std::string match = found.gl_pathv[i];
        if (isHiddenMatch(parts.nameOf(match), parts.nameOf(parts.path)))
            continue;
        if (fs::is_directory(match))
            addFiles(match, files);
        else
            files.push_back(match);
    }
}

Keys keysOf(const ParquetParts& parts, const std::string& file)
{
    Keys keys;
    eachComponent(parts.nameOf(file), [&](std::string_view name, bool isLast) {
        const std::size_t equals = name.find('=');
        if (!isLast && equals != std::string_view::npos && equals > 0)
            keys.emplace_back(name.substr(0, equals), name.substr(equals + 1));
    });
    return keys;
}

CFField::StorageType storageOf(CsvKind kind)
{
    // Other texts may be encoded in the names of folders.
    const bool isPlain = kind == CsvKind::Integer || kind == CsvKind::Real || kind == CsvKind::Date;
    return isPlain ? storageOfKind(kind) : CFField::String;
}

std::string namesOf(const Keys& keys)
{
    std::vector<std::string> names;
    for (const auto& [name, value] : keys)
        names.push_back("\"" + name + "\"");
    return names.empty() ? "no fields" : "the fields " + base::joined(names, ", ");
}

bool haveSameNames(const Keys& left, const Keys& right)
{
    return std::ranges::equal(left, right, {}, &Keys::value_type::first, &Keys::value_type::first);
}

/// Finds the fields that the folders give. Their values have the types of values in a CSV file.
void findKeys(ParquetParts& parts, const std::string& step)
{
    const Keys first = keysOf(parts, parts.files.front());
    std::vector<CsvKind> kinds(first.size(), CsvKind::Missing);
    for (const std::string& file : parts.files) {
        const Keys keys = keysOf(parts, file);
        if (!haveSameNames(first, keys))
            throw Fault(faults::kPartsDiffer,
                        {.step = step,
                         .file = parts.path,
                         .what = "the folders of " + parts.nameOf(file) + " give " + namesOf(keys) +
                                 ", and those of " + parts.nameOf(parts.files.front()) + " " +
                                 namesOf(first)});
        for (std::size_t i = 0; i < keys.size(); ++i)
            if (keys[i].second != kMissingKey)
                kinds[i] = datafile::widened(kinds[i], datafile::kindOf({keys[i].second, false}));
    }
    for (std::size_t i = 0; i < first.size(); ++i)
        parts.keys.push_back({first[i].first, storageOf(kinds[i])});
}

/// The path up to the component with the first wildcard.
std::string baseOfPattern(const std::string& path)
{
    return path.substr(0, path.rfind('/', path.find_first_of(kWildcards)) + 1);
}

void findFiles(ParquetParts& parts, const std::string& step)
try {
    if (fs::is_directory(parts.path)) {
        parts.base = parts.path + "/";
        addFiles(parts.path, parts.files);
    } else {
        parts.base = baseOfPattern(parts.path);
        addMatches(parts, parts.files);
    }
} catch (const std::system_error& error) {
    throw Fault(faults::kFileUnreadable,
                {.step = step,
                 .file = parts.path,
                 .what = "the folder cannot be read: " + error.code().message()});
}

} // namespace

bool hasParts(const std::string& path)
{
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    return type == fs::file_type::directory ||
           (type == fs::file_type::not_found &&
            path.find_first_of(kWildcards) != std::string::npos);
}

ParquetParts parquetParts(const std::string& path, const std::string& step)
{
    if (!hasParts(path))
        return {path, path.substr(0, path.rfind('/') + 1), {path}, {}};
    ParquetParts parts{path, {}, {}, {}};
    while (parts.path.size() > 1 && parts.path.ends_with('/'))
        parts.path.pop_back();
    findFiles(parts, step);
    if (parts.files.empty())
        throw Fault(faults::kFileMissing,
                    {.step = step,
                     .file = path,
                     .what = fs::is_directory(path) ? "there are no data files in this folder"
                                                    : "no file has a name of this form"});
    std::ranges::sort(parts.files);
    findKeys(parts, step);
    return parts;
}

void checkParquetInput(const std::string& path, const std::string& step)
{
    const ParquetParts parts = parquetParts(path, step);
    for (const std::string& file : parts.files)
        try {
            checkInputFile(file, step);
        } catch (const Fault& fault) {
            if (parts.isFile())
                throw;
            FaultParts known = fault.parts();
            known.file = path;
            known.what = parts.nameOf(file) + ": " + known.what;
            throw Fault(fault.id(), std::move(known), fault.detail());
        }
}

std::string fileArgument(const ParquetParts& parts)
{
    if (parts.isFile())
        return quotedLiteral(literalPath(parts.path));
    std::vector<std::string> all;
    all.reserve(parts.files.size());
    for (const std::string& file : parts.files)
        all.push_back(quotedLiteral(literalPath(file)));
    return "[" + base::joined(all, ", ") + "]";
}

} // namespace datafile
