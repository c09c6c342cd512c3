#pragma once

#include <jni.h>

#include <functional>
#include <string>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

class Container;

/// Questions that need no job. Every operation may throw Exception or JavaException.
class ENGINE_API MetadataService
{
public:
    /// The data model of a job's output, as XML, without running the job; empty if a source that
    /// the job reads cannot be read. The job names the container in its dataModelBuilder step.
    /// `reserved` and `flags` are null and 0.
    virtual std::string getMetadata(JNIEnv* env, const std::string& jobText, void*& reserved,
                                    int flags, const Container& container) = 0;
    virtual void reservedOperation() = 0;
    /// The layers of a map service, as a JSON array of objects: `value` (the layer's number as a
    /// text), `name`, `keys` (fields that can be matched, with commas between them), `description`,
    /// `features` (the kind of shapes), and for a group `subLayers` (numbers). The address is one
    /// of http, https or file; a folder stands in for a service.
    virtual std::string getMapServiceLayers(JNIEnv* env, const std::string& url) = 0;
    /// Names of the geographic and of the projected coordinate systems.
    virtual void getGeographics(JNIEnv* env, std::vector<std::string>& names) = 0;
    virtual void getProjections(JNIEnv* env, std::vector<std::string>& names) = 0;
    /// Projected systems that suit the areas in `input`, the smallest area of use first, at most
    /// `count` for each (all for a negative one; 10 without it). `input` is a JSON object: under
    /// the id of each area an object of degrees, `leftUpperX`, `leftUpperY`, `rightLowerX` and
    /// `rightLowerY`. `result` holds a JSON object for each area: under its id a list of objects
    /// with `wkid`, `name`, `wkt` and `trans_methods`, a list of objects that give the name of a
    /// transformation the value "forward" or "inverse".
    virtual void getRecommendPCSs(JNIEnv* env, const std::string& input, int count,
                                  std::vector<std::string>& result) = 0;
    virtual void getRecommendPCSs(JNIEnv* env, const std::string& input,
                                  std::vector<std::string>& result) = 0;
    /// A coordinate system by name or by well-known id, as a JSON object: `wkid`, `name`, `wkt`,
    /// `isProjection`.
    virtual std::string getCoordinatesSystemInfo(JNIEnv* env, const std::string& name) = 0;
    virtual std::string getCoordinatesSystemInfo(JNIEnv* env, int wkid) = 0;
    virtual ~MetadataService() = default;
};

/// What a metadata service may be as well: one whose questions can be stopped. Whoever asks finds
/// out by dynamic_cast, so an engine can do without.
class ENGINE_API StoppableQuestions
{
public:
    /// From now on the questions of the calling thread ask `stop` several times a second while they
    /// wait for a map service, and throw Exception when it answers true. An empty function ends
    /// that.
    virtual void setStop(std::function<bool()> stop) = 0;

protected:
    ~StoppableQuestions() = default;
};

} // namespace EmbeddedHV
