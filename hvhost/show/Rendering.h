#pragma once

#include <memory>
#include <string>

#include "FacSTDictionary.h"
#include "hvhost/show/RenderOrder.h"

class HVDebug;
class HostSession;
class TnProcedure;
class jsonToTarn;

/// Converts a result document to output of a procedure. Parses the document once, for all orders.
/// Borrows all arguments.
class Rendering
{
public:
    /// `name` is the name of the document in errors. `showsTimes`: whether the output shows how
    /// long each part took.
    Rendering(HostSession& session, TnProcedure& procedure, const std::string& name,
              const std::string& document, bool showsTimes = false);
    ~Rendering();
    Rendering(const Rendering&) = delete;
    Rendering& operator=(const Rendering&) = delete;

    /// Throws CommandFault: Input for an unreadable document; JobFailed, with the name of the part,
    /// if an exception in Java prevents that a part is shown. Exceptions of the watch pass.
    void render(const RenderOrder& order);

private:
    jsonToTarn& parsed();
    void generate(const RenderOrder& order);
    void refuseFailures(const RenderOrder& order, const jsonToTarn& output) const;
    void note(const std::string& comment);

    HostSession& _session;
    TnProcedure& _procedure;
    const std::string& _name;
    const std::string& _document;
    FacSTDictionary _strings;
    std::unique_ptr<jsonToTarn> _parsed; ///< null before the first order
    std::unique_ptr<HVDebug> _times;     ///< only if they are shown
};
