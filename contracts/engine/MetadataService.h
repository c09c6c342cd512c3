#pragma once

#include <jni.h>

#include <functional>
#include <string>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

class Container;

/// Answers questions without running a job. Calls come from one thread at a time; `env` is the
/// environment of that thread. All texts are UTF-8. Every operation may throw Exception or
/// JavaException.
class ENGINE_API MetadataService
{
public:
    /// Returns the data model of a job's output, as XML, without running the job. Returns an empty
    /// text if the job reads a source that is not readable. `container` is the one that the job
    /// names in its dataModelBuilder step; the caller owns it. `reserved` is null and `flags` is 0.
    virtual std::string getMetadata(JNIEnv* env, const std::string& jobText, void*& reserved,
                                    int flags, const Container& container) = 0;
    /// Not used. It keeps the order of the virtual operations.
    virtual void reservedOperation() = 0;
    /// Returns the layers of a map service, as a JSON array of objects: `value` (the layer's
    /// number, as a text), `name`, `keys` (fields that can be matched, separated by commas),
    /// `description`, `features` (the kind of shapes), and for a group `subLayers` (numbers). The
    /// scheme of `url` is http, https or file; a file address names a folder that takes the place
    /// of a service.
    virtual std::string getMapServiceLayers(JNIEnv* env, const std::string& url) = 0;
    /// Replaces `names` with the names of the geographic coordinate systems.
    virtual void getGeographics(JNIEnv* env, std::vector<std::string>& names) = 0;
    /// Replaces `names` with the names of the projected coordinate systems.
    virtual void getProjections(JNIEnv* env, std::vector<std::string>& names) = 0;
    /// Recommends projected coordinate systems for the areas in `input`, those with the smallest
    /// area of use first. Returns at most `count` for each area, or all if `count` is negative.
    /// `input` is a JSON object. Each key is the id of an area; each value is an object with
    /// `leftUpperX`, `leftUpperY`, `rightLowerX` and `rightLowerY` in degrees. The operation
    /// replaces `result` with one JSON object for each area. Its key is the id; its value is a list
    /// of objects with `wkid`, `name`, `wkt` and `trans_methods`. `trans_methods` is a list of
    /// objects, each of which maps the name of a transformation to "forward" or "inverse".
    virtual void getRecommendPCSs(JNIEnv* env, const std::string& input, int count,
                                  std::vector<std::string>& result) = 0;
    /// Recommends at most 10 projected coordinate systems for each area. `input` and `result` are
    /// those of the overload with `count`.
    virtual void getRecommendPCSs(JNIEnv* env, const std::string& input,
                                  std::vector<std::string>& result) = 0;
    /// Returns a coordinate system by its name, as a JSON object: `wkid`, `name`, `wkt`,
    /// `isProjection`.
    virtual std::string getCoordinatesSystemInfo(JNIEnv* env, const std::string& name) = 0;
    /// Returns a coordinate system by its well-known id, as a JSON object with the same members.
    virtual std::string getCoordinatesSystemInfo(JNIEnv* env, int wkid) = 0;
    /// The backend deletes the object.
    virtual ~MetadataService() = default;
};

/// An interface that a metadata service may implement if its questions can be stopped. Callers
/// detect it with dynamic_cast.
class ENGINE_API StoppableQuestions
{
public:
    /// Sets the stop request of the calling thread. While a question of this thread waits for a map
    /// service, it calls `stop` several times a second. If `stop` returns true, the question throws
    /// Exception. An empty function removes the stop request. The service keeps a copy.
    virtual void setStop(std::function<bool()> stop) = 0;

protected:
    /// Protected: the owner deletes the service through MetadataService.
    ~StoppableQuestions() = default;
};

} // namespace EmbeddedHV
