#include "integration/BlockSizeSetting.h"
#include "integration/DatasetTypes.h"
#include "integration/MirroredModel.h"

#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace Integration {

namespace {

using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::PropertyType;

constexpr unsigned int modelsPerLimit = 60;

std::vector<std::string> const& nodeNames()
{
    static std::vector<std::string> const names{"a",
                                                "b",
                                                "c",
                                                "left door",
                                                "\xC3\xBC",
                                                "",
                                                "a/b",
                                                "\xFF\xFE",
                                                std::string("z\0z", 3),
                                                std::string(300, 'n')};
    return names;
}

/// Names that a path can hold with any of the separators used here.
std::vector<std::string> const& pathNames()
{
    static std::vector<std::string> const names{"a", "b", "c", "left door", "\xC3\xBC"};
    return names;
}

std::vector<std::string> const& attributeNames()
{
    static std::vector<std::string> const names{"Category", "Unit",     "Link.x",   "DataType",
                                                "Complex",  "",         "Time",     "A",
                                                "a",        "\x80\x01", "Structure"};
    return names;
}

/// Builds one model of random calls.
class RandomModel
{
public:
    RandomModel(std::uint32_t seed, std::string const& path) : random_(seed), model_(path) {}

    void run()
    {
        if (random_.chance(85))
            addRoot();
        std::size_t const calls = 5 + random_.below(60);
        for (std::size_t count = 0; count < calls; ++count)
            makeCall();
        model_.closeAndCompare();
    }

private:
    void addRoot()
    {
        std::vector<NodeType> const types{NodeType::FlaggedRootGroup, NodeType::RootGroup,
                                          NodeType::Group, NodeType::Shape};
        model_.addNode(random_.pick(types), random_.pick(nodeNames()), attributes());
    }

    void makeCall()
    {
        switch (random_.below(10)) {
        case 0:
            return addNode(NodeType::Group);
        case 1:
            return addNode(NodeType::Shape);
        case 2:
            model_.moveToParentNode();
            return;
        case 3:
            return model_.setCurrentNodeId(anyId());
        case 4:
            return setNodeData();
        case 5:
            return addComponents();
        case 6:
            return findNode();
        default:
            return addArray();
        }
    }

    void addNode(NodeType type) { model_.addNode(type, random_.pick(nodeNames()), attributes()); }

    unsigned int anyId()
    {
        return 1 + static_cast<unsigned int>(random_.below(model_.expected().nodeCount()));
    }

    unsigned int anyGeometryOr(unsigned int other)
    {
        for (int attempt = 0; attempt < 20; ++attempt) {
            unsigned int const id = anyId();
            if (model_.expected().node(id).kind == Kind::Geometry)
                return id;
        }
        return other;
    }

    void setNodeData()
    {
        unsigned int const id = anyId();
        Kind const kind = model_.expected().node(id).kind;
        if (kind == Kind::Group)
            model_.setNodeData(id, transform(), attributes());
        else if (kind == Kind::Shape || kind == Kind::Geometry)
            model_.setNodeData(id, material(), attributes());
    }

    std::vector<float> numbers(std::size_t count)
    {
        std::vector<float> result(count);
        for (float& value : result)
            value = random_.number();
        return result;
    }

    PropertySet transform()
    {
        PropertySet result;
        if (random_.chance(60))
            result.set(PropertyType::Translation, numbers(3));
        if (random_.chance(60))
            result.set(PropertyType::Rotation, numbers(4));
        if (random_.chance(60))
            result.set(PropertyType::Scale, numbers(3));
        return result;
    }

    PropertySet material()
    {
        PropertySet result;
        for (PropertyType const type : {PropertyType::DiffuseColor, PropertyType::SpecularColor})
            if (random_.chance(50))
                result.set(type, numbers(3 + random_.below(2)));
        for (PropertyType const type : {PropertyType::EmissiveColor, PropertyType::AmbientColor})
            if (random_.chance(50))
                result.set(type, numbers(3));
        for (PropertyType const type :
             {PropertyType::Transparency, PropertyType::AmbientIntensity, PropertyType::Shininess})
            if (random_.chance(30))
                result.set(type, random_.number());
        return result;
    }

    AttributeSet attributes()
    {
        AttributeSet result;
        for (std::size_t count = random_.below(5); count > 0; --count)
            setAttribute(result, random_.pick(attributeNames()));
        return result;
    }

    void setAttribute(AttributeSet& set, std::string const& name)
    {
        switch (random_.below(8)) {
        case 0:
            return set.set(name, random_.number());
        case 1:
            return set.set(name, static_cast<double>(random_.number()) / 3.0);
        case 2:
            return set.set(name, static_cast<int>(random_.word()));
        case 3:
            return set.set(name, random_.word());
        case 4:
            return set.set(name, static_cast<long>(random_.word()) * 65537L);
        case 5:
            return set.set(name, "Vibration");
        default:
            return set.set(name, text());
        }
    }

    std::string text()
    {
        std::string result(random_.below(20) == 0 ? 200 + random_.below(150) : random_.below(12),
                           ' ');
        for (char& byte : result)
            byte = static_cast<char>(random_.chance(98) ? 1 + random_.below(255) : 0);
        return result;
    }

    /// The name that paths have to begin with; none when no path can hold it.
    std::optional<std::string> rootName()
    {
        if (model_.expected().node(1).kind == Kind::None)
            return random_.pick(pathNames());
        std::string const& name = model_.expected().node(1).name;
        bool const fits =
            std::find(pathNames().begin(), pathNames().end(), name) != pathNames().end();
        return fits ? std::make_optional(name) : std::nullopt;
    }

    void addComponents()
    {
        std::optional<std::string> const root = rootName();
        if (!root)
            return;
        std::vector<ComponentPath> paths;
        for (std::size_t count = random_.below(6); count > 0; --count)
            paths.push_back(path(*root));
        std::vector<std::string> const separators{"/", "::", "/.", "\x1E"};
        if (random_.chance(30))
            model_.addComponentMap(paths, random_.pick(separators));
        else
            model_.addComponents(paths, random_.pick(separators));
    }

    ComponentPath path(std::string const& root)
    {
        if (random_.chance(5))
            return {};
        ComponentPath result{{root}, random_.chance(40)};
        for (std::size_t depth = random_.below(5); depth > 0; --depth)
            result.names.push_back(random_.pick(pathNames()));
        return result;
    }

    void findNode()
    {
        std::vector<std::string> names;
        for (unsigned int id = anyId(); id != 0; id = model_.expected().node(id).parent)
            names.insert(names.begin(), model_.expected().node(id).name);
        // The root's name alone leads nowhere, and neither does any on a tree without a root.
        if (names.size() == 1)
            names.push_back(random_.pick(pathNames()));
        if (random_.chance(20))
            names.back() = random_.pick(nodeNames());
        if (model_.expected().node(1).kind != Kind::None)
            model_.getNodeId(names);
    }

    void addArray()
    {
        ArrayCall call;
        DatasetTypeFacts const& facts = random_.pick(datasetTypes());
        call.type = facts.type;
        call.values = Values::anyBits(
            random_, random_.chance(50) ? Element::Float : Element::Uint32, facts.width, rows());
        call.asColumn = facts.width == 1 && random_.chance(50);
        if (facts.defaultName == nullptr || random_.chance(40))
            call.name = random_.pick(nodeNames());
        call.attributes = attributes();
        chooseIds(call);
        chooseSteps(call);
        model_.addArray(call);
    }

    std::size_t rows()
    {
        return random_.chance(5) ? 1000 + random_.below(1000) : random_.below(30);
    }

    void chooseIds(ArrayCall& call)
    {
        for (std::size_t count = random_.below(5); count > 0; --count)
            call.ids.push_back(random_.chance(80) ? anyGeometryOr(1) : anyId());
        call.asSingleId = call.ids.size() == 1 && random_.chance(50);
    }

    void chooseSteps(ArrayCall& call)
    {
        std::vector<std::string> const names{"", "t1", "t2", "mode 1", "\x1E", "t\xC3\xA4"};
        call.steps.clear();
        for (std::size_t count = random_.below(4); count > 0; --count)
            call.steps.push_back({random_.pick(names), attributes()});
        call.asSingleStep = call.steps.size() == 1 && random_.chance(50);
    }

    Random random_;
    MirroredModel model_;
};

class RandomModelTest : public testing::TestWithParam<char const*>
{
protected:
    static std::optional<std::string> limit()
    {
        std::string const text = GetParam();
        return text == "default" ? std::nullopt : std::make_optional(text);
    }
};

} // namespace

TEST_P(RandomModelTest, SeededModelsReadBackAsTheyWereBuilt)
{
    BlockSizeSetting const setting(limit());
    Support::TemporaryFolder const folder;
    for (std::uint32_t seed = 1; seed <= modelsPerLimit; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomModel(seed, folder.File(std::to_string(seed))).run();
        if (HasFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(Limits, RandomModelTest,
                         testing::Values("default", "0", "10", "100", "1000", "4096"),
                         [](auto const& limit) { return std::string(limit.param); });

} // namespace Integration
