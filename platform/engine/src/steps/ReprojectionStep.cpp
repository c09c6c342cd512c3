#include <memory>

#include "ErrorIds.h"
#include "JobError.h"
#include "maps/GeographyLibrary.h"
#include "maps/LayerSource.h"
#include "maps/Reprojection.h"
#include "runtime/Reporter.h"
#include "runtime/TextFunctions.h"
#include "runtime/ThreadBorder.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {
namespace {

/// A reprojection that is registered for statements during its lifetime.
class KnownReprojection
{
public:
    KnownReprojection(std::unique_ptr<Reprojection> reprojection, TextFunctions& registry,
                      std::string field)
        : _reprojection(std::move(reprojection)), _registry(registry), _field(std::move(field)),
          _id(_registry.add(*_reprojection))
    {
    }
    KnownReprojection(const KnownReprojection&) = delete;
    KnownReprojection& operator=(const KnownReprojection&) = delete;
    ~KnownReprojection()
    {
        _registry.remove(_id);
        border::takeOver(_reprojection.get());
    }

    Reprojection& reprojection() const { return *_reprojection; }
    const std::string& field() const { return _field; }
    NewColumn column(const Dialect& dialect) const
    {
        const std::string name = dialect.name(_field);
        return {name, TextFunctions::call(_id, name)};
    }

private:
    std::unique_ptr<Reprojection> _reprojection;
    TextFunctions& _registry;
    std::string _field;
    std::int64_t _id;
};
using Moves = std::vector<std::shared_ptr<KnownReprojection>>;

/// Reports shapes that do not exist in the new system. They become missing.
class LossCheck : public SourceCheck
{
public:
    LossCheck(Moves moves, std::string step) : _moves(std::move(moves)), _step(std::move(step)) {}
    void start(Cancellation&, const Progress&) override
    {
        for (const auto& move : _moves)
            move->reprojection().takeLost();
    }
    void finish(Session&, Reporter& reporter) override
    {
        for (const auto& move : _moves)
            if (const std::uint64_t lost = move->reprojection().takeLost())
                reporter.message(errors::kShapesLost,
                                 {.step = _step,
                                  .field = move->field(),
                                  .what = std::to_string(lost) +
                                          (lost == 1 ? " shape" : " shapes") + " of the field \"" +
                                          move->field() +
                                          "\" have no place in the new coordinate system and are "
                                          "missing there"});
    }
    void abandon(const StatementFault&) override {}

private:
    Moves _moves;
    std::string _step;
};

/// The system that an object names by name, wkid or both; the name takes precedence. Empty if it
/// names none.
std::optional<maps::CoordinateSystem> systemIn(const Settings& settings)
{
    const std::string name = settings.text("csName").value_or("");
    const auto wkid = settings.integer("wkid");
    if (name.empty() && !wkid)
        return std::nullopt;
    if (wkid && (*wkid < INT32_MIN || *wkid > INT32_MAX))
        settings.refuse("wkid", "is " + std::to_string(*wkid) + ", which is out of range");
    if (name.empty())
        return maps::geography().systemOf(static_cast<int>(*wkid));
    try {
        return maps::geography().systemNamed(name);
    } catch (const maps::GeographyError&) {
        // An unknown name is an error unless there is a wkid.
        if (!wkid)
            throw;
        return maps::geography().systemOf(static_cast<int>(*wkid));
    }
}

/// The system in the data model.
std::optional<maps::CoordinateSystem> systemOf(const CFGeo& geo)
{
    if (geo.GetWkid() > 0 || !geo.GetWkt().empty())
        return maps::CoordinateSystem{geo.GetWkid(), geo.GetCsname(), geo.GetWkt(),
                                      geo.IsProjected()};
    if (geo.GetCsname().empty())
        return std::nullopt;
    return maps::geography().systemNamed(geo.GetCsname());
}

maps::CoordinateSystem sourceSystem(const StepCall& call, const Settings& entry,
                                    const CFField& field)
{
    std::optional<maps::CoordinateSystem> system;
    if (entry.has("inSR")) {
        const Settings source = entry.neededObject("inSR");
        // If the file itself defines the system, no catalogue has it.
        if (source.text("csName").value_or("") != field.GetGeo()->GetCsname() ||
            field.GetGeo()->GetWkt().empty())
            system = systemIn(source);
        source.integer("wkid");
        source.reportOthers(call.context.message);
    }
    if (!system)
        system = systemOf(*field.GetGeo());
    if (!system)
        throw JobError(errors::kNoSystem,
                       {.step = call.name,
                        .what = "the coordinate system of the field \"" + field.GetName() +
                                "\" is unknown: set \"inSR\""});
    return *std::move(system);
}

/// Reprojects one field and its metadata, as an entry of the step says.
std::shared_ptr<KnownReprojection> moveField(const StepCall& call, const Settings& entry,
                                             CFField& field)
{
    const Settings target = entry.neededObject("outSR");
    auto to = systemIn(target);
    if (!to)
        target.refuse("csName", "is missing, and so is \"wkid\"");
    const std::string method = target.text("transMethodsName").value_or("");
    target.reportOthers(call.context.message);
    auto reprojection =
        std::make_unique<Reprojection>(sourceSystem(call, entry, field), *to, method);
    CFGeo geo(field.GetGeo()->GetType(), field.GetGeo()->GetCoordinates());
    geo.SetCoordinateSystem(to->wkid, to->name, to->isProjected, to->wkt);
    if (const auto& envelope = field.GetGeo()->GetEnvelope())
        if (const auto moved = reprojection->moved(*envelope))
            geo.SetEnvelope(*moved);
    field.SetGeo(std::move(geo));
    return std::make_shared<KnownReprojection>(
        std::move(reprojection), call.context.session->textFunctions(), field.GetName());
}

[[noreturn]] void refuseShapeless(const StepCall& call, const std::string& what)
{
    throw JobError(errors::kNoShapes,
                   {.step = call.name, .what = what + ", so there is nothing to reproject"});
}

/// Reprojects every geospatial field with the same entry.
Moves moveAll(const StepCall& call, const Settings& settings, const Json& entries, Fields& fields)
{
    if (entries.size() != 1)
        settings.refuse("reprojectionFields",
                        "has " + std::to_string(entries.size()) +
                            " entries, but with the type \"all\" it has one for all fields");
    const Settings entry = settings.objectAt(entries, "reprojectionFields", 0);
    Moves moves;
    for (CFField& field : fields)
        if (field.GetGeo())
            moves.push_back(moveField(call, entry, field));
    if (moves.empty())
        refuseShapeless(call, "no field of the input is geospatial");
    entry.reportOthers(call.context.message);
    return moves;
}

/// Reprojects the fields that the entries name.
Moves moveNamed(const StepCall& call, const Settings& settings, const Json& entries, Fields& fields)
{
    Moves moves;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Settings entry = settings.objectAt(entries, "reprojectionFields", i);
        const CFField& named = call.inputField(entry.neededText("name"));
        CFField& field = fields[static_cast<std::size_t>(&named - call.input()->fields.data())];
        if (!field.GetGeo())
            refuseShapeless(call, "the field \"" + field.GetName() + "\" is not geospatial");
        for (const auto& move : moves)
            if (move->field() == field.GetName())
                entry.refuse("name",
                             "is \"" + field.GetName() + "\", as that of an entry before it");
        moves.push_back(moveField(call, entry, field));
        entry.reportOthers(call.context.message);
    }
    return moves;
}

/// Whether the only field to transform is that of the shapes of a map, which no step has changed.
bool movesLayer(const Node& input, const Moves& moves)
{
    return input.layer && !input.shared && moves.size() == 1 &&
           moves.front()->field() == input.layer->fields().back().GetName();
}

/// The input's records with shapes that are transformed while the map is read.
NodePtr movedLayer(const StepCall& call, Fields fields,
                   const std::shared_ptr<KnownReprojection>& move)
{
    const auto source = std::make_shared<MovedLayerSource>(
        call.input()->layer, std::shared_ptr<Reprojection>(move, &move->reprojection()),
        call.context.session->rowSources());
    // The node owns the source that its SQL refers to.
    return derivedNode(
        std::move(fields), {call.input()},
        [source](const std::vector<std::string>&) { return "SELECT * FROM " + source->table(); });
}

/// The input's records with shapes that a function of the database transforms.
NodePtr movedFields(const StepCall& call, Fields fields, const Moves& moves)
{
    std::vector<NewColumn> moved;
    for (const auto& move : moves)
        moved.push_back(move->column(call.context.dialect));
    const std::string columns = call.context.dialect.replacedColumns(fields, moved);
    return derivedNode(std::move(fields), {call.input()},
                       [columns](const std::vector<std::string>& inputs) {
                           return "SELECT " + columns + " FROM " + inputs[0];
                       });
}

NodePtr movedNode(const StepCall& call, Fields fields, Moves moves)
{
    NodePtr node = movesLayer(*call.input(), moves)
                       ? movedLayer(call, std::move(fields), moves.front())
                       : movedFields(call, std::move(fields), moves);
    // The check owns the reprojections that the SQL refers to.
    node->check = std::make_shared<LossCheck>(std::move(moves), call.name);
    return node;
}

} // namespace

/// Transforms shapes from one coordinate system to another.
StepResult planReprojection(StepCall& call)
{
    const Settings settings = call.settings();
    const std::string type = settings.neededText("type");
    if (type != "all" && type != "part")
        settings.refuse("type", "is \"" + type + "\"; known are all and part");
    const Json& entries = settings.neededList("reprojectionFields");
    if (entries.empty())
        settings.refuse("reprojectionFields", "is empty");
    Fields fields = call.input()->fields;
    try {
        Moves moves = type == "all" ? moveAll(call, settings, entries, fields)
                                    : moveNamed(call, settings, entries, fields);
        settings.reportOthers(call.context.message);
        return {movedNode(call, std::move(fields), std::move(moves)), nullptr};
    } catch (const maps::GeographyError& error) {
        throw maps::faultOf(error, call.name);
    }
}

} // namespace EmbeddedHV
