#ifndef BINDINGS_MODEL_CALLSOF_H
#define BINDINGS_MODEL_CALLSOF_H

#include "model/ModelCalls.h"

namespace Bindings {

/// The calls that both kinds of models have.
/// \tparam ModelT `Zyl2::Mox2::Model` or `Zyl2::Mpi::PartitionedModel`
template <typename ModelT>
class CallsOf : public ModelCalls
{
public:
    unsigned int addNode(Zyl2::Mox2::NodeType type, std::string const& name,
                         Zyl2::Mox2::Attributes const& attributes) override
    {
        return model().addNode(type, name, attributes);
    }
    void setNodeData(unsigned int id, Zyl2::Mox2::NodeProperties const& properties,
                     Zyl2::Mox2::Attributes const& attributes) override
    {
        model().setNodeData(id, properties, attributes);
    }
    unsigned int getNodeId(std::string const& path, std::string const& separator) override
    {
        return model().getNodeId(path, separator);
    }
    unsigned int getNodeId(std::vector<std::string> const& names) override
    {
        return model().getNodeId(names);
    }
    void setCurrentNodeId(unsigned int id) override { model().setCurrentNodeId(id); }
    unsigned int moveToParentNode() override { return model().moveToParentNode(); }
    AddedIds addAssemblyComponents(std::vector<std::string> const& paths,
                                   std::string const& separator) override
    {
        return model().addAssemblyComponents(paths, separator);
    }
    AddedIds addAssemblyComponents(AttributesByPath const& components,
                                   std::string const& separator) override
    {
        return model().addAssemblyComponents(components, separator);
    }
    void addArray(std::string const* name, Zyl2::Mox2::DatasetType type,
                  Zyl2::Mox2::ArrayView const& values, Zyl2::Mox2::IdsView const& components,
                  Zyl2::Mox2::StepList const& steps,
                  Zyl2::Mox2::Attributes const& attributes) override
    {
        if (name == nullptr)
            model().addArrayProperty(type, values, components, steps, attributes);
        else
            model().addArrayProperty(*name, type, values, components, steps, attributes);
    }
    bool checkpoint() override { return model().checkpoint(); }
    void close() override { model().close(); }

private:
    virtual ModelT& model() = 0;
};

} // namespace Bindings

#endif
