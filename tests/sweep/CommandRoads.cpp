#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>

#include "hvhost/cli/CommandLine.h"
#include "sweep/EngineFaults.h"
#include "sweep/Road.h"
#include "sweep/StandardFiles.h"

namespace fs = std::filesystem;

namespace {

/// The statuses of commands that end by themselves.
constexpr int kMostStatus = 5;
constexpr int kThrown = -1;

std::string contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> filesBelow(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        names.push_back(entry.path().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// One command of the host program, with what it prints and writes.
class CommandRoad : public Road
{
public:
    CommandRoad(std::vector<std::string> words, fs::path folder)
        : _words(std::move(words)), _folder(std::move(folder))
    {
        _engine.emplace(_faults);
    }
    RoadResult run(const FaultSwitch& faults) override
    {
        std::vector<char*> pointers;
        for (std::string& word : _words)
            pointers.push_back(word.data());
        int status = kThrown;
        {
            const StandardFiles streams(_folder / "stdout", _folder / "stderr");
            faults(true);
            try {
                status = runCommandLine(static_cast<int>(pointers.size()), pointers.data());
            } catch (...) {
            }
            faults(false);
        }
        return judge(status);
    }
    std::vector<std::string> filesLeft() const override
    {
        return filesBelow(fs::temp_directory_path());
    }
    void cleanUp() override
    {
        fs::remove_all(_folder / "out");
        fs::create_directories(_folder / "out");
    }
    EngineFaults& engineFaults() override { return _faults; }

private:
    /// A sealed file never has the same bytes twice.
    bool isSealed() const
    {
        return std::find(_words.begin(), _words.end(), "--out-password") != _words.end();
    }
    RoadResult judge(int status) const
    {
        RoadResult result;
        result.succeeded = status == 0;
        const std::string errors = contentOf(_folder / "stderr");
        static const std::regex form("(^|\n)hvhost: error: [^\n]+");
        const auto told = std::distance(std::sregex_iterator(errors.begin(), errors.end(), form),
                                        std::sregex_iterator());
        result.told = errors;
        if (result.succeeded) {
            result.output = contentOf(_folder / "stdout");
            for (const std::string& file : filesBelow(_folder / "out"))
                result.output += file + "\n" + (isSealed() ? "" : contentOf(file));
            if (!errors.empty())
                result.complaint = "success, but something is told";
        } else if (status == kThrown)
            result.complaint = "an exception left the command";
        else if (status < 0 || status > kMostStatus)
            result.complaint = "the exit status " + std::to_string(status);
        else if (told != 1)
            result.complaint = std::to_string(told) + " errors are told";
        else if (!filesBelow(_folder / "out").empty())
            result.complaint = "a failure that leaves " + filesBelow(_folder / "out").front();
        return result;
    }

    std::vector<std::string> _words;
    fs::path _folder;
    EngineFaults _faults;
    std::optional<FaultyEngine> _engine;
};

} // namespace

std::vector<NamedRoad> commandRoads(const std::string& data, const std::string& folder)
{
    struct Command
    {
        const char* name;
        std::vector<std::string> words; ///< IN/ precedes a sample, OUT/ what is written
    };
    const Command commands[] = {
        {"convert",
         {"convert", "IN/penguins.csv", "OUT/heavy.csv", "--where", "x.body_mass_g > 5500",
          "--derive", "ratio=x.beak_length_mm / x.beak_depth_mm"}},
        {"convert-sav", {"convert", "IN/weather.csv", "OUT/weather.sav", "--limit", "20"}},
        {"convert-sealed",
         {"convert", "IN/weather.csv", "OUT/weather.sav", "--limit", "5", "--out-password",
          "krill"}},
        {"convert-direct", {"convert", "IN/penguins.csv", "OUT/all.csv", "--direct"}},
        {"aggregate",
         {"aggregate", "IN/penguins.csv", "OUT/means.csv", "--by", "species", "--stat",
          "count,mean:body_mass_g,sum:flipper_length_mm", "--weight", "beak_depth_mm"}},
        {"aggregate-text", {"aggregate", "IN/penguins.csv", "--by", "species", "--stat", "count"}},
        {"describe",
         {"describe", "IN/weather.csv", "--date", "date", "--by", "weather", "-o", "OUT/w.html"}},
        {"score", {"score", "IN/penguins.pmml", "IN/penguins.csv", "-o", "OUT/scored.csv"}},
        {"render",
         {"render", "IN/islands.json", "--order", "IN/islands-order.json", "-o", "OUT/i.html"}},
        {"map-convert", {"map", "convert", "IN/islands.shp", "OUT/i.geojson", "--to", "3031"}},
        {"map-match",
         {"map", "match", "IN/islands.shp", "IN/colonies.csv", "--keys", "KEY=island"}},
    };
    std::vector<NamedRoad> roads;
    for (const Command& command : commands) {
        std::vector<std::string> words = {"hvhost"};
        for (std::string word : command.words) {
            if (word.starts_with("IN/"))
                word.replace(0, 2, data);
            if (word.starts_with("OUT/"))
                word.replace(0, 3, folder + "/out");
            words.push_back(word);
        }
        roads.push_back(
            {command.name, [=] { return std::make_unique<CommandRoad>(words, folder); }});
    }
    return roads;
}
