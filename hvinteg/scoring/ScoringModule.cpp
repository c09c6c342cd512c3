#include "scoring/ScoringModule.h"

ScoringModule::ScoringModule(const std::string& path)
{
    const auto root = std::make_unique<SDOMXMLWrapper>();
    root->LoadFromFile(path);
    const XmlElement details = findElement(root, "ModuleDetails");
    _id = attributeOf(details, "id");
    _providerTag = attributeOf(details, "providerTag");
    _version = attributeOf(details, "version");
    forEachElement(findElement(root, "CommonObjects/PropertyTypes"), "Structure",
                   [this](XmlElement structure) {
                       const std::string type = attributeOf(structure, "id");
                       _structures[type] = std::move(structure);
                   });
    _properties = findElement(root, "Component/Properties");
}
