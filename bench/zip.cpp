// 200 files of a megabyte each are packed and unpacked, against zip(1) and unzip(1):
// bench_zip DIR. Skipped where these are not installed.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "Child.h"
#include "Measure.h"
#include "support/Paths.h"
#include "support/ZipReader.h"
#include "support/ZipWriter.h"

namespace {

namespace fs = std::filesystem;

constexpr int kRepetitions = 5;

// Rows of a table, as jobs write them: they pack to a fifth or so.
void writeFiles(const fs::path& directory)
{
    constexpr int kFiles = 200;
    constexpr std::size_t kSize = 1'000'000;
    fs::create_directories(directory);
    unsigned state = 1;
    for (int file = 0; file < kFiles; ++file) {
        std::string rows;
        while (rows.size() < kSize) {
            state = state * 1664525U + 1013904223U;
            rows += std::to_string(rows.size()) + ",group " + std::to_string(state >> 28) + ',' +
                    std::to_string((state >> 8) % 100003) + '.' + std::to_string(state >> 30) +
                    "5,2000-01-" + std::to_string(10 + (state >> 16) % 18) + '\n';
        }
        rows.resize(kSize);
        std::ofstream(directory / ("part" + std::to_string(file)), std::ios::binary) << rows;
    }
}

double timeOf(const std::string& what, bool succeeded, const bench::Stopwatch& watch)
{
    const double elapsed = watch.milliseconds();
    if (!succeeded) {
        std::fprintf(stderr, "bench_zip: %s failed\n", what.c_str());
        std::exit(1);
    }
    return elapsed;
}

/// A directory with the files, archives of both and a place to unpack to.
class Workshop
{
public:
    explicit Workshop(const fs::path& directory)
        : _files(directory / "zip_files"), _ourArchive(directory / "ours.zip"),
          _theirArchive(directory / "theirs.zip"), _target(directory / "unpacked")
    {
        writeFiles(_files);
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;
    ~Workshop()
    {
        std::error_code ignored;
        for (const fs::path& path : {_files, _ourArchive, _theirArchive, _target})
            fs::remove_all(path, ignored);
    }

    double pack() const
    {
        fs::remove(_ourArchive);
        const std::string archive = host(_ourArchive);
        const std::string files = host(_files);
        const bench::Stopwatch watch;
        return timeOf("ZipDir", ZipDir(archive, files), watch);
    }
    double packByTool() const
    {
        // zip(1) would update an archive that is there.
        fs::remove(_theirArchive);
        return bench::runChild({"/bin/sh", "-c", R"(cd "$0" && exec zip -q -r "$1" .)",
                                _files.string(), _theirArchive.string()})
            .wallMilliseconds;
    }
    double unpack() const
    {
        fs::remove_all(_target);
        const std::string archive = host(_theirArchive);
        const std::string target = host(_target);
        const bench::Stopwatch watch;
        return timeOf("UnzipToDir", UnzipToDir(archive, target), watch);
    }
    double unpackByTool() const
    {
        fs::remove_all(_target);
        return bench::runChild({"/bin/sh", "-c", R"(exec unzip -q "$0" -d "$1")",
                                _theirArchive.string(), _target.string()})
            .wallMilliseconds;
    }

private:
    static std::string host(const fs::path& path)
    {
        return FormalizeFilePath(path.string(), false);
    }

    fs::path _files;
    fs::path _ourArchive;
    fs::path _theirArchive;
    fs::path _target;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_zip DIR\n");
        return 2;
    }
    if (std::system("command -v zip >/dev/null && command -v unzip >/dev/null") != 0) {
        std::printf("zip: skipped, zip(1) or unzip(1) is not installed\n");
        return 0;
    }
    const Workshop workshop(argv[1]);
    const bool packs = bench::report(
        "zip, packing",
        bench::interleave(
            kRepetitions, [&] { return workshop.pack(); }, [&] { return workshop.packByTool(); }),
        "ms", 1.0);
    const bool unpacks = bench::report("zip, unpacking",
                                       bench::interleave(
                                           kRepetitions, [&] { return workshop.unpack(); },
                                           [&] { return workshop.unpackByTool(); }),
                                       "ms", 0.9);
    return packs && unpacks ? 0 : 1;
}
