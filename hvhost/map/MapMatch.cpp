#include "hvhost/map/MapMatch.h"

#include <iostream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "CFMetaData.h"
#include "geo/HVInteractiveSTEM.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/FieldTypes.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/KnownDataset.h"
#include "hvhost/input/NameLookup.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvhost/map/MapFields.h"
#include "hvhost/map/MapSession.h"
#include "hvhost/show/ResultTable.h"
#include "hvhost/show/ResultWords.h"
#include "hvhost/show/TextTable.h"
#include "support/Transcoding.h"

namespace {

using Json = nlohmann::ordered_json;
using Rows = std::vector<std::vector<std::string>>;

/// The keys of one side, and its combinations of key values without a partner on the other side.
struct Side
{
    const char* name;
    const char* countKey;           ///< of the text with the count
    const char* cutKey;             ///< of the text with the count and how many are shown
    std::vector<std::string> keys;  ///< names in UTF-8
    std::vector<std::string> names; ///< the same in the host's encoding
    Rows unmatched;
    std::size_t count = 0; ///< of the unmatched combinations, also of those that are not shown

    void cut(int limit)
    {
        count = unmatched.size();
        if (limit >= 0 && count > static_cast<std::size_t>(limit))
            unmatched.resize(static_cast<std::size_t>(limit));
    }
    bool hasMore() const { return count > unmatched.size(); }
};

/// Adds MAPFIELD=VARIABLE, or one name for both.
void addKey(const std::string& text, const Dataset& dataset, Side& map, Side& data)
{
    const std::size_t equals = text.find('=');
    const std::string field = text.substr(0, equals);
    const std::string variable = equals == std::string::npos ? text : text.substr(equals + 1);
    if (field.empty() || variable.empty())
        throw CommandFault(ExitStatus::Usage, "--keys " + text + ": a name is missing",
                           "for example --keys NAME=town,ID=district");
    const int column = dataset.columnOf(variable, "--keys " + text);
    map.keys.push_back(field);
    data.keys.push_back(dataset.nameOf(column));
    data.names.push_back(dataset.source().GetVariable(column).GetName());
}

/// Numbers match numbers, and texts match texts.
void refuseTypes(const std::string& option, CFField::StorageType ofMap, const Dataset& dataset,
                 const std::string& variable)
{
    const CFField::StorageType ofData = dataset.storageOf(dataset.columnOf(variable, option));
    if (areComparable(ofMap, ofData))
        return;
    const std::string problem =
        option + ": it is " + nounOf(ofMap) + " in the map and " + nounOf(ofData) + " in the data";
    if (ofData == CFField::String)
        throw TextFieldFault(variable, problem);
    throw CommandFault(ExitStatus::Usage, problem);
}

/// Replaces the user's names of the map's fields by the map's own. `options` are the texts that
/// contain them.
void findFields(MapSession& session, const MapInput& map, const std::vector<std::string>& options,
                const Dataset& dataset, Side& side, const Side& data)
{
    const CFMetaData model(mapDataModel(session, map));
    std::vector<std::string> known;
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        known.push_back(model.GetField(i)->GetName());
    for (std::size_t i = 0; i < options.size(); ++i) {
        const std::string option = "--keys " + options[i];
        const std::size_t place =
            placeOfName(side.keys[i], known, {option, "field", "hvhost map info lists the fields"});
        side.keys[i] = known[place];
        refuseTypes(option, model.GetField(place)->GetStorage(), dataset, data.keys[i]);
        side.names.push_back(transcodeFromUTF8(side.keys[i].c_str(), nullptr));
    }
}

/// In a table of both sides, the first column names the side.
ResultTable tableOf(const std::vector<const Side*>& sides)
{
    ResultTable table;
    const bool isJoint = sides.size() > 1;
    if (isJoint)
        table.columns.push_back({"side", CFField::String});
    for (const std::string& key : sides.front()->keys)
        table.columns.push_back({key, CFField::String});
    for (const Side* side : sides)
        for (const std::vector<std::string>& values : side->unmatched) {
            ResultTable::Row row(values.begin(), values.end());
            if (isJoint)
                row.insert(row.begin(), side->name);
            table.rows.push_back(std::move(row));
        }
    return table;
}

/// Prints the number of unmatched combinations and a list of them.
void printText(const Side& side, const TableLook& look, std::ostream& out)
{
    out << sentence(side.hasMore() ? side.cutKey : side.countKey,
                    {std::to_string(side.count), std::to_string(side.unmatched.size())})
        << '\n';
    if (!side.unmatched.empty())
        printTable(tableOf({&side}), look, out);
}

Json jsonOf(const Side& side)
{
    return {{"keys", side.keys},
            {"count", side.count},
            {"unmatched", side.unmatched},
            {"more", side.hasMore()}};
}

/// The whole result. For csv only the lists, one below the other.
std::string shown(int matched, const Side& map, const Side& data, const TableLook& look)
{
    std::ostringstream out;
    if (look.form == "json") {
        const Json document{
            {"schema", 1}, {"matched", matched}, {"map", jsonOf(map)}, {"data", jsonOf(data)}};
        out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    } else if (look.form == "csv") {
        printTable(tableOf({&map, &data}), look, out);
    } else {
        out << sentence("in both: ^1", {std::to_string(matched)}) << '\n';
        printText(map, look, out);
        printText(data, look, out);
    }
    return out.str();
}

} // namespace

void mapMatch(const MapMatchOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const TableLook look{options.format, textForm(options.text, options.format)};
    const MapInput map(options.map, true);
    const InputFile input(options.input, FileOptions::None, watch);
    Side ofMap{"map", "only in the map: ^1", "only in the map: ^1, of which ^2 are shown", {}, {},
               {}};
    Side ofData{
        "data", "only in the data: ^1", "only in the data: ^1, of which ^2 are shown", {}, {}, {}};
    for (const std::string& key : options.keys)
        addKey(key, *input.dataset(), ofMap, ofData);
    MapSession session("match", common, watch);
    session.host().introduce(input);
    explainingTexts(
        input, [&] { findFields(session, map, options.keys, *input.dataset(), ofMap, ofData); });
    const KnownDataset known(*input.dataset());
    JobOrigin origin = map.origin();
    for (const JobOrigin::File& file : input.origin().inputs)
        origin.inputs.push_back(file);
    constexpr int kAll = -1;
    int matched = 0;
    session.perform(
        [&](HVInteractiveSTEM& maps) {
            return map.isService()
                       ? maps.matchServiceKeys(map.location(), *map.layer(), ofMap.names,
                                               ofMap.unmatched, known.id(), "", ofData.names,
                                               ofData.unmatched, kAll, matched)
                       : maps.matchShapeKeys(map.location(), ofMap.names, ofMap.unmatched,
                                             known.id(), "", ofData.names, ofData.unmatched, kAll,
                                             matched);
        },
        map.name(), origin);
    ofMap.cut(options.limit);
    ofData.cut(options.limit);
    printToStandardOutput(shown(matched, ofMap, ofData, look), watch);
    input.finish();
    session.host().finish();
}
