#pragma once

#include "MetadataService.h"
#include "runtime/DataSources.h"
#include "runtime/FileSpace.h"
#include "steps/JobEngine.h"

namespace EmbeddedHV {

/// Questions about jobs that do not run, and about maps.
class LocalMetadataService final : public MetadataService, public StoppableQuestions
{
public:
    /// Borrows all three from the service.
    LocalMetadataService(JobEngine& engine, const FileSpace& files, DataSources& dataSources)
        : _engine(engine), _files(files), _dataSources(dataSources)
    {
    }

    /// The data model of the last statement's result. Reads no records, except those of a CSV file
    /// that determine the types of its fields. Writes nothing.
    std::string getMetadata(JNIEnv* env, const std::string& jobText, void*& reserved, int flags,
                            const Container& container) override;
    void reservedOperation() override {}
    std::string getMapServiceLayers(JNIEnv* env, const std::string& url) override;
    void getGeographics(JNIEnv* env, std::vector<std::string>& names) override;
    void getProjections(JNIEnv* env, std::vector<std::string>& names) override;
    void getRecommendPCSs(JNIEnv* env, const std::string& input, int count,
                          std::vector<std::string>& result) override;
    void getRecommendPCSs(JNIEnv* env, const std::string& input,
                          std::vector<std::string>& result) override;
    std::string getCoordinatesSystemInfo(JNIEnv* env, const std::string& name) override;
    std::string getCoordinatesSystemInfo(JNIEnv* env, int wkid) override;
    void setStop(std::function<bool()> stop) override;

private:
    JobEngine& _engine;
    const FileSpace& _files;
    DataSources& _dataSources;
};

} // namespace EmbeddedHV
