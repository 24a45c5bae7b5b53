#ifndef TESTS_INTEGRATION_MIRROREDMODEL_H
#define TESTS_INTEGRATION_MIRROREDMODEL_H

#include "integration/ExpectedModel.h"

#include <Zyl2/Mox2/Model.h>

#include <string>
#include <vector>

namespace Integration {

/// Makes every call of a real model and of the expectation, and checks that both answer alike.
class MirroredModel
{
public:
    /// Opens the file, which must not exist.
    explicit MirroredModel(std::string path);

    unsigned int addNode(Zyl2::Mox2::NodeType type, std::string const& name,
                         AttributeSet const& attributes = AttributeSet());
    void setNodeData(unsigned int id, PropertySet const& properties,
                     AttributeSet const& attributes = AttributeSet());
    void setNodeData(unsigned int id, AttributeSet const& attributes);
    /// The ids, in the order of the paths.
    std::vector<unsigned int> addComponents(std::vector<ComponentPath> const& paths,
                                            std::string const& separator = "/");
    /// The same through the form that takes a map.
    void addComponentMap(std::vector<ComponentPath> const& paths,
                         std::string const& separator = "/");
    void addArray(ArrayCall const& call);
    unsigned int getNodeId(std::vector<std::string> const& names);
    unsigned int moveToParentNode();
    void setCurrentNodeId(unsigned int id);

    /// Closes the file and compares it with the expectation, down to the last value.
    void closeAndCompare();

    ExpectedModel const& expected() const { return expected_; }
    std::string const& path() const { return path_; }

private:
    std::string path_;
    Zyl2::Mox2::Model model_;
    ExpectedModel expected_;
};

} // namespace Integration

#endif
