#include <Zyl2/Mox2/Model.h>

#include "Zyl2/Base/File.h"
#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox2/Adder/ArrayProperty.h"
#include "Zyl2/Mox2/Adder/Components.h"
#include "Zyl2/Mox2/Adder/Node.h"
#include "Zyl2/Mox2/Database.h"
#include "Zyl2/Mox2/Extractor/NodeId.h"
#include "Zyl2/Mox2/GetComponentArray.h"
#include "Zyl2/Mox2/GetStepList.h"
#include "Zyl2/Mox2/Modifier/CurrentNodeId.h"
#include "Zyl2/Mox2/Modifier/NodeData.h"
#include "Zyl2/Mox2/Recovery/Recorder.h"
#include "Zyl2/Mox2/Saver.h"

#include <utility>

namespace Zyl2 {
namespace Mox2 {

namespace {

using Recovery::CallKind;

/// Joins names that may hold any other character.
char const* const nameSeparator = "\x1E";

void save(Database& database, Base::File file, SaverOptions const& options)
{
    file.formatName = MOX_FILE_FORMAT_NAME;
    Saver(file, options).extractFrom(database);
}

/// Runs a command that changes the model; where that can be recovered, the call is noted.
template <typename CommandT>
void run(CommandT& command, CallKind kind, Database& database)
{
    if (database.recorder == nullptr)
        command.update(database);
    else
        database.recorder->run(command, kind, database);
}

template <typename ContainerT>
Array1d<unsigned int> addComponents(Database& database, ContainerT const& paths, CallKind kind,
                                    std::string const& separator)
{
    Adder::Components<ContainerT, ComponentArray> components(paths, nameSeparator);
    components.separator = separator;
    run(components, kind, database);
    ComponentArray const& ids = components.ids;
    return Array1d<unsigned int>(ids.data(), ids.data() + ids.size());
}

template <typename DatasetT, typename StepT>
void addDataset(Database& database, DatasetT const& dataset, ComponentArray const& components,
                StepT const& steps)
{
    Adder::ArrayProperty<DatasetT, ComponentArray, std::vector<StepData>> adder;
    adder.dataset = dataset;
    // Single ids and steps come through storage that this thread's next conversion overwrites.
    adder.components = components;
    adder.steps = getStepList(steps);
    run(adder, CallKind::AddArray, database);
}

ComponentArray componentsFrom(IdsView const& ids)
{
    return Eigen::Map<ComponentArray const>(ids.data(), static_cast<Eigen::Index>(ids.size()));
}

template <typename StepT>
void addViewed(Database& database, std::string const* name, DatasetType type,
               ArrayView const& values, IdsView const& components, StepT const& steps,
               Attributes const& attributes)
{
    ViewedDataset const dataset = name == nullptr ? ViewedDataset(type, values, attributes)
                                                  : ViewedDataset(*name, type, values, attributes);
    addDataset(database, dataset, componentsFrom(components), steps);
}

void addInPieces(Database& database, std::string const* name, DatasetType type, ArrayPieces& values,
                 IdsView const& components, StepList const& steps, Attributes const& attributes)
{
    if (values.element() != ArrayView::Element::Float32 &&
        values.element() != ArrayView::Element::UInt32)
        Exception::raise(Exception::Sites::Model::OtherElement,
                         "pieces hold floats or unsigned integers of 32 bits");
    // Says how many values there are, and looks at none.
    ArrayView const shape(&values, values.element(), values.rows(), values.columns(), 0, 0);
    Adder::ArrayProperty<ViewedDataset, ComponentArray, std::vector<StepData>> adder;
    adder.dataset = name == nullptr ? ViewedDataset(type, shape, attributes)
                                    : ViewedDataset(*name, type, shape, attributes);
    adder.components = componentsFrom(components);
    adder.steps = getStepList(steps);
    adder.pieces = &values;
    run(adder, CallKind::AddArray, database);
}

} // namespace

char const* const MOX_FILE_FORMAT_NAME = "zyli_mox";

constexpr unsigned int Model::INVALID_ID;

std::string const& Model::defaultPathSeparator()
{
    static std::string const separator("/");
    return separator;
}

Attributes const& Model::emptyAttributes()
{
    static Attributes const empty;
    return empty;
}

Model::Model() : database_(new Database) {}

Model::~Model() noexcept
{
    if (database_ != nullptr)
        database_->closeOrForget();
    delete database_;
}

Model::Model(Model&& other) noexcept : database_(std::exchange(other.database_, nullptr)) {}

// NOLINTNEXTLINE(bugprone-exception-escape,performance-noexcept-move-constructor): closes
Model& Model::operator=(Model&& other)
{
    if (this == &other)
        return *this;
    close();
    delete database_;
    database_ = std::exchange(other.database_, nullptr);
    return *this;
}

Database& Model::database()
{
    if (database_ == nullptr)
        database_ = new Database;
    return *database_;
}

void Model::saveTo(std::string const& path, SaverOptions const& options)
{
    Base::File file;
    file.path = path;
    save(database(), std::move(file), options);
}

void Model::saveTo(char const* path, SaverOptions const& options)
{
    saveTo(std::string(path), options);
}

void Model::saveTo(std::wstring const& path, SaverOptions const& options)
{
    Base::File file;
    file.widePath = path;
    save(database(), std::move(file), options);
}

void Model::saveTo(wchar_t const* path, SaverOptions const& options)
{
    saveTo(std::wstring(path), options);
}

unsigned int Model::addNode(NodeType type, std::string const& name, Attributes const& attributes)
{
    Adder::Node adder(type, name, attributes);
    run(adder, CallKind::AddNode, database());
    return adder.getId();
}

void Model::setNodeData(unsigned int id, NodeProperties const& properties,
                        Attributes const& attributes)
{
    Modifier::NodeData nodeData(id, properties, attributes);
    run(nodeData, CallKind::SetNodeData, database());
}

unsigned int Model::getNodeId(std::string const& path, std::string const& separator)
{
    return Extractor::NodeId(path, separator).extractFrom(database());
}

unsigned int Model::getNodeId(std::vector<std::string> const& names)
{
    std::string path;
    for (std::string const& name : names)
        path += nameSeparator + name;
    return getNodeId(path, nameSeparator);
}

void Model::setCurrentNodeId(unsigned int id)
{
    Modifier::CurrentNodeId(id).update(database());
}

unsigned int Model::moveToParentNode()
{
    database().assertNotEmpty();
    Zyl2Mox::Tree& tree = *database().tree;
    unsigned int const parent = tree.GetCurrentNode().parent;
    if (parent != 0)
        tree.SetCurrentId(parent);
    return parent;
}

Array1d<unsigned int> Model::addAssemblyComponents(std::vector<std::string> const& names,
                                                   std::string const& separator)
{
    return addComponents(database(), names, CallKind::AddPaths, separator);
}

Array1d<unsigned int>
Model::addAssemblyComponents(std::map<std::string, Attributes> const& components,
                             std::string const& separator)
{
    return addComponents(database(), components, CallKind::AddComponents, separator);
}

template <typename ArrayT, typename ComponentT, typename StepT>
typename IfArrayProperty<ArrayT, ComponentT, StepT>::type
Model::addArrayProperty(DatasetType type, ArrayT const& values, ComponentT const& components,
                        StepT const& steps, Attributes const& attributes)
{
    addDataset(database(), DatasetOf<ArrayT>(type, values.impl().array, attributes),
               getComponentArray(components), steps);
}

template <typename ArrayT, typename ComponentT, typename StepT>
typename IfArrayProperty<ArrayT, ComponentT, StepT>::type
Model::addArrayProperty(std::string const& name, DatasetType type, ArrayT const& values,
                        ComponentT const& components, StepT const& steps,
                        Attributes const& attributes)
{
    addDataset(database(), DatasetOf<ArrayT>(name, type, values.impl().array, attributes),
               getComponentArray(components), steps);
}

void Model::addView(std::string const* name, DatasetType type, ArrayView const& values,
                    IdsView const& components, Step const& steps, Attributes const& attributes)
{
    addViewed(database(), name, type, values, components, steps, attributes);
}

void Model::addView(std::string const* name, DatasetType type, ArrayView const& values,
                    IdsView const& components, StepList const& steps, Attributes const& attributes)
{
    addViewed(database(), name, type, values, components, steps, attributes);
}

void Model::addArrayPieces(DatasetType type, ArrayPieces& values, IdsView const& components,
                           StepList const& steps, Attributes const& attributes)
{
    addInPieces(database(), nullptr, type, values, components, steps, attributes);
}

void Model::addArrayPieces(std::string const& name, DatasetType type, ArrayPieces& values,
                           IdsView const& components, StepList const& steps,
                           Attributes const& attributes)
{
    addInPieces(database(), &name, type, values, components, steps, attributes);
}

void Model::abandon() noexcept
{
    if (database_ != nullptr)
        database_->abandon();
}

void Model::close()
{
    if (database_ == nullptr)
        return;
    database_->close();
    if (database_->hasWrittenInVain())
        Exception::raise(Exception::Sites::Model::WrittenInVain,
                         "the file was removed or replaced while it was being written");
}

bool Model::checkpoint()
{
    return database().checkpoint();
}

double Model::waitedSeconds() const
{
    return database_ == nullptr ? 0 : database_->waitedSeconds();
}

// One macro for what the language has no other way to repeat: 16 combinations of types, each with
// and without a name.
#define ZYL2_INSTANTIATE(ArrayT, ComponentT, StepT)                                                \
    template ZYL2_EXPORT void Model::addArrayProperty(                                             \
        DatasetType, ArrayT const&, ComponentT const&, StepT const&, Attributes const&);           \
    template ZYL2_EXPORT void Model::addArrayProperty(std::string const&, DatasetType,             \
                                                      ArrayT const&, ComponentT const&,            \
                                                      StepT const&, Attributes const&);
#define ZYL2_INSTANTIATE_FOR(ArrayT)                                                               \
    ZYL2_INSTANTIATE(ArrayT, Array1d<unsigned int>, StepList)                                      \
    ZYL2_INSTANTIATE(ArrayT, Array1d<unsigned int>, Step)                                          \
    ZYL2_INSTANTIATE(ArrayT, unsigned int, StepList)                                               \
    ZYL2_INSTANTIATE(ArrayT, unsigned int, Step)

ZYL2_INSTANTIATE_FOR(Array1d<float>)
ZYL2_INSTANTIATE_FOR(Array1d<unsigned int>)
ZYL2_INSTANTIATE_FOR(Array2d<float>)
ZYL2_INSTANTIATE_FOR(Array2d<unsigned int>)

#undef ZYL2_INSTANTIATE_FOR
#undef ZYL2_INSTANTIATE

} // namespace Mox2
} // namespace Zyl2
