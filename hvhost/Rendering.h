#pragma once

#include <memory>
#include <string>

#include "FacSTDictionary.h"
#include "RenderOrder.h"

class HVDebug;
class HostSession;
class TnProcedure;
class jsonToTarn;

/// Turns a result document into output of a procedure. Everything is borrowed.
class Rendering
{
public:
    /// `name` is what faults call the document; `showsTimes`: whether the output tells what took
    /// how long.
    Rendering(HostSession& session, TnProcedure& procedure, const std::string& name,
              const std::string& document, bool showsTimes = false);
    ~Rendering();
    Rendering(const Rendering&) = delete;
    Rendering& operator=(const Rendering&) = delete;

    /// Throws CommandFault: Input for a document that cannot be read; JobFailed, with the name of
    /// the part, if Java fails to show one; and what the watch throws.
    void render(const RenderOrder& order);

private:
    void generate(const RenderOrder& order);
    void refuseFailures(const RenderOrder& order, const jsonToTarn& output) const;
    void note(const std::string& comment);

    HostSession& _session;
    TnProcedure& _procedure;
    const std::string& _name;
    const std::string& _document;
    FacSTDictionary _strings;
    std::unique_ptr<HVDebug> _times; ///< only if they are shown
};
