#include "integration/MirroredModel.h"

#include "integration/Comparison.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace Integration {

namespace {

using Zyl2::Mox2::Array1d;

std::vector<unsigned int> plain(Array1d<unsigned int> const& ids)
{
    std::vector<unsigned int> result;
    for (unsigned long index = 0; index < ids.size(); ++index)
        result.push_back(ids[index]);
    return result;
}

} // namespace

MirroredModel::MirroredModel(std::string path) : path_(std::move(path))
{
    model_.saveTo(path_);
}

unsigned int MirroredModel::addNode(Zyl2::Mox2::NodeType type, std::string const& name,
                                    AttributeSet const& attributes)
{
    unsigned int const id = model_.addNode(type, name, attributes.host());
    EXPECT_EQ(id, expected_.addNode(type, name, attributes));
    return id;
}

void MirroredModel::setNodeData(unsigned int id, PropertySet const& properties,
                                AttributeSet const& attributes)
{
    model_.setNodeData(id, properties.host(), attributes.host());
    expected_.setNodeData(id, properties, attributes);
}

void MirroredModel::setNodeData(unsigned int id, AttributeSet const& attributes)
{
    setNodeData(id, PropertySet(), attributes);
}

std::vector<unsigned int> MirroredModel::addComponents(std::vector<ComponentPath> const& paths,
                                                       std::string const& separator)
{
    std::vector<std::string> texts;
    std::vector<unsigned int> expected;
    for (ComponentPath const& path : paths) {
        texts.push_back(path.text(separator));
        expected.push_back(expected_.addComponent(path));
    }
    std::vector<unsigned int> ids = plain(model_.addAssemblyComponents(texts, separator));
    EXPECT_EQ(ids, expected);
    return ids;
}

void MirroredModel::addComponentMap(std::vector<ComponentPath> const& paths,
                                    std::string const& separator)
{
    std::map<std::string, Zyl2::Mox2::Attributes> components;
    std::map<std::string, ComponentPath> sorted;
    for (ComponentPath const& path : paths) {
        components[path.text(separator)].set("Unused", 1);
        sorted[path.text(separator)] = path;
    }
    std::vector<unsigned int> expected;
    for (auto const& [text, path] : sorted)
        expected.push_back(expected_.addComponent(path));
    EXPECT_EQ(plain(model_.addAssemblyComponents(components, separator)), expected);
}

void MirroredModel::addArray(ArrayCall const& call)
{
    call.run(model_);
    expected_.addArray(call);
}

unsigned int MirroredModel::getNodeId(std::vector<std::string> const& names)
{
    unsigned int const id = model_.getNodeId(names);
    EXPECT_EQ(id, expected_.getNodeId(names));
    return id;
}

unsigned int MirroredModel::moveToParentNode()
{
    unsigned int const id = model_.moveToParentNode();
    EXPECT_EQ(id, expected_.moveToParentNode());
    return id;
}

void MirroredModel::setCurrentNodeId(unsigned int id)
{
    model_.setCurrentNodeId(id);
    expected_.setCurrentNodeId(id);
}

void MirroredModel::closeAndCompare()
{
    model_.close();
    expectFile(path_, expected_);
}

} // namespace Integration
