#ifndef BINDINGS_MODEL_MODELCALLS_H
#define BINDINGS_MODEL_MODELCALLS_H

#include <Zyl2/Mox2/Array1d.h>
#include <Zyl2/Mox2/ArrayView.h>
#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/DatasetType.h>
#include <Zyl2/Mox2/IdsView.h>
#include <Zyl2/Mox2/NodeProperties.h>
#include <Zyl2/Mox2/NodeType.h>
#include <Zyl2/Mox2/SaverOptions.h>
#include <Zyl2/Mox2/StepList.h>

#include <map>
#include <string>
#include <vector>

namespace Bindings {

using AddedIds = Zyl2::Mox2::Array1d<unsigned int>;
using AttributesByPath = std::map<std::string, Zyl2::Mox2::Attributes>;

/// What other languages call of a model, whether it is one in a file of its own or a piece of one
/// that many ranks hold. Each call is that of the model of the same name, and throws what it
/// throws.
class ModelCalls
{
public:
    ModelCalls() = default;
    virtual ~ModelCalls() = default;
    ModelCalls(ModelCalls const&) = delete;
    ModelCalls& operator=(ModelCalls const&) = delete;

    virtual void saveTo(std::string const& path, Zyl2::Mox2::SaverOptions const& options) = 0;
    virtual void saveTo(std::wstring const& path, Zyl2::Mox2::SaverOptions const& options) = 0;
    virtual unsigned int addNode(Zyl2::Mox2::NodeType type, std::string const& name,
                                 Zyl2::Mox2::Attributes const& attributes) = 0;
    virtual void setNodeData(unsigned int id, Zyl2::Mox2::NodeProperties const& properties,
                             Zyl2::Mox2::Attributes const& attributes) = 0;
    virtual unsigned int getNodeId(std::string const& path, std::string const& separator) = 0;
    virtual unsigned int getNodeId(std::vector<std::string> const& names) = 0;
    virtual void setCurrentNodeId(unsigned int id) = 0;
    virtual unsigned int moveToParentNode() = 0;
    virtual AddedIds addAssemblyComponents(std::vector<std::string> const& paths,
                                           std::string const& separator) = 0;
    virtual AddedIds addAssemblyComponents(AttributesByPath const& components,
                                           std::string const& separator) = 0;
    /// \param name null for the default name of the type
    virtual void addArray(std::string const* name, Zyl2::Mox2::DatasetType type,
                          Zyl2::Mox2::ArrayView const& values,
                          Zyl2::Mox2::IdsView const& components, Zyl2::Mox2::StepList const& steps,
                          Zyl2::Mox2::Attributes const& attributes) = 0;
    virtual bool checkpoint() = 0;
    virtual double waitedSeconds() const = 0;
    virtual void close() = 0;

    // Of models that many ranks hold:

    virtual void step() = 0;
    /// \param sentence terminated
    virtual void fail(char const* sentence, int errorCode) noexcept = 0;
};

} // namespace Bindings

#endif
